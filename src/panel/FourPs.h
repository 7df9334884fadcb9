// The one panel of the program: input rows, calculations and result map.
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

/// Owns the rows of input, the result map, the histograms and the windows, and joins
/// them with signals and slots. What is read, drawn and connected how is the work of its
/// parts (panel::InputReader, panel::AnalysisGraphs, ...).
///
/// The widgets are the state: numbers and choices are read from line edits and
/// buttons at each use, and a text that is no number counts as 0. A slot gathers
/// what it needs once, calls a pure function, and presents its result. Refusals
/// go to the message box and leave earlier results as they were.
class FourPs : public QFrame
{
    Q_OBJECT

public:
    explicit FourPs(QWidget* parent = nullptr);

    /// Adds a line to the message box, its white space folded.
    void message(const QString& text);

    /// Gives the focus to the button for the file of the first reference, with which
    /// a session begins. Call it when the panel is in its window.
    void focusFirstStep();

    /// See panel::InputReader::normMode().
    int NormMode() const;

    /// Lowest and highest valence among the used references and their distance;
    /// see analysis::ReferenceSet::valenceRange().
    void ValenceRange(double& lo, double& hi, double& span) const;

    /// See panel::ResultMapView::setPresetLimits().
    bool SetMapScale();

    /// Writes the automatic histogram limits where "Auto" is on.
    void SetHistogramRanges();

    /// See panel::InputReader: checkedMapRow(), isRatioShown(), isDMutShown().
    int CheckedMapRow() const;
    bool ratioChecked(int n) const;
    bool dMutChecked(int n) const;

    /// The valence histogram, or that of the last checked ratio box.
    Histgram* currentRatioHist() const;

    /// See analysis::ReferenceSet: edgeJumpRatio() and valenceMix().
    double edgeJumpRatio() const;
    double valenceMix(double a) const;

    /// Whether the result file shall have column @p i (0 to 12), and its name there,
    /// "UnKnown" outside 0 to 12.
    bool isColumnWanted(int i) const;
    QString columnName(int i) const;

    /// Index (0 to 12) of the map chosen for display; 0 when none is.
    int kindOfMap() const;

    Ui_FourPs ui;
    QLineEdit* MultiEnergys = nullptr; ///< a list of energies for all rows
    AFileSelect* MultiFiles = nullptr; ///< several maps at once
    RefFiles Refs;
    QList<AXafsFileSelect*> XafsFiles; ///< Ref 1 to Ref 4, then the target
    QList<AEPoint*> EPoints;           ///< eight rows; nobody owns their frames
    A2DData BaseData;                  ///< result of the latest map calculation
    QList<AMutE*> DispMuts;            ///< for display only; index as in SelectedFs
    AMutE* LCFMut = nullptr;           ///< fitted curve of the latest fit; not marked valid
    double TargetV = 0.0;              ///< first fraction of the latest target calculation
    double TargetT = 0.0;              ///< its valence
    QList<LCFPoint> LCFvs4PS;          ///< one for each fit since the last clearing
    int LCFColor = 0;                  ///< colour of the next of them
    bool unusedFlag = false;           ///< kept for the shape of the panel; read by nothing
    CColors Colors;                    ///< those that graphs draw with
    Displays* Disps = nullptr;         ///< the graph window
    DispMBase* MapDisp = nullptr;      ///< the window of the result map
    DispMBase* DMapDisp = nullptr;     ///< the window of the measured map
    Histgram* HistV = nullptr;         ///< valence
    Histgram* HistT = nullptr;         ///< total dMut
    QList<Histgram*> HistRatio;        ///< one per reference, widgets of HistV
    QList<Histgram*> HistDMut;         ///< one per reference, widgets of HistT
    double scaleX0 = 0.0;              ///< automatic range of the graph drawn last
    double scaleY0 = 0.0;
    double scaleX1 = 0.0;
    double scaleY1 = 0.0;

public Q_SLOTS:
    /// Take the edge energy @p e (eV), to the 6 digits that are shown; give every spectrum the
    /// edge and the two limits of the fields, refit all background lines, and refresh the
    /// columns of the valid references, not that of the target.
    void noticedNewEdge(double e);
    void setEdge();

