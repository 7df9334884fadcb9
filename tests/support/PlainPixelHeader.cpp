#include "support/PlainPixelHeader.h"

#include <QRegularExpression>
#include <QTextStream>

namespace tests
{
namespace
{

struct ItemAndRest {
    QString item;
    QString rest;
};

/// Splits @p line into its first item and the text after this item. A quoted item ends at
/// the next quote or, without one, at the end of the line. Any other item ends at white
/// space.
ItemAndRest firstItem(const QString& line)
{
    static const QRegularExpression closed(QStringLiteral("^\\s*\"([^\"]*)\"(.*)$"),
                                           QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression open(QStringLiteral("^\\s*\"([^\"]*)$"));
    static const QRegularExpression bare(QStringLiteral("^\\s*(\\S+)(.*)$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    for (const QRegularExpression& form : {closed, open, bare}) {
        const QRegularExpressionMatch match = form.match(line);
        if (match.hasMatch()) {
            return {match.captured(1), match.captured(2)};
        }
    }
    return {};
}

qint64 sizeOfHeader(const QByteArray& bytes)
{
    const ItemAndRest version = firstItem(QString::fromUtf8(bytes.left(64)));
    const ItemAndRest word = firstItem(version.rest);
    return firstItem(word.rest).item.toInt();
}

} // namespace

PlainPixelHeader readPlainPixelHeader(const QByteArray& bytes)
{
    PlainPixelHeader header;
    header.headerSize = sizeOfHeader(bytes);
    QTextStream stream(bytes.left(header.headerSize < 0 ? 0 : header.headerSize));
    while (!stream.atEnd()) {
        const ItemAndRest line = firstItem(stream.readLine());
        const QString key = line.item;
        const QString value = line.rest.mid(1);
        if (key == QStringLiteral("WIDTH:")) {
            header.width = value.toInt();
        }
        if (key == QStringLiteral("HEIGHT:")) {
            header.height = value.toInt();
        }
        if (key == QStringLiteral("DATA_ID:")) {
            header.dataId = value;
        }
        if (key == QStringLiteral("MIN_VAL:")) {
            header.minVal = value.toDouble();
        }
        if (key == QStringLiteral("MAX_VAL:")) {
            header.maxVal = value.toDouble();
        }
    }
    return header;
}

} // namespace tests
