// One two-dimensional map as a flat list of pixels, and the size it claims.
#pragma once

#include <QList>
#include <QStringList>
#include <QtGlobal>

#include <cmath>

/// One pixel of a map file, or of a result map.
struct A2DRow {
    double x = 0.0;         ///< first column of the file
    double y = 0.0;         ///< second column of the file
    double intensity = 0.0; ///< transmitted intensity, or mut itself where i0 is 0
    double i0 = 0.0;        ///< incident intensity
    QList<double> values;   ///< one value per result map; empty in a map file
};
// Lets a list of rows grow by moving memory instead of row by row.
Q_DECLARE_TYPEINFO(A2DRow, Q_RELOCATABLE_TYPE);

/// A map in memory: its pixels in file order (x fastest), the comment lines of
/// its file and its size.
///
/// Row-major, `index = y * xNum + x`. A pixel is found by this position and
/// never by the coordinates stored in its row; the rows may be fewer or more
/// than xNum * yNum.
class A2DData
{
public:
    /// Empties the rows and comment lines and sets the size to 0 by 0.
    /// @c extended stays: it belongs to the calculation that fills a result map.
    void clear();

    /// Counts the size from the rows' coordinates: xNum is the number of rows
    /// on the first row's y, yNum the number on the first row's x, by exact
    /// comparison. 0 by 0 without rows, 1 by 1 with a single one.
    void deriveSize();

    /// Copies the values of row @p i to @p out; for an index outside the rows
    /// sets every element of @p out to 0 and keeps its length.
    void rowValues(int i, QList<double>& out) const;

    bool extended = false; ///< in a result map: the rows carry @c values
    QStringList headerLines;
    QList<A2DRow> rows;
    int xNum = 0;
    int yNum = 0;
};

namespace data
{

/// The most pixels that a map may claim, whatever its file holds.
inline constexpr qint64 maxMapPixels = qint64{1} << 25;

/// A file may claim this many pixels whatever it holds. A larger claim needs a pixel
/// in the file for each pixelsForEachHeld claimed.
inline constexpr qint64 pixelsOnTrust = qint64{1} << 20;
inline constexpr qint64 pixelsForEachHeld = 64;

/// Whether a claimed size is past what a calculation may be asked to go through:
/// more than maxMapPixels, or more than pixelsOnTrust and out of proportion to the
/// @p held pixels of the file. A side of 0 or less counts as 1, so that a single
/// absurd side is refused as well.
bool isSizeTooLarge(qint64 width, qint64 height, qint64 held);

/// Absorbance mu*t of a pixel: the intensity itself where i0 is 0.0; 1.0
/// where the intensity is 0.0; otherwise ln(i0 / intensity). NaN in either field
/// goes on to the logarithm.
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

/// What a pixel outside the rows of its map counts as.
inline constexpr double absorbanceOutside = -1.0;

/// The absorbance of the pixel at column @p x and line @p y; absorbanceOutside
/// outside the rows.
inline double pixelMut(const A2DData& map, int x, int y)
{
    const qint64 i = qint64{y} * map.xNum + x;
    return i < 0 || i >= map.rows.size() ? absorbanceOutside : absorbance(map.rows.at(i));
}

} // namespace data
