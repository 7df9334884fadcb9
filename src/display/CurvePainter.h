// Draws a curve as line segments between whole pixels.
#pragma once

#include <QLine>
#include <QPointF>

#include <array>

class ChCoord;
class QPainter;

namespace display
{

/// Draws line segments between consecutive points of a curve, with the painter's
/// pen. The ends of each segment are truncated to whole pixels, see pixelLine().
///
/// If the pixel coordinates of a point are not finite, its adjacent segments are not drawn.
/// Segments are drawn in batches, which is faster than one call for each segment
/// and paints the same pixels. The destructor draws the last batch.
class CurvePainter
{
public:
    /// @param painter  must outlive this object
    /// @param coord    coordinates of the plot; must outlive this object and must
    ///                 not change while the curve is drawn
    CurvePainter(QPainter* painter, const ChCoord& coord);
    ~CurvePainter();
    CurvePainter(const CurvePainter&) = delete;
    CurvePainter& operator=(const CurvePainter&) = delete;

    /// Appends a point (data values) to the curve.
    void add(double x, double y);

private:
    void flush();

    QPainter* m_painter;
    const ChCoord& m_coord;
    QPointF m_last;
    bool m_hasLast = false;
    std::array<QLine, 256> m_lines;
    int m_count = 0;
};

} // namespace display
