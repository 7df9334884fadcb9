// Odd variants of inputs, made by a seed.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace fuzz
{

/// The bytes of one input.
using Input = std::string;

/// Makes mutations of the inputs of a corpus. Each is a function of the corpus,
/// the dictionary, the seed and its own number: the same on every machine, and
/// without those before it.
class Mutator
{
public:
    /// The most bytes that a mutation has.
    static constexpr std::size_t mostBytes = 4096;

    /// @param corpus      at least one input
    /// @param dictionary  words that mean something to the target; may be empty
    Mutator(std::vector<Input> corpus, std::vector<Input> dictionary, std::uint32_t seed);

    /// Mutation @p number: an input of the corpus, changed in one to eight places.
    Input mutation(std::uint32_t number);

private:
    std::size_t below(std::size_t limit);
    std::size_t place(const Input& input) { return below(input.size() + 1); }
    Input part(const Input& input);
    const Input& anyInput() { return m_corpus[below(m_corpus.size())]; }

    void change(Input& input);
    void flip(Input& input);
    void setByte(Input& input);
    void insertBytes(Input& input);
    void remove(Input& input);
    void duplicate(Input& input);
    void splice(Input& input);
    void insertNumber(Input& input);
    void insertWord(Input& input);
    void overwriteWord(Input& input);
    void truncate(Input& input);

    std::vector<Input> m_corpus;
    std::vector<Input> m_dictionary;
    std::uint32_t m_seed;
    std::mt19937 m_random;
};

/// The words of a dictionary in libFuzzer's form: one in double quotes on a line,
/// perhaps behind "name=", with \\, \" and \xAB within; "#" opens a comment line.
std::vector<Input> wordsOfDictionary(const std::string& text);

} // namespace fuzz
