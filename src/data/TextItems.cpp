#include "data/TextItems.h"

#include <QDebug>
#include <QStringView>

#include <algorithm>

namespace data
{

namespace
{

constexpr QChar doubleQuote = u'"';
constexpr int maxBlanks = 101;

/// The longest string of blanks, from which blanks() copies a part.
const QString& sharedBlanks()
{
    static const QString shared(maxBlanks, u' ');
    return shared;
}

// The ASCII blanks, like \s in a regular expression. QChar::isSpace() would also accept
// blanks outside ASCII.
bool isBlank(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

bool isDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c.unicode() > 0x7f && c.isNumber());
}

bool isSign(QChar c)
{
    return c == u'+' || c == u'-';
}

bool areDigits(QStringView text)
{
    return std::all_of(text.begin(), text.end(), isDigit);
}

qsizetype firstNonBlank(QStringView line)
{
    return std::find_if_not(line.begin(), line.end(), isBlank) - line.begin();
}

/// Index of the last non-blank; -1 for a line of blanks.
qsizetype lastNonBlank(QStringView line)
{
    qsizetype i = line.size() - 1;
    while (i >= 0 && isBlank(line.at(i))) {
        --i;
    }
    return i;
}

void report(QStringView line, const char* words)
{
    qDebug().noquote().nospace() << "In a line [" << line.toString() << "] item is " << words;
}

/// An item of a line and the text after it.
struct SplitLine {
    QStringView item;
    QStringView rest;
};

SplitLine splitQuoted(QStringView line, qsizetype quote)
{
    const qsizetype start = quote + 1;
    const qsizetype end = line.indexOf(doubleQuote, start);
    if (end < 0) {
        report(line, "started from quote but not ended by quote");
        return {line.sliced(start), {}};
    }
    return {line.sliced(start, end - start), line.sliced(end + 1)};
}

SplitLine splitPlain(QStringView line, qsizetype start)
{
    const auto end = std::find_if(line.begin() + start, line.end(), isBlank);
    if (end == line.end()) {
        if (line.back() == doubleQuote) {
            report(line, "started from not quote but ended by quote");
        }
        return {line.sliced(start), {}};
    }
    const qsizetype at = end - line.begin();
    return {line.sliced(start, at - start), line.sliced(at)};
}

// Returns views, because copying the rest of the line for each item would need quadratic
// time.
SplitLine splitFirst(QStringView line)
{
    const qsizetype start = firstNonBlank(line);
    if (start == line.size()) {
        return {};
    }
    return line.at(start) == doubleQuote ? splitQuoted(line, start) : splitPlain(line, start);
}

/// Appends the text between quotes to @p field. @p i is the index after the opening
/// quote. Returns the index after the closing quote, or the length of the line if there
/// is none.
qsizetype appendQuotedSpan(const QString& line, qsizetype i, QString& field)
{
    while (i < line.size()) {
        if (line.at(i) == doubleQuote) {
            if (i + 1 == line.size() || line.at(i + 1) != doubleQuote) {
                return i + 1;
            }
            ++i; // a doubled quote means one quote character
        }
        field += line.at(i);
        ++i;
    }
    return i;
}

QString restAfterComma(const QString& line, qsizetype comma)
{
    return comma < line.size() ? line.sliced(comma + 1) : QString();
}

} // namespace

QString nextItem(const QString& line, QString& item)
{
    const SplitLine split = splitFirst(line);
    QString rest = split.rest.toString();
    item = split.item.toString();
    return rest;
}

QStringList splitItems(const QString& line)
{
    QStringList items;
    for (QStringView rest = line; !rest.isEmpty();) {
        const SplitLine split = splitFirst(rest);
        if (!split.item.isEmpty()) {
            items.append(split.item.toString());
        }
        rest = split.rest;
    }
    return items;
}

QStringList splitItemsAfter(const QString& line, const QString& prefix)
{
    QStringList items;
    for (QStringView rest = QStringView(line).mid(prefix.size()); !rest.isEmpty();) {
        const SplitLine split = splitFirst(rest);
        items.append(split.item.toString());
        rest = split.rest;
    }
    return items;
}

bool itemsAfterKey(const QString& line, QStringList& items, int minCount, const QString& key)
{
    if (!startsWithText(line, key)) {
        return false;
    }
    items = splitItemsAfter(line, key);
    return items.size() >= minCount;
}

QList<QString> energiesOfList(const QString& text, int rows)
{
    const QString list = QString(text).replace(u',', u' ').simplified();
    qDebug().noquote() << list;

    QList<QString> energies;
    for (QStringView rest = list; !rest.isEmpty() && energies.size() < rows;) {
        const SplitLine split = splitFirst(rest);
        if (split.item.toDouble() > 0.0) {
            energies.append(split.item.toString());
        }
        rest = split.rest;
    }
    return energies;
}

