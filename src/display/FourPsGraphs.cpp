// Slots of the panel for the graph window.

#include "panel/FourPs.h"

#include "display/MouseC.h"

void FourPs::draw(Displays::DispId id, DispABase* dab, QStylePainter* p)
{
    const panel::GraphData shown{.result = BaseData,
                                 .displayOnly = DispMuts,
                                 .fitted = LCFMut,
                                 .comparison = LCFvs4PS,
                                 .pointColor = LCFColor,
                                 .colors = Colors,
                                 .valence = {*HistV, HistRatio},
                                 .thickness = {*HistT, HistDMut}};
    display::Graph::Range range{scaleX0, scaleY0, scaleX1, scaleY1};
    m_graphs.draw(id, dab, p, shown, &range);
    scaleX0 = range.x0;
    scaleY0 = range.y0;
    scaleX1 = range.x1;
    scaleY1 = range.y1;
}

void FourPs::mPressedInAllMut(MouseC* m)
{
    m_graphs.switchSpectrumAt(m->pressPos, DispMuts);
    Disps->update();
}
