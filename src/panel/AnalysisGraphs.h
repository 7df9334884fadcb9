// The graphs of the analysis in the graph window.
#pragma once

#include "analysis/LCFPoint.h"
#include "display/Displays.h"
#include "display/Graph.h"

#include <QColor>
#include <QCoreApplication>
#include <QList>

class A2DData;
class AMutE;
class CColors;
class Histgram;
class QAbstractButton;

namespace analysis
{
class ReferenceSet;
}

namespace panel
{

class InputReader;
struct Widgets;

/// The results that the graphs show beside the texts of the panel.
struct GraphData {
    /// One family of histograms: that of all references together, and one for each.
    struct Histograms {
        const Histgram& main;
        const QList<Histgram*>& ofReferences;
    };

    const A2DData& result;             ///< of the latest map calculation
    const QList<AMutE*>& shownOnly;    ///< spectra loaded for display only
    const AMutE* fitted;               ///< curve of the latest fit; may be null
    const QList<LCFPoint>& comparison; ///< of fits and target results
    int pointColor;                    ///< place in the colours of the next comparison point
    const CColors& colors;
    Histograms valence;
    Histograms thickness;
};

/// Draws the graphs of the analysis: each gathers its numbers anew for every paint,
/// and nothing is kept between paints.
class AnalysisGraphs
{
    Q_DECLARE_TR_FUNCTIONS(FourPs) // the titles belong to the panel's texts

public:
    /// @param widgets  complete at the first paint
    /// Both must outlive this.
    AnalysisGraphs(const Widgets& widgets, const InputReader& inputs);

    /// Draws graph @p id (DMuts to DM2M3) in @p frame; nothing for any other one, which
    /// a spectrum row draws.
    ///
    /// @param range  the automatic range, in data values; left alone by an empty graph
    void draw(Displays::DispId id, DispABase* frame, QStylePainter* p, const GraphData& data,
              display::Graph::Range* range) const;

    /// Switches the spectrum whose row of the legend of all spectra is at @p pos (pixels
    /// of the surface) on or off.
    void switchSpectrumAt(QPoint pos, const QList<AMutE*>& shownOnly) const;

private:
    /// Where a paint goes to.
    struct Plot {
        DispABase* frame;
        QStylePainter* painter;
        display::Graph::Range* range;

        void paint(const display::Graph& graph, const QString& xTitle, const QString& yTitle) const;
    };

    /// What tells the two families of histograms apart.
    struct HistogramChoice {
        QString xTitle;
        const QAbstractButton* mainBox;
        bool (InputReader::*isShown)(const analysis::ReferenceSet& references, int n) const;
    };

    void drawSpectra(const Plot& plot, const GraphData& data) const;
    void drawComparison(const Plot& plot, const GraphData& data) const;
    void drawHistograms(const Plot& plot, const GraphData::Histograms& histograms,
                        const HistogramChoice& choice, const CColors& colors) const;
    void drawThickness(const Plot& plot, const GraphData& data) const;
    void drawPlane(const Plot& plot) const;
    QList<AMutE*> allSpectra(const QList<AMutE*>& shownOnly) const;

    const Widgets& m_widgets;
    const InputReader& m_inputs;
};

} // namespace panel
