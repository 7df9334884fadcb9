// Base class of the analysis graphs.
#pragma once

class ChCoord;
class DispABase;
class QString;
class QStylePainter;

namespace display
{

/// A graph of data from the panel, created for a single paint. Derived classes contain
/// the data and draw them. This class draws the parts that all graphs have in common.
class Graph
{
public:
    /// Data values at the edges of the plot area.
    struct Range {
        double x0 = 0.0;
        double y0 = 0.0;
        double x1 = 0.0;
        double y1 = 0.0;
        /// False if there were no data to fit the range to. The view then remains
        /// automatic, and a later paint with data fits it.
        bool isFitted = true;
    };

    Graph() = default;
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;
    virtual ~Graph() = default;

    /// Paints the whole plot: a white background, the grid and the data, the frame
    /// with white margins, which cover data outside the plot area, and finally
    /// drawOnTop(). An empty graph paints only the background and clears @c drawn of the
    /// surface's coordinates, so that no axis titles are drawn.
    ///
    /// The automatic range is used only while the plot has no range from a previous
    /// paint or from the user.
    ///
    /// @param range  receives the automatic range; unchanged for an empty graph
    void paint(DispABase* plot, QStylePainter* p, const QString& xTitle, const QString& yTitle,
               Range* range) const;

    /// Whether the graph has nothing to draw.
    virtual bool isEmpty() const = 0;

    /// Returns the automatic range of a graph that is not empty.
    virtual Range range() const = 0;

protected:
    /// Draws the grid and the data. Called only if the graph is not empty.
    virtual void drawData(QStylePainter* p, const ChCoord& cc) const = 0;
    /// Draws what must not be covered by the frame, for example a legend. Called only if
    /// the graph is not empty. By default draws nothing.
    virtual void drawOnTop(QStylePainter* p, const ChCoord& cc) const;
};

} // namespace display
