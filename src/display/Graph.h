// One of the graphs of the analysis.
#pragma once

class ChCoord;
class DispABase;
class QString;
class QStylePainter;

namespace display
{

/// A graph of the panel's numbers, gathered for one paint. Derived classes hold
/// the numbers and draw them; what all graphs have in common is here.
class Graph
{
public:
    /// Data values at the edges of the plot area.
    struct Range {
        double x0 = 0.0;
        double y0 = 0.0;
        double x1 = 0.0;
        double y1 = 0.0;
        /// False when there was nothing to fit @c y0 and @c y1 to: the view then
        /// stays automatic, and fits as soon as there is.
        bool isFitted = true;
    };

    Graph() = default;
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;
    virtual ~Graph() = default;

    /// Paints the whole plot: white ground, and, unless the graph is empty, its
    /// data over the grid, the frame over what overhangs the plot area, and what
    /// stands on top. An empty graph clears @c drawn, so that no titles appear.
    ///
    /// @param range  takes the automatic range, which counts while the plot has
    ///               none of its own; left alone by an empty graph
    void paint(DispABase* plot, QStylePainter* p, const QString& xTitle, const QString& yTitle,
               Range* range) const;

    /// Whether there is nothing to show.
    virtual bool isEmpty() const = 0;

    /// The automatic range; asked for only when the graph is not empty.
    virtual Range range() const = 0;

protected:
    virtual void drawData(QStylePainter* p, const ChCoord& cc) const = 0;
    virtual void drawOnTop(QStylePainter* p, const ChCoord& cc) const;
};

} // namespace display
