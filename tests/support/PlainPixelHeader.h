// Reference implementation of reading a binary map's header.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace tests
{

/// The header of a binary map; entries that it lacks keep these defaults.
struct PlainPixelHeader {
    qint64 headerSize = 0;
    int width = 0;
    int height = 0;
    QString dataId;
    double minVal = 1e300;
    double maxVal = -1e300;
};

/// Reads the header of a file with these @p bytes, which must begin with "2dData". It
/// decodes the whole header at once, then splits it line by line with regular
/// expressions. Slow but simple; not part of the product.
PlainPixelHeader readPlainPixelHeader(const QByteArray& bytes);

} // namespace tests
