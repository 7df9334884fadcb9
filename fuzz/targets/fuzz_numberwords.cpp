// Tests the splitting of lines into words against a regular expression, and the conversion
// of words to numbers against Qt's conversion.
//
// An input is a line. Bytes after its first line feed are ignored.
#include "data/DecimalNumber.h"
#include "data/LineWords.h"
#include "support/FuzzTarget.h"
#include "support/SameDouble.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace
{

/// The bytes before the first line feed, followed by a line feed, which the tested functions
/// need. A sanitizer can miss reads past it, because the vector can have spare capacity.
std::vector<char> lineOf(const QByteArray& bytes)
{
    const auto end = std::find(bytes.begin(), bytes.end(), '\n');
    std::vector<char> line(bytes.begin(), end);
    line.push_back('\n');
    return line;
}

QString decoded(const std::vector<char>& line)
{
    QString text = QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()) - 1);
    return text.remove(u'\r').simplified();
}

/// Reference implementation: splits a line into words by a regular expression. An empty
/// line has no words.
QStringList plainWords(const QString& line)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    return line.isEmpty() ? QStringList() : line.split(blanks);
}

void checkTextWords(const QString& line, const QStringList& expected)
{
    data::TextWords words(line);
    for (const QString& word : expected) {
        FUZZ_REQUIRE(words.next());
        FUZZ_REQUIRE(words.word() == word);
        FUZZ_REQUIRE(tests::sameDouble(words.toDouble(), word.toDouble()));
    }
    FUZZ_REQUIRE(!words.next());
}

/// Converts every @p step-th word to a double and skips the other words. If isPlain() is true
/// afterwards, the bytes did not need a decoder: the number of words must then be equal to the
/// number of words in the decoded text, the numbers must be equal to the results of
/// QString::toDouble(), and startsWith() must be right.
void checkByteWords(const std::vector<char>& line, const QStringList& expected, int step)
{
    data::ByteWords words(line.data());
    const bool isComment = words.startsWith('#');
    std::vector<std::pair<int, double>> numbers;
    int count = 0;
    for (; words.next(); ++count) {
        if (count % step == 0) {
            numbers.emplace_back(count, words.toDouble());
        }
    }
    FUZZ_REQUIRE(words.position() >= line.data() && words.position() < line.data() + line.size());
    if (!words.isPlain()) {
        return;
    }
    FUZZ_REQUIRE(count == expected.size());
    FUZZ_REQUIRE(isComment == expected.value(0).startsWith(u'#'));
    for (const auto& [word, number] : numbers) {
        FUZZ_REQUIRE(tests::sameDouble(number, expected.at(word).toDouble()));
    }
}

/// At every position of the line, a number that data::readDecimal() reads must be equal to
/// Qt's conversion of the characters that were read.
void checkDecimals(const std::vector<char>& line)
{
    for (const char* begin = line.data(); *begin != '\n'; ++begin) {
        const char* end = begin;
        double value = -7.25;
        if (data::readDecimal(end, value)) {
            FUZZ_REQUIRE(end > begin && end < line.data() + line.size());
            const QString text = QString::fromLatin1(begin, end - begin);
            bool isNumber = false;
            FUZZ_REQUIRE(tests::sameDouble(value, text.toDouble(&isNumber)));
            FUZZ_REQUIRE(isNumber);
        } else {
            FUZZ_REQUIRE(end == begin && value == -7.25);
        }
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    const std::vector<char> line = lineOf(bytes);
    const QString text = decoded(line);
    const QStringList words = plainWords(text);
    checkTextWords(text, words);
    checkByteWords(line, words, 1);
    checkByteWords(line, words, 3);
    checkDecimals(line);
}
