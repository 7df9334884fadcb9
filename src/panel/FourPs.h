// The analysis panel, which is the content of the main window.
#pragma once

#include "analysis/CalculationMemory.h"
#include "analysis/LCFPoint.h"
#include "analysis/MapResultCache.h"
#include "data/A2DData.h"
#include "display/CColors.h"
#include "display/Displays.h"
#include "panel/AnalysisGraphs.h"
#include "panel/DataMapView.h"
#include "panel/InputReader.h"
#include "panel/MessageLines.h"
#include "panel/ResultMapView.h"
#include "panel/Widgets.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

#include <QFrame>
#include <QList>
#include <QStringList>

class AEPoint;
class AFileSelect;
class AMutE;
class AXafsFileSelect;
class DispMBase;
class Histgram;

namespace analysis
{
struct CollectedRows;
struct MapStack;
struct Message;
struct TargetResult;
enum class Variant;
} // namespace analysis

/// Creates the input rows, the histograms and the windows of the graphs and maps, and
/// stores the results. Classes in the namespace panel read the inputs, draw, and connect
/// signals with slots (InputReader, AnalysisGraphs, Wiring, ...).
///
/// Line edits and buttons store the numbers and choices of the user. Calculations and
/// graphs read them there; unparsable text counts as 0. If a calculation is refused, the
/// reason is shown in the message box and earlier results are kept.
class FourPs : public QFrame
{
    Q_OBJECT

public:
    explicit FourPs(QWidget* parent = nullptr);

    /// Appends QString::simplified() of @p text to the message box as one line of text.
    void message(const QString& text);

    /// Gives the focus to the file button of the first reference, because a session
    /// starts with this file. Call this after the panel is placed in its window.
    void focusFirstStep();

    /// See panel::InputReader::normMode().
    int NormMode() const;

    /// Sets @p lo and @p hi to the limits of analysis::ReferenceSet::valenceRange(), and
    /// @p span to hi - lo.
    void ValenceRange(double& lo, double& hi, double& span) const;

    /// See panel::ResultMapView::setPresetLimits().
    bool SetMapScale();

    /// Writes the automatic limits of the valence histograms to their fields if their "Auto"
    /// is checked, and does the same for the thickness histograms. Without "Auto" the fields
    /// are not changed.
    void SetHistogramRanges();

    int CheckedMapRow() const;      ///< see panel::InputReader::checkedMapRow()
    bool ratioChecked(int n) const; ///< see panel::InputReader::isRatioShown()
    bool dMutChecked(int n) const;  ///< see panel::InputReader::isDMutShown()

    /// Returns the ratio histogram of the last reference row whose check box for the ratio
    /// histogram is checked, or the valence histogram if no such box is checked.
    Histgram* currentRatioHist() const;

    double edgeJumpRatio() const;      ///< see analysis::ReferenceSet::edgeJumpRatio()
    double valenceMix(double a) const; ///< see analysis::ReferenceSet::valenceMix()

    /// Whether column @p i (0 to 12) is selected for the result file; false for any
    /// other number.
    bool isColumnWanted(int i) const;

    /// Returns the name of column @p i (0 to 12) in the result file, or "UnKnown" for
    /// any other number.
    QString columnName(int i) const;

    /// Returns the index (0 to 12) of the quantity that the result map shows, or 0 if
    /// none is selected.
    int kindOfMap() const;

