// A two-dimensional map as a flat list of pixels with a nominal size.
#pragma once

#include <QList>
#include <QStringList>
#include <QtGlobal>

#include <cmath>

/// One pixel of a map file or of a result map. In a result map, @c intensity is the
/// fraction or share of the first reference, and @c i0 is the thickness or the total
/// dMut.
struct A2DRow {
    double x = 0.0;         ///< first column of the file
    double y = 0.0;         ///< second column of the file
    double intensity = 0.0; ///< transmitted intensity; the absorbance itself if i0 is 0
    double i0 = 0.0;        ///< incident intensity
    QList<double> values;   ///< quantities of an extended result map; otherwise empty
};
// A growing QList then moves its rows as one block of memory, not one by one.
Q_DECLARE_TYPEINFO(A2DRow, Q_RELOCATABLE_TYPE);

/// A map in memory: its pixels in file order (x varies fastest), the comment
/// lines of its file and its size. An element of @c rows is one pixel.
///
/// Row-major, `index = y * xNum + x`. A pixel is looked up by this index, never
/// by the coordinates stored in it. The number of pixels in @c rows can differ
/// from xNum * yNum.
class A2DData
{
public:
    /// Removes all pixels and comment lines and sets the size to 0 by 0. Keeps
    /// @c extended, which the calculation of a result map sets.
    void clear();

    /// Derives the size from the coordinates of the pixels, compared exactly:
    /// xNum is the number of pixels with the y of the first pixel, yNum the
    /// number of pixels with its x. The first pixel always counts, so a single
    /// pixel gives 1 by 1. Without pixels the size is 0 by 0.
    void deriveSize();

    /// Copies the values of pixel @p i to @p out. If @p i is not a valid index,
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

/// Up to this number of pixels, the size that a file states is accepted even if the
/// file stores fewer pixels.
inline constexpr qint64 maxUncheckedPixels = qint64{1} << 20;

/// A larger size is accepted if it has at most this number of pixels for each pixel
/// stored in the file.
inline constexpr qint64 maxPixelsPerStored = 64;

/// Whether the size of a map is too large for a calculation, which loops over all
/// of its pixels: more than maxMapPixels, or more than both maxUncheckedPixels and
/// maxPixelsPerStored * @p stored.
///
/// A side of 0 or less counts as 1, so that one huge side is refused even if the
/// other side is 0.
///
/// @param stored  number of pixels stored in the file
bool isSizeTooLarge(qint64 width, qint64 height, qint64 stored);

/// Absorbance mu*t of a pixel, dimensionless: @c intensity if @c i0 is 0.0 (the file
/// then contains the absorbance itself); otherwise 1.0 if @c intensity is 0.0;
/// otherwise ln(i0 / intensity).
///
/// A NaN field gives NaN, except that a NaN @c i0 with intensity 0.0 gives 1.0. A
/// negative ratio gives NaN.
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

/// Absorbance of a pixel that is not in the list of its map.
inline constexpr double absorbanceOutside = -1.0;

/// Absorbance of the pixel at column @p x and line @p y; absorbanceOutside if its
/// index is outside @c rows. Only the index is checked, so a column outside the map
/// reads a pixel of another line.
inline double pixelMut(const A2DData& map, int x, int y)
{
    const qint64 i = qint64{y} * map.xNum + x;
    return i < 0 || i >= map.rows.size() ? absorbanceOutside : absorbance(map.rows.at(i));
}

} // namespace data
