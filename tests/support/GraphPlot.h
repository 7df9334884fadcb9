// A plot frame for one graph, without a panel.
#pragma once

#include "display/DispABase.h"
#include "display/Graph.h"

#include <QImage>
#include <QString>

namespace tests
{

/// A plot frame that paints @p graph, with the axis titles inside the plot, on each call
/// of picture(). @p graph must outlive the plot.
///
/// The margins are a tenth of the surface at the left and bottom and a twentieth at the
/// right and top. On the default surface of 400 by 300 pixels, the plot area spans pixel
/// columns 40 to 380 and pixel rows 15 to 270.
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