    Ui_FourPs ui;
    QLineEdit* MultiEnergys = nullptr; ///< field for a list of energies, one per energy row
    AFileSelect* MultiFiles = nullptr; ///< file row that selects several maps at once
    RefFiles Refs;
    QList<AXafsFileSelect*> XafsFiles; ///< Ref 1 to Ref 4, then the target
    QList<AEPoint*> EPoints;  ///< the eight energy rows; their frames have no QObject parent
    A2DData BaseData;         ///< result map of the latest map calculation
    QList<AMutE*> DispMuts;   ///< spectra for display only, in the order of SelectedFs
    AMutE* LCFMut = nullptr;  ///< curve of the latest linear combination fit; null at first
    double TargetV = 0.0;     ///< TargetResult::a of the latest target calculation
    double TargetT = 0.0;     ///< TargetResult::valence of the latest target calculation
    QList<LCFPoint> LCFvs4PS; ///< one point for each fit since the list was last cleared
    int LCFColor = 0;        ///< colour index of the next LCFvs4PS point and of the thickness graph
    bool unusedFlag = false; ///< not read by any code; completes the fixed set of members
    CColors Colors;          ///< the colours of the graphs
    Displays* Disps = nullptr;     ///< the graph window
    DispMBase* MapDisp = nullptr;  ///< the window of the result map
    DispMBase* DMapDisp = nullptr; ///< the window of the measured map
    Histgram* HistV = nullptr;     ///< histogram of the valence
    Histgram* HistT = nullptr;     ///< histogram of the thickness or the total dMut
    QList<Histgram*> HistRatio; ///< ratio histograms, one per reference; limits and bins like HistV
    QList<Histgram*> HistDMut;  ///< dMut histograms, one per reference; limits and bins like HistT
    double scaleX0 = 0.0;       ///< lower x of the latest automatic range of a graph
    double scaleY0 = 0.0;       ///< lower y of the latest automatic range of a graph
    double scaleX1 = 0.0;       ///< upper x of the latest automatic range of a graph
    double scaleY1 = 0.0;       ///< upper y of the latest automatic range of a graph

public Q_SLOTS:
    /// Writes the edge energy @p e (eV) with 6 significant digits to its field and calls setEdge().
    void noticedNewEdge(double e);

    /// Sets the edge energy and the limits of the pre-edge and post-edge regions of all
    /// spectra to the values in the fields, fits all background lines again, and calls
    /// receiveNewRef() for each reference. The mut column of the target is not refreshed.
    void setEdge();

    void updateMaps(bool f);         ///< repaints both map windows; ignores @p f
    void dispCalcConditions(bool f); ///< shows or hides the further calculation conditions

    /// Selects the background line that is subtracted from the references: the post-edge
    /// line if @p f is true, otherwise the pre-edge line. Then calls receiveNewRef() for
    /// each reference.
    void changedSubBGTypeForRef(bool f);

    /// Selects the background line that is subtracted from the target: the post-edge line
    /// if @p f is true, otherwise the pre-edge line. Then refreshes the mut column of the
    /// target and runs calcBoth().
    void changedSubBGTypeForTarget(bool f);

    /// Deletes the selected spectrum from the list of spectra for display only. Does nothing
    /// if none is selected.
    void removeAFile();

    /// Sets the directory of all file rows except the save row to @p dir. Ignores an empty
    /// @p dir, which a file row reports for a file in a directory that does not exist.
    void receiveNewDir(QString dir);

    /// Refreshes the mut fields of the energy row that sent the signal, for the energy in its
    /// field. Ignores @p e. Does not run calcBoth().
    void receiveNewEnergy(double e);

    /// A file was selected in a spectrum row, or the row was cleared: calls receiveNewRef() or
    /// receiveNewTarget() for the row that sent the signal, then runs calcBoth(). For any other
    /// sender, only runs calcBoth(). Ignores @p fname.
    void receiveNewFile(QString fname);

    /// Refreshes the mut column of reference @p n (from 0): its mut in each energy row with a
    /// positive energy. Then runs calcBoth(). Does nothing if the reference has no valid
    /// spectrum or does not exist.
    void receiveNewRef(int n);

    void receiveNewRef1(QString fname); ///< calls receiveNewRef(0); ignores @p fname
    void receiveNewRef2(QString fname); ///< calls receiveNewRef(1); ignores @p fname
    void receiveNewRef3(QString fname); ///< calls receiveNewRef(2); ignores @p fname
    void receiveNewRef4(QString fname); ///< calls receiveNewRef(3); ignores @p fname

    /// Refreshes the mut column of the target; @p fname is ignored.
    void receiveNewTarget(QString fname);

    /// Reads the spectra in @p paths for display only. Files that cannot be read are skipped.
    void receiveNewDispFiles(QStringList paths);

    /// Reads the maps in @p paths into the energy rows, in order. Surplus paths are ignored.
    void receiveNewPaths(QStringList paths);

