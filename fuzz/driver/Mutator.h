// Generates mutations of inputs from a seed, and parses dictionaries.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace fuzz
{

using Input = std::string;

/// Generates mutations of the inputs of a corpus. In one build, a mutation depends only on
/// the corpus, the dictionary, the seed and the number of the mutation, not on earlier
/// mutations. Compilers can evaluate function arguments in different orders, so builds by
/// different compilers can generate different mutations.
class Mutator
{
public:
    /// Maximum size of a mutation in bytes.
    static constexpr std::size_t maxBytes = 4096;

    /// @param corpus      at least one input
    /// @param dictionary  words of the target's input format; can be empty
    Mutator(std::vector<Input> corpus, std::vector<Input> dictionary, std::uint32_t seed);

    /// Returns mutation @p number: an input of the corpus with one to eight random
    /// changes.
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

/// The words of a dictionary in libFuzzer's format. Each line has one word in double
/// quotes, optionally after "name=". The escapes are \\, \" and \xAB. Lines that begin
/// with "#" or have fewer than two double quotes are skipped.
std::vector<Input> wordsOfDictionary(const std::string& text);

} // namespace fuzz
