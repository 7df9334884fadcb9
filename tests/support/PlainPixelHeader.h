// The reference reading of a binary map's header, against which the product's is held.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace tests
{

/// What the header of a binary map says; what it does not say is as here.
struct PlainPixelHeader {
    qint64 headerSize = 0;
    int width = 0;
    int height = 0;
    QString dataId;
    double minVal = 1e300;
    double maxVal = -1e300;
};

/// Reads the header of a file of these @p bytes, which begin with "2dData": all of
/// the header decoded at once, a line at a time, its items found by expressions.
/// Slow, and plain to read; not part of the product.
PlainPixelHeader readPlainPixelHeader(const QByteArray& bytes);

} // namespace tests
