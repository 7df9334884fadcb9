// A plot by itself that paints one graph.
#pragma once

#include "display/DispABase.h"
#include "display/Graph.h"

#include <QImage>
#include <QString>

namespace tests
{

/// A frame that paints the graph at each picture(), with titles in the plot.
/// With its usual size the plot area reaches from column 40 to 380 and from row
/// 270 up to 15.
class GraphPlot : public DispABase
{
public:
    explicit GraphPlot(const display::Graph& graph, const QSize& size = {400, 300},
                       const QString& over = QStringLiteral("abscissa"),
                       const QString& up = QStringLiteral("ordinate"))
    {
        xTitleInArea = true;
        yTitleInArea = true;
        DispA->setFixedSize(size);
        connect(this, &DispABase::draw, this, [this, &graph, over, up](QStylePainter* p) {
            graph.paint(this, p, over, up, &range);
        });
    }

    QImage picture() { return DispA->grab().toImage(); }

    display::Graph::Range range{-1.0, -2.0, -3.0, -4.0};
};

} // namespace tests