QString stripComment(const QString& line, QString& comment)
{
    bool inQuotes = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (c == doubleQuote || c == u'\'') {
            inQuotes = !inQuotes;
        } else if (c == u'#' && !inQuotes) {
            QString before = line.first(i);
            comment = line.sliced(i + 1);
            return before;
        }
    }
    return line;
}

bool isBlankOrComment(const QString& line)
{
    QString comment;
    return stripComment(line, comment).simplified().isEmpty();
}

bool startsWithText(const QString& text, const QString& start)
{
    return text.startsWith(start);
}

QString trimmed(const QString& line)
{
    const qsizetype length = std::max<qsizetype>(lastNonBlank(line) - 1, 0);
    return QStringView(line).sliced(firstNonBlank(line)).left(length).toString();
}

QString quotedIfNeeded(const QString& text)
{
    if (text.contains(doubleQuote)) {
        return doubleQuote + QString(text).replace(doubleQuote, QLatin1String("\"\"")) +
               doubleQuote;
    }
    if (text.contains(u',')) {
        return doubleQuote + text + doubleQuote;
    }
    return text;
}

QString quoteEscaped(const QString& text)
{
    return QString(text).replace(doubleQuote, QLatin1String("\\\""));
}

QString quoted(const QString& text)
{
    return doubleQuote + quoteEscaped(text) + doubleQuote;
}

QString commaQuoted(const QString& text)
{
    return u',' + quoted(text);
}

QString joinQuoted(const QStringList& texts)
{
    QString joined;
    for (const QString& text : texts) {
        joined += doubleQuote + text + QLatin1String("\" ");
    }
    return joined.simplified();
}

QString commaField(const QString& line, QString& field)
{
    QString content;
    qsizetype i = line.startsWith(doubleQuote) ? appendQuotedSpan(line, 1, content) : 0;
    qsizetype comma = line.indexOf(u',', i);
    if (comma < 0) {
        comma = line.size();
    }
    content += QStringView(line).sliced(i, comma - i);
    QString rest = restAfterComma(line, comma);
    field = content;
    return rest;
}

QString commaFieldLoose(const QString& line, QString& field)
{
    QString content;
    qsizetype i = 0;
    while (i < line.size() && line.at(i) != u',') {
        if (line.at(i) == doubleQuote) {
            i = appendQuotedSpan(line, i + 1, content);
        } else {
            content += line.at(i);
            ++i;
        }
    }
    QString rest = restAfterComma(line, i);
    field = content;
    return rest;
}

QString fieldAfter(const QString& text, const QString& word, QChar delimiter)
{
    const qsizetype at = text.indexOf(word);
    if (at < 0) {
        return {};
    }
    const QStringView after = QStringView(text).sliced(at + word.size());
    const auto isDelimiter = [delimiter](QChar c) { return c == delimiter; };
    const auto begin = std::find_if_not(after.begin(), after.end(), isDelimiter);
    const auto end = std::find(begin, after.end(), delimiter);
    return after.sliced(begin - after.begin(), end - begin).toString();
}

bool endsWithBackslash(QString& line)
{
    const qsizetype last = lastNonBlank(line);
    if (last < 0 || line.at(last) != u'\\') {
        return false;
    }
    line.truncate(last);
    return true;
}

QString dropBackslash(const QString& line)
{
    QString shortened = line;
    if (endsWithBackslash(shortened)) {
        endsWithBackslash(shortened);
    }
    return shortened;
}

bool isRealNumber(const QString& text)
{
    const QString number = text.simplified();
    if (number.isEmpty() || number.count(u'.') > 1) {
        return false;
    }
    const auto isDigitOrPoint = [](QChar c) { return isDigit(c) || c == u'.'; };
    return (isSign(number.front()) || isDigitOrPoint(number.front())) &&
           std::all_of(number.begin() + 1, number.end(), isDigitOrPoint);
}

bool isInteger(const QString& text)
{
    const QString number = text.simplified();
    if (number.isEmpty()) {
        return false;
    }
    return (isSign(number.front()) || isDigit(number.front())) &&
           areDigits(QStringView(number).sliced(1));
}

bool isDigits(const QString& text)
{
    const QString number = text.simplified();
    return !number.isEmpty() && areDigits(number);
}

QString padded(const QString& text, int length)
{
    const qsizetype missing = std::clamp<qsizetype>(length - text.size(), 0, maxBlanks);
    return text + blanks(static_cast<int>(missing));
}

QString blanks(int n)
{
    return sharedBlanks().first(std::clamp(n, 0, maxBlanks));
}

QString withThousands(const QString& number)
{
    qsizetype end = number.indexOf(u'.');
    if (end < 0) {
        end = number.size();
    }
    QString result;
    for (qsizetype i = 0; i < number.size(); ++i) {
        if (i > 0 && i < end && (end - i) % 3 == 0) {
            result += u',';
        }
        result += number.at(i);
    }
    return result;
}

} // namespace data
