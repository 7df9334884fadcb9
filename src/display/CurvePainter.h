// Draws a curve on the pixels of a plot.
#pragma once

#include <QLine>
#include <QPointF>

#include <array>

class ChCoord;
class QPainter;

namespace display
{

/// Draws single segments between neighbouring points of a curve in the
/// painter's pen, on whole pixels.
///
/// Each point is converted once; a point that has no place on the screen (its
/// coordinates are not finite) takes the segments beside it with it. Segments go
/// to the painter in bunches of a fixed size, which gives the same picture as
/// one call for each. The last ones go when the painter of the curve dies.
class CurvePainter
{
public:
    /// Both must outlive the curve; @p coord must not change meanwhile.
    CurvePainter(QPainter* painter, const ChCoord& coord);
    ~CurvePainter();
    CurvePainter(const CurvePainter&) = delete;
    CurvePainter& operator=(const CurvePainter&) = delete;

    /// Appends a point, in data values.
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
