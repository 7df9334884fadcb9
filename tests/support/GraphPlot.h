// A plot frame for one graph, without a panel.
#pragma once

#include "display/DispABase.h"
#include "display/Graph.h"

#include <QImage>
#include <QString>

namespace tests
{

/// A plot frame that paints @p graph, with its axis titles inside the plot, on each call
/// of picture(). In the default size the plot area spans columns 40 to 380 and rows 15 to
/// 270. @p graph must outlive the plot.
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