    void updateMaps(bool f);         ///< repaints both map windows, whatever @p f is
    void dispCalcConditions(bool f); ///< shows or hides the block of further conditions

    /// Less the post-edge line (@p f) or the pre-edge line: refresh the columns concerned and
    /// run the reflex.
    void changedSubBGTypeForRef(bool f);
    void changedSubBGTypeForTarget(bool f);

    void removeAFile(); ///< the one chosen in the list of spectra for display only, if any

    /// Hands the directory to every file row but the one for saving. An empty one, of a file
    /// on a share that is not mounted, goes to no row.
    void receiveNewDir(QString dir);

    /// Refreshes the cells of the row that sent it at the row's energy; no calculation follows.
    void receiveNewEnergy(double e);

    /// A spectrum row took another file: refreshes its column, then runs the reflex, also
    /// when the sender is no spectrum row.
    void receiveNewFile(QString fname);

    /// Write the column of a reference (@p n from 0) and run the reflex, if its spectrum is
    /// valid; any other number does nothing.
    void receiveNewRef(int n);
    void receiveNewRef1(QString fname);
    void receiveNewRef2(QString fname);
    void receiveNewRef3(QString fname);
    void receiveNewRef4(QString fname);

    void receiveNewTarget(QString fname);        ///< writes its column, whatever @p fname is
    void receiveNewDispFiles(QStringList paths); ///< those that cannot be read are dropped
    void receiveNewPaths(QStringList paths); ///< a map for each row, in order; surplus is dropped

    /// The reflex after a change of input: histogram limits, map calculation, target
    /// calculation, linear combination fit, each whatever became of the one before.
    void calcBoth();

    void calcMap();      ///< every pixel of the maps in use into BaseData and the histograms
    void calcTarget();   ///< from the rows, or the spectra (non-equivalent), into CalcRes
    void calcAndWrite(); ///< after a refused calculation the earlier result

    /// Writes BaseData and the two main histograms to the file named in the save row; what
    /// cannot be written is told in the message box.
    void write();

    void clearLCFvs4PS(MouseC* m);    ///< empties the comparison of fits and target results
    void newColorLCFvs4PS(MouseC* m); ///< another colour for its next points
    void updateDMap();                ///< repaints the measured map, the view fitted anew

    /// Draw the graph @p id of the analysis (a spectrum row draws any other one), the chosen
    /// quantity of the result, and the measured map of the chosen energy row.
    void draw(Displays::DispId id, DispABase* dab, QStylePainter* p);
    void drawMap(QStylePainter* p);
    void drawDMap(QStylePainter* p);

    void selectedNewMap(); ///< repaints the result map in the limits of its new quantity

    /// Show the value at a place in the view, in pixels of the map.
    void receiveNowPosInMap(double x, double y);
    void receiveNowPosInDMap(double x, double y);

    /// Fits the target spectrum by the used references into LCFRes and LCFMut, and adds a
    /// point to LCFvs4PS.
    void lcf();

    void mPressedInAllMut(MouseC* m); ///< switches the spectrum of the pressed legend row
    void dClickedInMap(MouseC* m);    ///< see panel::ResultMapView::takeDoubleClick()
    void newMultiEnergys();           ///< spreads the typed list of energies over the rows

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

    // Reflexes.
    bool isSpectrumWorkLong() const;
    bool isReflexLong() const;
    void RefreshRefColumn(int n);

    panel::MessageLines m_messages;
    analysis::MapResultCache m_latestMap; ///< skips those with unchanged inputs
    analysis::CalculationMemory m_calculationMemory;
    panel::Widgets m_widgets; ///< for the parts below
    panel::InputReader m_inputs{m_widgets};
    panel::AnalysisGraphs m_graphs{m_widgets, m_inputs};
    panel::ResultMapView m_resultMap{m_widgets, m_inputs, BaseData};
    panel::DataMapView m_dataMap{m_widgets, m_inputs};
};
