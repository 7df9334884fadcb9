#include "driver/Mutator.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace fuzz
{
namespace
{

// Texts and bytes for mutations: ordinary numbers, numbers at the limits of ranges, NaN and
// infinities, special bytes, and invalid UTF-8.
const std::array numbers{
    Input("0"),           Input("-0"),          Input("1"),          Input("-1"),
    Input("3"),           Input("1e308"),       Input("-1e308"),     Input("1e-320"),
    Input("1e400"),       Input("nan"),         Input("inf"),        Input("-inf"),
    Input("2147483647"),  Input("-2147483648"), Input("2147483648"), Input("4294967296"),
    Input("33554432"),    Input("33554433"),    Input("1048576"),    Input("9223372036854775807"),
    Input("0.1"),         Input("8333.25"),     Input("1e300"),      Input("9007199254740993"),
    Input(1, '\xff'),     Input(4, '\xff'),     Input(8, '\xff'),    Input(8, '\0'),
    Input("\x7f\xf0"),    Input("\x80"),        Input("\r\n"),       Input("\xef\xbb\xbf"),
    Input("\xed\xa0\x80")};

Input withinBounds(Input input)
{
    input.resize(std::min(input.size(), Mutator::maxBytes));
    return input;
}

char hexByte(const std::string& digits)
{
    return static_cast<char>(std::stoi(digits, nullptr, 16));
}

/// The word between the first and the last double quote of a dictionary line, with its
/// escapes decoded.
Input unescaped(const std::string& line)
{
    const std::size_t begin = line.find('"') + 1;
    const std::size_t end = line.rfind('"');
    Input word;
    for (std::size_t i = begin; i < end; ++i) {
        if (line[i] == '\\' && i + 3 < end && line[i + 1] == 'x') {
            word += hexByte(line.substr(i + 2, 2));
            i += 3;
        } else {
            i += line[i] == '\\' ? 1 : 0;
            word += line[i];
        }
    }
    return word;
}

} // namespace

Mutator::Mutator(std::vector<Input> corpus, std::vector<Input> dictionary, std::uint32_t seed)
    : m_corpus(std::move(corpus))
    , m_dictionary(std::move(dictionary))
    , m_seed(seed)
{
}

Input Mutator::mutation(std::uint32_t number)
{
    m_random.seed(m_seed * 2654435761u + number);
    Input input = withinBounds(anyInput());
    for (std::size_t left = 1 + below(8); left > 0; --left) {
        change(input);
        input = withinBounds(std::move(input));
    }
    return input;
}

/// A random number in the half-open interval [0, limit); 0 if @p limit is 0. Uses the
/// remainder instead of a standard distribution, because distributions differ between
/// standard libraries.
std::size_t Mutator::below(std::size_t limit)
{
    return limit == 0 ? 0 : m_random() % limit;
}

Input Mutator::part(const Input& input)
{
    const std::size_t from = place(input);
    return input.substr(from, 1 + below(std::min<std::size_t>(input.size() - from, 64)));
}

void Mutator::change(Input& input)
{
    static constexpr std::array kinds{
        &Mutator::flip,          &Mutator::setByte, &Mutator::insertBytes,  &Mutator::remove,
        &Mutator::duplicate,     &Mutator::splice,  &Mutator::insertNumber, &Mutator::insertWord,
        &Mutator::overwriteWord, &Mutator::truncate};
    (this->*kinds[below(kinds.size())])(input);
}

void Mutator::flip(Input& input)
{
    if (!input.empty()) {
        char& byte = input[below(input.size())];
        byte = static_cast<char>(byte ^ (1 << below(8)));
    }
}

void Mutator::setByte(Input& input)
{
    if (!input.empty()) {
        input[below(input.size())] = static_cast<char>(below(256));
    }
}

void Mutator::insertBytes(Input& input)
{
    Input bytes(1 + below(4), '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(below(256));
    }
    input.insert(place(input), bytes);
}

void Mutator::remove(Input& input)
{
    const std::size_t from = place(input);
    input.erase(from, 1 + below(16));
}

void Mutator::duplicate(Input& input)
{
    const Input copied = part(input);
    const std::size_t at = place(input);
    for (std::size_t times = 1 + below(4); times > 0; --times) {
        input.insert(at, copied);
    }
}

void Mutator::splice(Input& input)
{
    const Input& other = anyInput();
    input = input.substr(0, place(input)) + other.substr(place(other));
}

void Mutator::insertNumber(Input& input)
{
    input.insert(place(input), numbers[below(numbers.size())]);
}

void Mutator::insertWord(Input& input)
{
    if (!m_dictionary.empty()) {
        input.insert(place(input), m_dictionary[below(m_dictionary.size())]);
    }
}

void Mutator::overwriteWord(Input& input)
{
    const std::size_t from = place(input);
    const Input& word = m_dictionary.empty() ? numbers[below(numbers.size())]
                                             : m_dictionary[below(m_dictionary.size())];
    input.replace(from, std::min(word.size(), input.size() - from), word);
}

void Mutator::truncate(Input& input)
{
    input.resize(place(input));
}

std::vector<Input> wordsOfDictionary(const std::string& text)
{
    std::vector<Input> words;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const bool isComment = line.starts_with('#');
        if (!isComment && std::count(line.begin(), line.end(), '"') >= 2) {
            words.push_back(unescaped(line));
        }
    }
    return words;
}

} // namespace fuzz
