// Tests the functions of data/TextItems.h, except energiesOfList(), against their documented
// properties.
//
// The first byte of an input determines a length, a number of items and the encoding. A line
// of text follows. A character with code 1 ends the line; a second text follows after this
// character.
#include "data/TextItems.h"
#include "support/FuzzTarget.h"
#include "support/InputText.h"

#include <QStringList>

#include <algorithm>

namespace
{

bool isBlank(QChar c)
{
    return QStringLiteral(" \t\n\v\f\r").contains(c);
}

bool isDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c.unicode() > 127 && c.isNumber());
}

void checkItems(const QString& line)
{
    QStringList all;
    QString rest = line;
    while (!rest.isEmpty()) {
        QString item;
        const QString next = data::nextItem(rest, item);
        FUZZ_REQUIRE(next.size() < rest.size()); // otherwise the loop would not end
        FUZZ_REQUIRE(rest.endsWith(next));
        FUZZ_REQUIRE(rest.contains(item));
        all.append(item);
        rest = next;
    }
    FUZZ_REQUIRE(data::splitItemsAfter(line, {}) == all);
    all.removeAll(QString());
    FUZZ_REQUIRE(data::splitItems(line) == all);
    QString item = QStringLiteral("left");
    FUZZ_REQUIRE(data::nextItem({}, item).isEmpty() && item.isEmpty());
}

void checkKey(const QString& line, const QString& key, int count)
{
    const QStringList before{QStringLiteral("left")};
    QStringList items = before;
    const bool isFound = data::itemsAfterKey(line, items, count, key);
    FUZZ_REQUIRE(data::startsWithText(line, key) == (line.left(key.size()) == key));
    if (line.left(key.size()) == key) {
        FUZZ_REQUIRE(items == data::splitItemsAfter(line, key));
        FUZZ_REQUIRE(items == data::splitItemsAfter(line.mid(key.size()), {}));
        FUZZ_REQUIRE(isFound == (items.size() >= count));
    } else {
        FUZZ_REQUIRE(!isFound && items == before);
    }
    data::splitItemsAfter(line, key + line); // a prefix that is not shorter than the line
}

void checkComment(const QString& line)
{
    QString comment = QStringLiteral("left");
    const QString before = data::stripComment(line, comment);
    if (before.size() < line.size()) {
        FUZZ_REQUIRE(before + u'#' + comment == line);
        FUZZ_REQUIRE((before.count(u'"') + before.count(u'\'')) % 2 == 0);
        QString none = QStringLiteral("left");
        FUZZ_REQUIRE(data::stripComment(before, none) == before);
        FUZZ_REQUIRE(none == QLatin1String("left"));
    } else {
        FUZZ_REQUIRE(before == line && comment == QLatin1String("left"));
    }
    FUZZ_REQUIRE(data::isBlankOrComment(line) == before.simplified().isEmpty());
}

/// The documented formula: leading white space is removed, and the rest is cut to n - 1
/// characters, where n is the index of the last non-blank character in the untrimmed
/// line. On purpose, n counts the leading white space, too. If the line has no leading white
/// space, the cut removes the last two characters of the text; with one leading blank, it
/// removes the last character; with two or more, it removes none.
void checkTrimmed(const QString& line)
{
    qsizetype first = 0;
    while (first < line.size() && isBlank(line.at(first))) {
        ++first;
    }
    qsizetype last = line.size() - 1;
    while (last >= 0 && isBlank(line.at(last))) {
        --last;
    }
    FUZZ_REQUIRE(data::trimmed(line) == line.mid(first).left(qMax<qsizetype>(last - 1, 0)));
}

void checkQuotes(const QString& text, const QString& other)
{
    const QString escaped = data::quoteEscaped(text);
    FUZZ_REQUIRE(escaped.size() == text.size() + text.count(u'"'));
    FUZZ_REQUIRE(QString(escaped).replace(QLatin1String("\\\""), QLatin1String("\"")) ==
                     QString(text).replace(QLatin1String("\\\""), QLatin1String("\"")) ||
                 text.contains(u'\\'));
    FUZZ_REQUIRE(data::quoted(text) == u'"' + escaped + u'"');
    FUZZ_REQUIRE(data::commaQuoted(text) == u',' + data::quoted(text));
    const QString plain = u'"' + text + QLatin1String("\" \"") + other + QLatin1String("\" ");
    FUZZ_REQUIRE(data::joinQuoted({text, other}) == plain.simplified());
    FUZZ_REQUIRE(data::joinQuoted({}).isEmpty());
}

