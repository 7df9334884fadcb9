// The one panel of the program: input rows, calculations and result map.
#pragma once

#include "analysis/CalculationMemory.h"
#include "analysis/LCFPoint.h"
#include "analysis/MapResultCache.h"
#include "analysis/RowCollection.h"
#include "data/A2DData.h"
#include "display/CColors.h"
#include "display/Displays.h"
#include "panel/MessageLines.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

#include <QFrame>
#include <QList>
#include <QStringList>

#include <array>

class AEPoint;
class AFileSelect;
class AMutE;
class AXafsFileSelect;
class DispMBase;
class Histgram;
class QButtonGroup;

namespace analysis
{
class MapQuantity;
struct MapStack;
struct MethodRadios;
struct NeqInputs;
class ReferenceSet;
enum class Variant;
struct Work;
} // namespace analysis

namespace display
{
class Graph;
}

/// Holds the rows of input, the result map and the histograms, and joins them
/// with signals and slots.
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

    /// The normalisation chosen for graphs: 0 none, 1 less pre-edge line, 3 by
    /// edge jump, 4 by two lines; 5 when nothing is checked.
    int NormMode() const;

    /// Lowest and highest valence among the used references and their distance;
    /// see analysis::ReferenceSet::valenceRange().
    void ValenceRange(double& lo, double& hi, double& span) const;

    /// Gives the result map the limits that its quantity has beforehand, see
    /// analysis::mapLimits(); false, with the limits left alone, where it has
    /// none.
    bool SetMapScale();

    /// Writes the automatic histogram limits where "Auto" is on.
    void SetHistogramRanges();

    /// Index of the first energy row whose "Show Map" is checked, 0 without one.
    int CheckedMapRow() const;

    /// State of the own histogram box of the @p n-th used reference, from 0;
    /// false when there is no such reference.
    bool ratioChecked(int n) const;
    bool dMutChecked(int n) const;

    /// The valence histogram, or that of the last checked ratio box.
    Histgram* currentRatioHist() const;

    /// Edge jump of the first used reference over that of the second.
    double edgeJumpRatio() const;

    /// Valence of a fraction @p a of the first used reference; 0.0 with fewer
    /// than two valid used references.
    double valenceMix(double a) const;

    /// Whether the result file shall have column @p i (0 to 12).
    bool isColumnWanted(int i) const;

    /// Name of column @p i in the result file, "UnKnown" outside 0 to 12.
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
    /// Takes @p e (eV) as the edge energy, to the 6 digits that are shown, and
    /// sets the edge.
    void noticedNewEdge(double e);

    /// Gives every spectrum the edge and the two limits of the fields, refits
    /// all background lines, and refreshes the columns of the valid references.
    /// The target's column stays as it is.
    void setEdge();

    /// Repaints both map windows; the argument is not looked at.
    void updateMaps(bool f);

    /// Shows or hides the block of further conditions.
    void dispCalcConditions(bool f);

    /// Less the post-edge line (@p f) or the pre-edge line, for references or
    /// for the target: refreshes the columns concerned and runs the reflex.
    void changedSubBGTypeForRef(bool f);
    void changedSubBGTypeForTarget(bool f);

    /// Removes the file chosen in the list of spectra for display only, if any.
    void removeAFile();

    /// Hands the directory to every file row but the one for saving. An empty
    /// one, of a file on a share that is not mounted, goes to no row.
    void receiveNewDir(QString dir);

    /// Refreshes the cells of the row that sent it at the row's energy; the
    /// argument is not looked at. No calculation follows.
    void receiveNewEnergy(double e);

    /// A spectrum row took another file: refreshes its column, then runs the
    /// reflex, also when the sender is no spectrum row.
    void receiveNewFile(QString fname);

    /// Writes the column of reference @p n (0 to 3) and runs the reflex, if its
    /// spectrum is valid; any other number does nothing.
    void receiveNewRef(int n);
    void receiveNewRef1(QString fname);
    void receiveNewRef2(QString fname);
    void receiveNewRef3(QString fname);
    void receiveNewRef4(QString fname);

    /// Writes the column of the target; the name is not looked at.
    void receiveNewTarget(QString fname);

    /// Adds spectra for display only; a file that cannot be read is dropped.
    void receiveNewDispFiles(QStringList paths);

    /// Hands one map file to each energy row, in order; surplus is dropped.
    void receiveNewPaths(QStringList paths);

    /// The reflex after a change of input: histogram limits, map calculation,
    /// target calculation, linear combination fit, each whatever became of the
    /// one before.
    void calcBoth();

    /// Calculates every pixel of the maps in use into @c BaseData and the
    /// histograms, by the chosen method.
    void calcMap();

    /// Calculates the target into @c CalcRes: from the numbers in the rows by
    /// the four-points family, from the spectra by the non-equivalent method.
    void calcTarget();

    /// Calculates the map and writes it; a refused calculation writes the
    /// earlier result.
    void calcAndWrite();

    /// Writes @c BaseData and the two main histograms to the file named in the
    /// save row; what cannot be written is told in the message box.
    void write();

    /// Starts the comparison of fits and target results afresh; the argument is
    /// not looked at.
    void clearLCFvs4PS(MouseC* m);

    /// The next points of the comparison take another colour; the argument is
    /// not looked at.
    void newColorLCFvs4PS(MouseC* m);

    /// Repaints the window of the measured map, the view fitted to it anew.
    void updateDMap();

    /// Draws the graph @p id of the analysis (DMuts to DM2M3) in its frame; any
    /// other one is drawn by its spectrum row.
    void draw(Displays::DispId id, DispABase* dab, QStylePainter* p);

    /// Draw the chosen quantity of the result, and the measured map of the
    /// chosen energy row, on the surface of their window.
    void drawMap(QStylePainter* p);
    void drawDMap(QStylePainter* p);

    /// Repaints the result map in the limits of the quantity now chosen.
    void selectedNewMap();

    /// Show the value at a place in the view (pixels of the map): outside the
    /// map 0 of the result and -1 of the measured map. Nothing changes while
    /// there is no such map.
    void receiveNowPosInMap(double x, double y);
    void receiveNowPosInDMap(double x, double y);

    /// Fits the target spectrum, between the marked energies, by the first n
    /// used references (n being the number of used and valid ones) into
    /// @c LCFRes and @c LCFMut, and adds a point to @c LCFvs4PS.
    void lcf();

    /// Switches the spectrum whose row of the legend was pressed on or off.
    void mPressedInAllMut(MouseC* m);

    /// Left double click in the result map: limits from all pixels; with Shift
    /// the same, raising limits only; with Control those that the quantity has
    /// beforehand. The next paint, which fits the view again, sets its own.
    void dClickedInMap(MouseC* m);

    /// Spreads the typed list of energies over the rows, in order.
    void newMultiEnergys();

