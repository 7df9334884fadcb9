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

/// The data that the graphs show, in addition to the rows and fields of the panel.
struct GraphData {
    /// The histograms of one quantity (valence or thickness): the main histogram, and
    /// one for each reference.
    struct Histograms {
        const Histgram& main;
        const QList<Histgram*>& ofReferences;
    };

    const A2DData& result;             ///< result map of the latest map calculation
    const QList<AMutE*>& displayOnly;  ///< spectra loaded for display only
    const AMutE* fitted;               ///< curve of the latest linear combination fit; can be null
    const QList<LCFPoint>& comparison; ///< pairs of a target result and a fit result
    int pointColor; ///< colour index of the thickness graph and of the next comparison point
    const CColors& colors;
    Histograms valence;
    Histograms thickness;
};

/// Draws the six graphs of the analysis. Each paint reads the input fields and the results
/// again: this class stores no data between paints.
class AnalysisGraphs
{
    Q_DECLARE_TR_FUNCTIONS(FourPs) // the titles are translated in the context of the panel

public:
    /// Both arguments must outlive this object.
    /// @param widgets  must be complete at the first paint
    /// @param inputs   reads the input fields
    AnalysisGraphs(const Widgets& widgets, const InputReader& inputs);

    /// Draws the analysis graph @p id (DMuts to DM2M3) in @p frame. Does nothing for the
    /// other plots, which the spectrum rows draw.
    ///
    /// @param range  receives the automatic range (data values); unchanged for an empty
    ///               graph
    void draw(Displays::DispId id, DispABase* frame, QStylePainter* p, const GraphData& data,
              display::Graph::Range* range) const;

    /// Switches a spectrum in the graph of all spectra on or off if @p pos (pixels of the
    /// painting surface) hits its name in the legend, see display::Legend::isHit().
    void switchSpectrumAt(QPoint pos, const QList<AMutE*>& displayOnly) const;

private:
    /// The arguments of draw() that every graph needs.
    struct Plot {
        DispABase* frame;
        QStylePainter* painter;
        display::Graph::Range* range;

        void paint(const display::Graph& graph, const QString& xTitle, const QString& yTitle) const;
    };

    /// The differences between the graphs of the valence and the thickness histograms.
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
    QList<AMutE*> allSpectra(const QList<AMutE*>& displayOnly) const;

    const Widgets& m_widgets;
    const InputReader& m_inputs;
};

} // namespace panel
