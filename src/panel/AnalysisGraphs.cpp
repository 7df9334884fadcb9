#include "panel/AnalysisGraphs.h"

#include "analysis/ReferenceSet.h"
#include "display/CColors.h"
#include "display/ComparisonGraph.h"
#include "display/Histgram.h"
#include "display/HistogramGraph.h"
#include "display/Legend.h"
#include "display/LineEditText.h"
#include "display/PlaneGraph.h"
#include "display/SpectraGraph.h"
#include "display/ThicknessGraph.h"
#include "panel/InputReader.h"
#include "panel/Widgets.h"
#include "rows/ARefFile.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

using display::numberIn;

namespace panel
{

namespace
{

constexpr int mainHistogramColor = 11;

QColor colorOf(const CColors& colors, qsizetype i)
{
    const qsizetype count = colors.colors.size();
    return count > 0 ? colors.colors.at(i % count) : QColor(Qt::black);
}

} // namespace

AnalysisGraphs::AnalysisGraphs(const Widgets& widgets, const InputReader& inputs)
    : m_widgets(widgets)
    , m_inputs(inputs)
{
}

void AnalysisGraphs::Plot::paint(const display::Graph& graph, const QString& xTitle,
                                 const QString& yTitle) const
{
    graph.paint(frame, painter, xTitle, yTitle, range);
}

void AnalysisGraphs::draw(Displays::DispId id, DispABase* frame, QStylePainter* p,
                          const GraphData& data, display::Graph::Range* range) const
{
    const Ui_FourPs& form = *m_widgets.form;
    const Plot plot{frame, p, range};
    switch (id) {
    case Displays::DMuts:
        drawSpectra(plot, data);
        break;
    case Displays::DLCFvs4PS:
        drawComparison(plot, data);
        break;
    case Displays::DHistA:
        drawHistograms(plot, data.valence,
                       {tr("Valence"), form.HgValence, &InputReader::isRatioShown}, data.colors);
        break;
    case Displays::DHistDMut:
        drawHistograms(plot, data.thickness,
                       {tr("Thick."), form.HgAmount, &InputReader::isDMutShown}, data.colors);
        break;
    case Displays::DDMutVsA:
        drawThickness(plot, data);
        break;
    case Displays::DM2M3:
        drawPlane(plot);
        break;
    default:
        break; // the spectrum rows draw the other plots
    }
}

QList<AMutE*> AnalysisGraphs::allSpectra(const QList<AMutE*>& displayOnly) const
{
    QList<AMutE*> spectra;
    for (const ARefFile* row : m_widgets.references->RefRows) {
        spectra.append(row->XafsFS);
    }
    return spectra + displayOnly;
}

void AnalysisGraphs::drawSpectra(const Plot& plot, const GraphData& data) const
{
    constexpr int referenceWidth = 2;
    const InputReader::Edge edge = m_inputs.edge();
    display::SpectraGraph graph;
    graph.kind = m_inputs.normMode();
    graph.edge = edge.energy;
    graph.from = edge.preEdgeEnd;
    graph.to = edge.postEdgeStart;
    for (const analysis::PointState& point : m_inputs.points()) {
        graph.marks.append({point.energy, point.inFit, point.used});
    }
    for (const AMutE* spectrum : allSpectra(data.displayOnly)) {
        const qsizetype i = graph.curves.size();
        const bool isReference = i < m_widgets.references->RefRows.size();
        graph.curves.append({spectrum, colorOf(data.colors, i), isReference ? referenceWidth : 1,
                             tr("%1").arg(spectrum->fileName)});
    }
    graph.fitted = data.fitted;
    plot.paint(graph, tr("Eng.[eV]"), tr("mut"));
}

void AnalysisGraphs::switchSpectrumAt(QPoint pos, const QList<AMutE*>& displayOnly) const
{
    const display::Legend legend(m_widgets.graphs->frame(Displays::DMuts)->DispA->cc);
    int row = 0;
    for (AMutE* spectrum : allSpectra(displayOnly)) {
        if (!spectrum->valid) {
            continue;
        }
        if (legend.isHit(row, pos)) {
            spectrum->switchedOn = !spectrum->switchedOn;
        }
        ++row;
    }
}

void AnalysisGraphs::drawComparison(const Plot& plot, const GraphData& data) const
{
    display::ComparisonGraph graph;
    const auto [lower, upper] = m_inputs.references().firstTwoValences();
    graph.lower = lower;
    graph.upper = upper;
    graph.points = data.comparison;
    graph.colors = data.colors.colors;
    plot.paint(graph, tr("LCF"), tr("MPs"));
}

void AnalysisGraphs::drawHistograms(const Plot& plot, const GraphData::Histograms& histograms,
                                    const HistogramChoice& choice, const CColors& colors) const
{
    display::HistogramGraph graph;
    graph.from = numberIn(histograms.main.fromEdit);
    graph.to = numberIn(histograms.main.toEdit);
    graph.main = histograms.main;
    graph.mainShown = choice.mainBox->isChecked();
    graph.mainColor = colorOf(colors, mainHistogramColor);
    const analysis::ReferenceSet references = m_inputs.references();
    const QList<Histgram*>& single = histograms.ofReferences;
    for (int k = 0; k < single.size() && references.used(k); ++k) {
        if (references.used(k)->valid && (m_inputs.*choice.isShown)(references, k)) {
            graph.references.append({*single.at(k), colorOf(colors, references.usedRow(k))});
        }
    }
    plot.paint(graph, choice.xTitle, tr("Num."));
}

void AnalysisGraphs::drawThickness(const Plot& plot, const GraphData& data) const
{
    const analysis::ReferenceSet references = m_inputs.references();
    const Histgram& valence = data.valence.main;
    const Histgram& thickness = data.thickness.main;
    display::ThicknessGraph graph(data.result, references.valenceMix());
    graph.limits = {numberIn(valence.fromEdit), numberIn(thickness.fromEdit),
                    numberIn(valence.toEdit), numberIn(thickness.toEdit)};
    const auto [lower, upper] = references.firstTwoValences();
    graph.lower = lower;
    graph.upper = upper;
    graph.color = colorOf(data.colors, data.pointColor);
    plot.paint(graph, tr("Valence"), tr("Thick."));
}

void AnalysisGraphs::drawPlane(const Plot& plot) const
{
    const analysis::ReferenceSet references = m_inputs.references();
    const QList<analysis::PointState> points = m_inputs.points();
    display::PlaneGraph graph;
    if (references.usedRow(1) >= 0) {
        const auto first = static_cast<std::size_t>(references.usedRow(0));
        const auto second = static_cast<std::size_t>(references.usedRow(1));
        for (const analysis::PointState& point : points) {
            graph.points.append({point.mut.at(first), point.mut.at(second), point.vPoint});
        }
    }
    graph.lines = analysis::planeLines(analysis::collectRowsLS(points, references));
    plot.paint(graph, tr("M2"), tr("M3"));
}

} // namespace panel
