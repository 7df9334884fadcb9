// Functions that create, compare and analyse pictures.
#pragma once

#include <QColor>
#include <QDebug>
#include <QImage>
#include <QRect>

namespace tests
{

inline QImage whitePicture(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

/// Whether two pictures of equal size have the same pixels in @p part. Logs the first
/// pixel that differs. Returns false, with a log line, if the sizes differ or if @p part
/// is not completely inside the picture.
inline bool isSamePicture(const QImage& image, const QImage& wanted, const QRect& part)
{
    if (image.size() != wanted.size() || !image.rect().contains(part)) {
        qWarning() << "sizes" << image.size() << wanted.size() << "for" << part;
        return false;
    }
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (image.pixelColor(x, y) != wanted.pixelColor(x, y)) {
                qWarning() << "pixel" << x << y << "is" << image.pixelColor(x, y) << "instead of"
                           << wanted.pixelColor(x, y);
                return false;
            }
        }
    }
    return true;
}

inline bool isSamePicture(const QImage& image, const QImage& wanted)
{
    return isSamePicture(image, wanted, image.rect());
}

/// Whether all pixels of @p part have this colour. Logs the first pixel with another
/// colour.
inline bool isFilledWith(const QImage& image, const QRect& part, const QColor& color)
{
    QImage wanted(image.size(), QImage::Format_RGB32);
    wanted.fill(color);
    return isSamePicture(image, wanted, part);
}

inline bool isBlank(const QImage& image)
{
    return isFilledWith(image, image.rect(), Qt::white);
}

/// The bounding rectangle of the pixels in @p part for which @p isWanted returns true; a
/// null rectangle if there is none.
template <class Predicate>
QRect boxOf(const QImage& image, const QRect& part, Predicate isWanted)
{
    QRect box;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (isWanted(image.pixelColor(x, y))) {
                box |= QRect(x, y, 1, 1);
            }
        }
    }
    return box;
}

/// The number of pixels in @p part with this colour.
inline int countOf(const QImage& image, const QRect& part, const QColor& color)
{
    int pixels = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            pixels += image.pixelColor(x, y) == color ? 1 : 0;
        }
    }
    return pixels;
}

} // namespace tests