    /// The recalculation after a change of input: sets the automatic histogram limits, then
    /// runs the map calculation, the target calculation and the linear combination fit. Each
    /// of these runs even if an earlier one was refused.
    void calcBoth();

    /// Runs the selected calculation on the maps of the used energy rows. Stores the results
    /// in BaseData and in the histograms.
    void calcMap();

    /// Calculates the target and shows the result in CalcRes. The four-point methods use the
    /// energy rows; the non-equivalent method uses the spectra.
    void calcTarget();

    /// Runs calcMap() and write(). If the calculation is refused, the previous result is
    /// written.
    void calcAndWrite();

    /// Writes BaseData to the file named in the save row, and the valence and thickness
    /// histograms to their files if these exist, see Histgram::write(). Write errors are
    /// reported in the message box, except that a histogram file that cannot be opened is
    /// skipped without a message.
    void write();

    void clearLCFvs4PS(MouseC* m);    ///< clears LCFvs4PS and sets LCFColor to 0
    void newColorLCFvs4PS(MouseC* m); ///< selects the next colour for new points of LCFvs4PS
    void updateDMap();                ///< see panel::DataMapView::showOtherMap()

    /// Draws the analysis graph @p id; does nothing for the plots that spectrum rows draw.
    void draw(Displays::DispId id, DispABase* dab, QStylePainter* p);

    void drawMap(QStylePainter* p);  ///< draws the selected quantity of the result map
    void drawDMap(QStylePainter* p); ///< draws the measured map of the selected energy row
    void selectedNewMap();           ///< see panel::ResultMapView::showOtherQuantity()

    /// Shows the value of the result map at (@p x, @p y) (pixels of the map).
    void receiveNowPosInMap(double x, double y);
    /// Shows the value of the measured map at (@p x, @p y) (pixels of the map).
    void receiveNowPosInDMap(double x, double y);

    /// Fits a linear combination of the used references to the target spectrum. Shows the
    /// result in LCFRes, stores the fitted curve in LCFMut and adds a point to LCFvs4PS. If
    /// the fit is refused, only the message box changes.
    void lcf();

    void mPressedInAllMut(MouseC* m); ///< see panel::AnalysisGraphs::switchSpectrumAt()
    void dClickedInMap(MouseC* m);    ///< see panel::ResultMapView::handleDoubleClick()
    void newMultiEnergys();           ///< copies the typed list of energies to the energy rows

private:
    void listWidgets();
    void showMessages(const QList<analysis::Message>& messages);

    // Target calculation.
    void target3ps(const analysis::CalculationState& state, const analysis::CollectedRows& rows);
    void target4psExact(const analysis::CalculationState& state,
                        const analysis::CollectedRows& rows);
    void target4psLS(const analysis::CalculationState& state, const analysis::CollectedRows& rows);
    void targetNEQ(bool victoreen, const analysis::CalculationState& state);
    void showTargetResult(const analysis::TargetResult& result);

    // Map calculation.
    void map3ps(const analysis::CalculationState& state, const analysis::CollectedRows& rows);
    void map4psExact(const analysis::CalculationState& state, const analysis::CollectedRows& rows);
    void map4psLS(const analysis::CalculationState& state, const analysis::CollectedRows& rows);
    void mapNEQ(bool victoreen, const analysis::CalculationState& state);
    using MapForm = void (*)(const analysis::MapStack& stack, A2DData& result,
                             analysis::HistogramCounts& valence,
                             analysis::HistogramCounts& thickness);
    void runMapForm(analysis::Variant variant, MapForm form, analysis::MapStack stack);

    // Recalculation.
    bool isSpectrumWorkLong() const;
    bool isRecalculationLong() const;
    void RefreshRefColumn(int n);

    panel::MessageLines m_messages;
    analysis::MapResultCache m_latestMap; ///< used to skip a map calculation with unchanged inputs
    analysis::CalculationMemory m_calculationMemory;
    panel::Widgets m_widgets; ///< the widgets that the parts below use
    panel::InputReader m_inputs{m_widgets};
    panel::AnalysisGraphs m_graphs{m_widgets, m_inputs};
    panel::ResultMapView m_resultMap{m_widgets, m_inputs, BaseData};
    panel::DataMapView m_dataMap{m_widgets, m_inputs};
};
