// Reference implementation of the binary map's header reader.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace tests
{

/// The header of a binary map. Missing entries keep these defaults.
struct PlainPixelHeader {
    qint64 headerSize = 0;
    int width = 0;
    int height = 0;
    QString dataId;
    double minVal = 1e300;
    double maxVal = -1e300;
};

/// Reads the header of a binary map. @p bytes is the file's content and must begin with
/// "2dData". Decodes the whole header at once, then splits it line by line with regular
/// expressions. This is simple but slow; it is not part of the product.
PlainPixelHeader readPlainPixelHeader(const QByteArray& bytes);

} // namespace tests
