// The graphs of the analysis: each gathers the panel's numbers anew for every
// paint, and nothing is kept between paints.

#include "panel/FourPs.h"

#include "analysis/ReferenceSet.h"
#include "display/ComparisonGraph.h"
#include "display/Displays.h"
#include "display/Histgram.h"
#include "display/HistogramGraph.h"
#include "display/Legend.h"
#include "display/LineEditText.h"
#include "display/PlaneGraph.h"
#include "display/SpectraGraph.h"
#include "display/ThicknessGraph.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"

using display::numberIn;

namespace
{

constexpr int mainHistogramColor = 11;

} // namespace

void FourPs::draw(Displays::DispId id, DispABase* dab, QStylePainter* p)
{
    switch (id) {
    case Displays::DMuts:
        drawAllMut(dab, p);
        break;
    case Displays::DLCFvs4PS:
        drawComparison(dab, p);
        break;
    case Displays::DHistA:
        drawHistograms(dab, p, tr("Valence"), *HistV, ui.HgValence, HistRatio,
                       &FourPs::ratioChecked);
        break;
    case Displays::DHistDMut:
        drawHistograms(dab, p, tr("Thick."), *HistT, ui.HgAmount, HistDMut, &FourPs::dMutChecked);
        break;
    case Displays::DDMutVsA:
        drawThickness(dab, p);
        break;
    case Displays::DM2M3:
        drawPlane(dab, p);
        break;
    default:
        break; // the spectrum rows draw their own
    }
}

void FourPs::drawGraph(const display::Graph& graph, DispABase* dab, QStylePainter* p,
                       const QString& xTitle, const QString& yTitle)
{
    display::Graph::Range range{scaleX0, scaleY0, scaleX1, scaleY1};
    graph.paint(dab, p, xTitle, yTitle, &range);
    scaleX0 = range.x0;
    scaleY0 = range.y0;
    scaleX1 = range.x1;
    scaleY1 = range.y1;
}

QColor FourPs::colorOf(qsizetype i) const
{
    const qsizetype count = Colors.colors.size();
    return count > 0 ? Colors.colors.at(i % count) : QColor(Qt::black);
}

QList<AMutE*> FourPs::shownSpectra() const
{
    QList<AMutE*> spectra;
    for (const ARefFile* row : Refs.RefRows) {
        spectra.append(row->XafsFS);
    }
    return spectra + DispMuts;
}

void FourPs::drawAllMut(DispABase* dab, QStylePainter* p)
{
    display::SpectraGraph graph;
    graph.kind = NormMode();
    graph.edge = numberIn(ui.EdgeE);
    graph.from = graph.edge + numberIn(ui.PreEEndDE);
    graph.to = graph.edge + numberIn(ui.PostEStartDE);
    for (const AEPoint* row : std::as_const(EPoints)) {
        graph.marks.append(
            {numberIn(row->Energy), row->LCFCB->isChecked(), row->UseCB->isChecked()});
    }
    for (const AMutE* spectrum : shownSpectra()) {
        const qsizetype i = graph.curves.size();
        const int width = i < Refs.RefRows.size() ? 2 : 1;
        graph.curves.append({spectrum, colorOf(i), width, tr("%1").arg(spectrum->fileName)});
    }
    graph.fitted = LCFMut;
    drawGraph(graph, dab, p, tr("Eng.[eV]"), tr("mut"));
}

void FourPs::mPressedInAllMut(MouseC* m)
{
    const display::Legend legend(Disps->frame(Displays::DMuts)->DispA->cc);
    int row = 0;
    for (AMutE* spectrum : shownSpectra()) {
        if (!spectrum->valid) {
            continue;
        }
        if (legend.isHit(row, m->pressPos)) {
            spectrum->switchedOn = !spectrum->switchedOn;
        }
        ++row;
    }
    Disps->update();
}

void FourPs::drawComparison(DispABase* dab, QStylePainter* p)
{
    display::ComparisonGraph graph;
    const auto [lower, upper] = references().firstTwoValences();
    graph.lower = lower;
    graph.upper = upper;
    graph.points = LCFvs4PS;
    graph.colors = Colors.colors;
    drawGraph(graph, dab, p, tr("LCF"), tr("MPs"));
}

void FourPs::drawHistograms(DispABase* dab, QStylePainter* p, const QString& xTitle,
                            const Histgram& main, const QAbstractButton* mainBox,
                            const QList<Histgram*>& ofReferences,
                            bool (FourPs::*isShown)(int n) const)
{
    display::HistogramGraph graph;
    graph.from = numberIn(main.fromEdit);
    graph.to = numberIn(main.toEdit);
    graph.main = main;
    graph.mainShown = mainBox->isChecked();
    graph.mainColor = colorOf(mainHistogramColor);
    const analysis::ReferenceSet refs = references();
    for (int k = 0; k < ofReferences.size() && refs.used(k); ++k) {
        if (refs.used(k)->valid && (this->*isShown)(k)) {
            graph.references.append({*ofReferences.at(k), colorOf(refs.usedRow(k))});
        }
    }
    drawGraph(graph, dab, p, xTitle, tr("Num."));
}

void FourPs::drawThickness(DispABase* dab, QStylePainter* p)
{
    const analysis::ReferenceSet refs = references();
    display::ThicknessGraph graph(BaseData, refs.valenceMix());
    graph.limits = {numberIn(ui.HgAFrom), numberIn(ui.HgTFrom), numberIn(ui.HgATo),
                    numberIn(ui.HgTTo)};
    const auto [lower, upper] = refs.firstTwoValences();
    graph.lower = lower;
    graph.upper = upper;
    graph.color = colorOf(LCFColor);
    drawGraph(graph, dab, p, tr("Valence"), tr("Thick."));
}

void FourPs::drawPlane(DispABase* dab, QStylePainter* p)
{
    const analysis::ReferenceSet refs = references();
    const QList<analysis::PointState> points = pointStates();
    display::PlaneGraph graph;
    if (refs.usedRow(1) >= 0) {
        const auto first = static_cast<std::size_t>(refs.usedRow(0));
        const auto second = static_cast<std::size_t>(refs.usedRow(1));
        for (const analysis::PointState& point : points) {
            graph.points.append({point.mut.at(first), point.mut.at(second), point.vPoint});
        }
    }
    graph.lines = analysis::planeLines(analysis::collectRowsLS(points, refs));
    drawGraph(graph, dab, p, tr("M2"), tr("M3"));
}
