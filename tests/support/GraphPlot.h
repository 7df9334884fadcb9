// A plot by itself that paints one graph.
#pragma once

#include "display/DispABase.h"
#include "display/Graph.h"

#include <QImage>
#include <QString>

namespace tests
{

/// A frame whose surface is 400 by 300 pixels, so that the plot area reaches
/// from column 40 to 380 and from row 270 up to 15. It paints the graph at each
/// picture().
class GraphPlot : public DispABase
{
public:
    explicit GraphPlot(const Graph& graph)
    {
        DispA->setFixedSize(400, 300);
        connect(this, &DispABase::draw, this, [this, &graph](QStylePainter* p) {
            graph.paint(this, p, QStringLiteral("abscissa"), QStringLiteral("ordinate"), &range);
        });
    }

    QImage picture() { return DispA->grab().toImage(); }

    Graph::Range range{-1.0, -2.0, -3.0, -4.0};
};

} // namespace tests
