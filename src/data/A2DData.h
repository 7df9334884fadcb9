// A two-dimensional map, the limits of its size, and the absorbance of its pixels.
#pragma once

#include <QList>
#include <QStringList>
#include <QtGlobal>

#include <cmath>

/// One pixel of a map file or of a result map.
///
/// In a result map of the four-point family, @c intensity is the fraction of the first
/// reference and @c i0 is the thickness. In a result map of the non-equivalent method,
/// @c intensity is the share of the first reference and @c i0 is the total dMut.
struct A2DRow {
    double x = 0.0;         ///< x coordinate, the first column of a text file
    double y = 0.0;         ///< y coordinate, the second column of a text file
    double intensity = 0.0; ///< transmitted intensity; by convention the absorbance if i0 is 0
    double i0 = 0.0;        ///< incident intensity
    QList<double> values;   ///< quantities of an extended result map; otherwise empty
};
// Lets a growing QList move its pixels as one block of memory instead of one by one.
Q_DECLARE_TYPEINFO(A2DRow, Q_RELOCATABLE_TYPE);

/// A map in memory: its pixels in the order of the file, the comment lines of the file
/// and the size of the map. An element of @c rows is one pixel.
///
/// The order is assumed to be row-major, `index = y * xNum + x`: a pixel is looked up by this
/// index, not by the coordinates stored in it. The number of pixels in @c rows can differ
/// from xNum * yNum.
class A2DData
{
public:
    /// Removes all pixels and comment lines and sets the size to 0 by 0. Keeps
    /// @c extended, which the calculation of a result map sets.
    void clear();

    /// Derives the size from the coordinates of the pixels, compared exactly: xNum is the
    /// number of pixels that have the same y as the first pixel; yNum is the number of
    /// pixels that have the same x as the first pixel. The first pixel counts even if its
    /// coordinates are NaN, so the size for a single pixel is 1 by 1. Without pixels the
    /// size is 0 by 0.
    void deriveSize();

    /// Copies the value list of pixel @p i to @p out. If @p i is not a valid index,
    /// sets every element of @p out to 0 and keeps its length.
    void rowValues(int i, QList<double>& out) const;

    bool extended = false; ///< true for a result map whose pixels have @c values
    QStringList headerLines;
    QList<A2DRow> rows;
    int xNum = 0;
    int yNum = 0;
};

namespace data
{

/// Largest number of pixels in a map.
inline constexpr qint64 maxMapPixels = qint64{1} << 25;

/// A map of at most this number of pixels is accepted, however few pixels its file
/// stores.
inline constexpr qint64 maxUncheckedPixels = qint64{1} << 20;

/// A map of more than maxUncheckedPixels pixels is accepted if it has at most this number
/// of pixels for each pixel that its file stores.
inline constexpr qint64 maxPixelsPerStored = 64;

/// Whether a map of @p width by @p height pixels must be refused: a calculation would loop
/// over all these pixels, even over pixels that the file does not store.
///
/// True for more than maxMapPixels pixels. Also true for more than maxUncheckedPixels
/// pixels if there are more than maxPixelsPerStored pixels per stored pixel. A width or
/// height of 0 or less counts as 1, so a huge width is refused even if the height is 0.
///
/// @param stored  number of pixels stored in the file
bool isSizeTooLarge(qint64 width, qint64 height, qint64 stored);

/// Absorbance mu*t of a pixel, dimensionless: @c intensity if @c i0 is 0.0 (the file
/// then contains the absorbance itself); otherwise 1.0 if @c intensity is 0.0;
/// otherwise ln(i0 / intensity).
///
/// The result is NaN if @c intensity is NaN, if @c i0 is NaN and @c intensity is not 0.0,
/// if @c i0 and @c intensity are both infinite, or if i0 / intensity is negative.
inline double absorbance(const A2DRow& pixel)
{
    if (pixel.i0 == 0.0) {
        return pixel.intensity;
    }
    if (pixel.intensity == 0.0) {
        return 1.0;
    }
    return std::log(pixel.i0 / pixel.intensity);
}

/// The absorbance that pixelMut() returns for a pixel that the map does not contain.
inline constexpr double absorbanceOutside = -1.0;

/// Absorbance of the pixel at column @p x of image line @p y; absorbanceOutside if its
/// index is outside @c rows. Only the index is checked, so a column outside the map
/// can read a pixel of another image line.
inline double pixelMut(const A2DData& map, int x, int y)
{
    const qint64 i = qint64{y} * map.xNum + x;
    return i < 0 || i >= map.rows.size() ? absorbanceOutside : absorbance(map.rows.at(i));
}

} // namespace data