private:
    // Construction, in this order.
    void makeReferenceRows();
    void makeFileRows();
    void makeDisplays();
    void makeMapWindows();
    void groupMapRadios();
    void makeEnergyRows();
    void titleDialogs();
    void layOutEnergyRows();
    void makeHeadings();
    void placeEnergyRow(int row);
    void makeHistograms();
    void SetDefaultEnergies();
    void groupNormRadios();
    void orderFocusChain();
    void makeMarkLines();
    void wire();
    void wireReferences();
    void wireEnergyRows();
    void wireFileRows();
    void wireButtons();
    void wireGraphs();
    void wireMaps();
    void wireGraphRepaints();
    void wireMapRepaints();

    /// One box of the display choices for each reference row.
    using ReferenceBoxes = std::array<QCheckBox*, 4>;
    ReferenceBoxes ratioBoxes() const;
    bool isBoxOfUsedChecked(const ReferenceBoxes& boxes, int n) const;

    // Gathering: the widgets' texts and states as plain numbers.
    QList<analysis::PointState> pointStates() const;
    analysis::ReferenceSet references() const;
    QList<const AMutE*> usedSpectra(const analysis::ReferenceSet& refs) const;
    analysis::NeqInputs neqPrepare(const QList<analysis::PointState>& points,
                                   const analysis::ReferenceSet& refs) const;
    analysis::MethodRadios methodRadios() const;
    analysis::MapStack mapStack(const analysis::CollectedRows& rows,
                                const analysis::ReferenceSet& refs);
    std::array<QAbstractButton*, 13> recordBoxes() const;
    std::array<QAbstractButton*, 13> mapRadios() const;
    std::array<bool, 13> wantedColumns() const;
    void writeHistogram(const Histgram& histogram, const QString& path, const QString& name);

    // Target calculation.
    bool targetMayRun(const analysis::ReferenceSet& refs);
    void target3ps(const analysis::CollectedRows& rows, const QList<analysis::PointState>& points);
    void target4psExact(const analysis::CollectedRows& rows,
                        const QList<analysis::PointState>& points);
    void target4psLS(const analysis::CollectedRows& rows,
                     const QList<analysis::PointState>& points);
    void targetNEQ(bool victoreen, const QList<analysis::PointState>& points,
                   const analysis::ReferenceSet& refs);
    void keepTargetResult(double a);
    bool usedSpectraMayRun(const analysis::ReferenceSet& refs);
    void showShares(const QList<double>& values, const analysis::ReferenceSet& refs);

    // Map calculation.
    bool mapMayRun(const analysis::ReferenceSet& refs);
    void map3ps(const analysis::CollectedRows& rows, const analysis::ReferenceSet& refs);
    void map4psExact(const analysis::CollectedRows& rows, const analysis::ReferenceSet& refs);
    void map4psLS(const analysis::CollectedRows& rows, const analysis::ReferenceSet& refs);
    void mapNEQ(bool victoreen, const QList<analysis::PointState>& points,
                const analysis::ReferenceSet& refs);
    using MapForm = void (*)(const analysis::MapStack& stack, A2DData& result,
                             analysis::HistogramCounts& valence,
                             analysis::HistogramCounts& thickness);
    void runMapForm(analysis::Variant variant, MapForm form, const analysis::MapStack& stack);
    void startMapHistograms();
    void startReferenceHistograms();
    void fitResultView();

    bool hasUsableRows(const analysis::CollectedRows& rows, int needed);
    void sayWrongCount(int count, int needed);

    // Graphs.
    void drawGraph(const display::Graph& graph, DispABase* dab, QStylePainter* p,
                   const QString& xTitle, const QString& yTitle);
    void drawAllMut(DispABase* dab, QStylePainter* p);
    void drawComparison(DispABase* dab, QStylePainter* p);
    void drawHistograms(DispABase* dab, QStylePainter* p, const QString& xTitle,
                        const Histgram& main, const QAbstractButton* mainBox,
                        const QList<Histgram*>& ofReferences, bool (FourPs::*isShown)(int n) const);
    void drawThickness(DispABase* dab, QStylePainter* p);
    void drawPlane(DispABase* dab, QStylePainter* p);
    QColor colorOf(qsizetype i) const;
    QList<AMutE*> shownSpectra() const;

    // Map windows.
    bool hasResult() const;
    analysis::MapQuantity shownQuantity() const;
    void scanMapLimits(bool keep);
    template <class ValueAt>
    void drawCells(const DispMBase* view, QStylePainter* p, const A2DData& map,
                   ValueAt valueAt) const;

    // Reflexes.
    analysis::Work spectrumWork() const;
    bool isSpectrumWorkLong() const;
    bool isReflexLong() const;
    void RefreshRefColumn(int n);
    void refreshCell(QLineEdit* cell, const AXafsFileSelect* spectrum, double energy);

    panel::MessageLines m_messages;
    analysis::MapResultCache m_latestMap; ///< skips those with unchanged inputs
    analysis::CalculationMemory m_calculationMemory;
    QButtonGroup* m_mapRadioGroup = nullptr;
    QButtonGroup* m_mapRowGroup = nullptr;
    QButtonGroup* m_normGroup = nullptr;
};