/// A field that is quoted for a comma-separated line must be unchanged after a round trip.
void checkFields(const QString& text, const QString& other)
{
    const QString written = data::quotedIfNeeded(text);
    FUZZ_REQUIRE((written == text) == (!text.contains(u'"') && !text.contains(u',')));
    QString field;
    FUZZ_REQUIRE(data::commaField(written + u',' + other, field) == other);
    FUZZ_REQUIRE(field == text);
    FUZZ_REQUIRE(data::commaField(written, field).isEmpty());
    FUZZ_REQUIRE(field == text);
    FUZZ_REQUIRE(data::commaFieldLoose(written + u',' + other, field) == other);
    FUZZ_REQUIRE(field == text);
    // Each call of commaFieldLoose() must consume at least one character. The result of
    // commaField() must not be longer than the line, even if the same QString is passed as the
    // line and as the field.
    QString line = text;
    while (!line.isEmpty()) {
        const qsizetype before = line.size();
        line = data::commaFieldLoose(line, field);
        FUZZ_REQUIRE(line.size() < before && field.size() <= before);
    }
    line = text;
    while (!line.isEmpty()) {
        const qsizetype before = line.size();
        line = data::commaField(line, line);
        FUZZ_REQUIRE(line.size() <= before);
        if (line.size() == before) {
            break; // prevents an endless loop
        }
    }
}

void checkFieldAfter(const QString& text, const QString& word)
{
    const QChar delimiter = word.isEmpty() ? QChar(u':') : word.back();
    const QString field = data::fieldAfter(text, word, delimiter);
    QString expected;
    if (text.contains(word)) {
        QString after = text.mid(text.indexOf(word) + word.size());
        while (after.startsWith(delimiter)) {
            after.remove(0, 1);
        }
        expected = after.section(delimiter, 0, 0);
    }
    FUZZ_REQUIRE(field == expected);
}

void checkBackslash(const QString& line)
{
    QString once = line;
    const bool isMarked = data::endsWithBackslash(once);
    FUZZ_REQUIRE(line.startsWith(once));
    const QString cut = line.mid(once.size());
    FUZZ_REQUIRE(isMarked
                     ? cut.startsWith(u'\\') && std::all_of(cut.begin() + 1, cut.end(), isBlank)
                     : cut.isEmpty());
    QString twice = once;
    if (isMarked) {
        data::endsWithBackslash(twice);
    }
    FUZZ_REQUIRE(data::dropBackslash(line) == twice);
}

void checkNumbers(const QString& text)
{
    const QString number = text.simplified();
    const qsizetype points = number.count(u'.');
    const qsizetype digits = std::count_if(number.begin(), number.end(), isDigit);
    const bool isSigned = number.startsWith(u'+') || number.startsWith(u'-');
    const bool isDigits = !number.isEmpty() && digits == number.size();
    const bool isInteger = !number.isEmpty() && digits + (isSigned ? 1 : 0) == number.size();
    const bool isReal =
        !number.isEmpty() && points <= 1 && digits + points + (isSigned ? 1 : 0) == number.size();
    FUZZ_REQUIRE(data::isDigits(text) == isDigits);
    FUZZ_REQUIRE(data::isInteger(text) == isInteger);
    FUZZ_REQUIRE(data::isRealNumber(text) == isReal);
}

void checkThousands(const QString& text)
{
    const QString number = QString(text).remove(u',');
    const QString result = data::withThousands(number);
    FUZZ_REQUIRE(QString(result).remove(u',') == number);
    const qsizetype whole = (number + u'.').indexOf(u'.');
    FUZZ_REQUIRE(result.count(u',') == qMax<qsizetype>((whole - 1) / 3, 0));
    const qsizetype end = (result + u'.').indexOf(u'.');
    for (qsizetype i = 0; i < end; ++i) {
        FUZZ_REQUIRE((result.at(i) == u',') == ((end - i) % 4 == 0));
    }
}

void checkBlanks(const QString& text, int length)
{
    for (const int n : {length, -length, 1 << 30, -(1 << 30)}) {
        FUZZ_REQUIRE(data::blanks(n) == QString(qBound(0, n, 101), u' '));
        const qsizetype added = qBound(qint64{0}, n - text.size(), qint64{101});
        FUZZ_REQUIRE(data::padded(text, n) == text + QString(added, u' '));
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    const auto first = static_cast<unsigned char>(bytes.isEmpty() ? 0 : bytes.front());
    const QString all = textOf(bytes.mid(1), first >= 0x80);
    const QString line = all.section(QChar(1), 0, 0);
    const QString other = all.section(QChar(1), 1);
    checkItems(line);
    checkKey(line, other, first % 8);
    checkComment(line);
    checkTrimmed(line);
    checkQuotes(line, other);
    checkFields(line, other);
    checkFieldAfter(line, other);
    checkBackslash(line);
    checkNumbers(line);
    checkThousands(line);
    checkBlanks(line, first);
}
