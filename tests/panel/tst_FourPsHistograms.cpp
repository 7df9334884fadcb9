// Tests of the panel's two histogram plots: the histograms that they show, colours and
// bars, range and grid.

#include "display/Displays.h"
#include "display/Histgram.h"
#include "support/PlainHistograms.h"
#include "support/PlotChecks.h"
#include "support/SharedPanel.h"
#include "support/SurfacePaints.h"

#include <QtTest>

using analysis::HistogramCounts;

using namespace tests;

namespace
{

/// The colours of the reference rows and of the main histogram.
const QList<QColor> rowColors{{0, 0, 0}, {255, 0, 0}, {0, 0, 255}, {120, 220, 120}};
const QColor mainColor(160, 160, 160);

/// The plot of valences or the plot of thicknesses, with its histograms and input widgets.
struct HistogramPlot {
    DispABase* plot;
    HistogramCounts* main;
    QList<HistogramCounts*> ofReferences;
    QAbstractButton* mainBox;
    QList<QAbstractButton*> boxes;
    QLineEdit* from;
    QLineEdit* to;
    QLineEdit* number;
    QAbstractButton* automatic;
};

QList<HistogramCounts*> plainCounts(const QList<Histgram*>& histograms)
{
    return {histograms.begin(), histograms.end()};
}

HistogramPlot plotOf(FourPs& panel, int id)
{
    const auto& ui = panel.ui;
    DispABase* plot = panel.Disps->frame(static_cast<Displays::DispId>(id));
    if (id == Displays::DHistA) {
        return {plot,
                panel.HistV,
                plainCounts(panel.HistRatio),
                ui.HgValence,
                {ui.HgRatio1, ui.HgRatio2, ui.HgRatio3, ui.HgRatio4},
                ui.HgAFrom,
                ui.HgATo,
                ui.HgABoxes,
                ui.HgAAuto};
    }
    return {plot,
            panel.HistT,
            plainCounts(panel.HistDMut),
            ui.HgAmount,
            {ui.HgdMut1, ui.HgdMut2, ui.HgdMut3, ui.HgdMut4},
            ui.HgTFrom,
            ui.HgTTo,
            ui.HgTBoxes,
            ui.HgTAuto};
}

void checkBoxes(const HistogramPlot& histograms, bool main, const QList<int>& boxes)
{
    histograms.mainBox->setChecked(main);
    for (int i = 0; i < histograms.boxes.size(); ++i) {
        histograms.boxes.at(i)->setChecked(boxes.contains(i));
    }
}

/// Puts only the references @p used in use. Marks only the spectra of the references @p valid as
/// valid.
void setReferences(FourPs& panel, const QList<int>& used, const QList<int>& valid)
{
    useReferences(panel, used);
    for (int i = 0; i < 4; ++i) {
        makeReferenceValid(panel, i);
        panel.XafsFiles.at(i)->valid = valid.contains(i);
    }
}

QImage pictureOf(const HistogramPlot& histograms)
{
    return histograms.plot->DispA->grab().toImage();
}

/// The plot area of @p histograms with its automatic range: x between the limit fields, y
/// from -0.1 to 1.1 times @p highest, the highest count.
PlotPlace automaticPlot(const HistogramPlot& histograms, int highest)
{
    return {histograms.plot->DispA->size(),
            {histograms.from->text().toDouble(), -0.1 * highest, histograms.to->text().toDouble(),
             1.1 * highest}};
}

/// A visible histogram of a reference.
struct Shown {
    int k;   ///< index among the references in use, which selects the histogram
    int row; ///< row of the reference, which selects the colour
};

PlainHistograms plainHistograms(const HistogramPlot& histograms, bool main,
                                const QList<Shown>& shown)
{
    PlainHistograms plain;
    plain.from = histograms.from->text().toDouble();
    plain.to = histograms.to->text().toDouble();
    plain.main = *histograms.main;
    if (main) {
        plain.mainColor = mainColor;
    }
    for (const Shown& each : shown) {
        plain.references.append({*histograms.ofReferences.at(each.k), rowColors.at(each.row)});
    }
    return plain;
}

int highestCount(const PlainHistograms& plain)
{
    int highest = plain.mainColor ? plain.main.total : 0;
    for (const auto& bars : plain.references) {
        highest = std::max(highest, bars.counts.total);
    }
    return highest;
}

/// Whether the plot has its automatic range and shows exactly the histograms @p shown, and
/// the main histogram if @p main.
bool showsOnly(const HistogramPlot& histograms, bool main, const QList<Shown>& shown)
{
    const PlainHistograms plain = plainHistograms(histograms, main, shown);
    const PlotPlace plot = automaticPlot(histograms, highestCount(plain));
    return isSamePicture(pictureOf(histograms), plain.picture(plot), plot.inside());
}

void addBothPlots()
{
    QTest::addColumn<int>("id");
    QTest::newRow("valence") << int(Displays::DHistA);
    QTest::newRow("thickness") << int(Displays::DHistDMut);
}

} // namespace

Q_DECLARE_METATYPE(Shown)

class tst_FourPsHistograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void checkBoxesSelectTheShownHistograms_data();
    void checkBoxesSelectTheShownHistograms();

    void xLimitsOfThePlotAreTheFieldValues_data();
    void xLimitsOfThePlotAreTheFieldValues();
    void histogramWithoutCountsHasNoBars_data();
    void histogramWithoutCountsHasNoBars();

    void reversedLimitsMirrorThePlot();
    void histogramWithOneBinHasNoBars();

    void histogramsOfACalculatedMapAreShownImmediately();

    void checkBoxOfAnUnusedReferenceIsIgnored();
    void plotIndexesUsedReferencesButCurrentRatioHistIndexesRows();

private:
    HistogramPlot plotFor(int id) { return plotOf(*m_panel, id); }
    void fillHistograms(const HistogramPlot& histograms);

    const SharedPanel m_panel;
};

void tst_FourPsHistograms::initTestCase()
{
    m_panel->Disps->resize(1500, 1100);
    m_panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel->Disps));
}

/// Selects four valid references, unchecks the check boxes of all histograms, and sets the
/// limits of all histograms to 1 and 4. The plots have no fixed range.
void tst_FourPsHistograms::init()
{
    resetPanel(*m_panel);
    clearRows(*m_panel);
    setReferences(*m_panel, {0, 1, 2, 3}, {0, 1, 2, 3});
    for (const int id : {Displays::DHistA, Displays::DHistDMut}) {
        const HistogramPlot histograms = plotFor(id);
        histograms.from->setText("1");
        histograms.to->setText("4");
        histograms.number->setText("11");
        checkBoxes(histograms, false, {});
        fillHistograms(histograms);
    }
    QTest::qWait(10);
}

/// Fills the eleven bins of each histogram. No two histograms are equal; the thickness
/// histograms have their bins in reverse order. The highest counts are 40 for the main
/// histogram and 50, 35, 60 and 20 for the references. The main histogram has more than 40
/// values below and above its limits; they must not affect the range of the plot.
void tst_FourPsHistograms::fillHistograms(const HistogramPlot& histograms)
{
    const bool reversed = histograms.from->objectName() == QLatin1String("HgTFrom");
    const auto makeCounts = [reversed](QList<int> bins, int under, int over) {
        if (reversed) {
            std::reverse(bins.begin(), bins.end());
        }
        return readyCounts(1.0, 4.0, bins, under, over - (reversed ? 7 : 0));
    };
    *histograms.main = makeCounts({3, 40, 7, 0, 12, 31, 25, 1, 9, 38, 22}, 90, 75);
    const QList<int> highest{50, 35, 60, 20};
    for (int k = 0; k < 4; ++k) {
        QList<int> bins;
        for (int i = 0; i < 11; ++i) {
            bins.append((7 * i + 5 * k * i + 3 * k) % highest.at(k));
        }
        bins[2 * k + 1] = highest.at(k);
        *histograms.ofReferences.at(k) = makeCounts(bins, 30 + 5 * k, 55 - 5 * k);
    }
}

void tst_FourPsHistograms::checkBoxesSelectTheShownHistograms_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QList<int>>("used");
    QTest::addColumn<QList<int>>("valid");
    QTest::addColumn<bool>("main");
    QTest::addColumn<QList<int>>("boxes");
    QTest::addColumn<QList<Shown>>("shown");
    const QList<int> all{0, 1, 2, 3};
    const auto add = [](const char* name, const QList<int>& used, const QList<int>& valid,
                        bool main, const QList<int>& boxes, const QList<Shown>& shown) {
        QTest::addRow("valence: %s", name)
            << int(Displays::DHistA) << used << valid << main << boxes << shown;
        QTest::addRow("thickness: %s", name)
            << int(Displays::DHistDMut) << used << valid << main << boxes << shown;
    };
    add("only the main histogram", {0, 1}, {0, 1}, true, {}, {});
    add("main histogram and one reference", {0, 1}, {0, 1}, true, {0}, {{0, 0}});
    add("only one reference", {0, 1}, {0, 1}, false, {0}, {{0, 0}});
    add("only the second reference", {0, 1}, {0, 1}, false, {1}, {{1, 1}});
    add("main histogram and two references", {0, 1}, {0, 1}, true, {0, 1}, {{0, 0}, {1, 1}});
    add("main histogram and three references", {0, 1, 2}, all, true, {0, 1, 2},
        {{0, 0}, {1, 1}, {2, 2}});
    add("main histogram and four references", all, all, true, all,
        {{0, 0}, {1, 1}, {2, 2}, {3, 3}});
    add("only four references", all, all, false, all, {{0, 0}, {1, 1}, {2, 2}, {3, 3}});
    add("main histogram, first and last reference", all, all, true, {0, 3}, {{0, 0}, {3, 3}});
    add("unused row between used rows", {0, 2}, all, true, all, {{0, 0}, {1, 2}});
    add("unused rows before used rows", {2, 3}, all, false, all, {{0, 2}, {1, 3}});
    add("two unused rows between used rows", {0, 3}, all, true, all, {{0, 0}, {1, 3}});
    add("invalid row between valid rows", {0, 1, 2}, {0, 2, 3}, true, all, {{0, 0}, {2, 2}});
    add("invalid row before valid rows", {0, 1, 2}, {1, 2}, true, all, {{1, 1}, {2, 2}});
    add("an unused and an invalid row between shown rows", {0, 2, 3}, {0, 1, 3}, true, all,
        {{0, 0}, {2, 3}});
    add("all references invalid", all, {}, true, all, {});
    add("no reference used", {}, all, true, all, {});
    add("check box of row 3, the second row in use", {1, 3}, all, true, {3}, {{1, 3}});
    add("check box of an unused row", {1, 3}, all, true, {0, 2}, {});
    add("check box of row 1, the first row in use", {1, 3}, all, true, {1}, {{0, 1}});
}

void tst_FourPsHistograms::checkBoxesSelectTheShownHistograms()
{
    QFETCH(int, id);
    QFETCH(QList<int>, used);
    QFETCH(QList<int>, valid);
    QFETCH(bool, main);
    QFETCH(QList<int>, boxes);
    QFETCH(QList<Shown>, shown);
    setReferences(*m_panel, used, valid);
    const HistogramPlot histograms = plotFor(id);
    checkBoxes(histograms, main, boxes);
    QVERIFY(showsOnly(histograms, main, shown));
}

void tst_FourPsHistograms::xLimitsOfThePlotAreTheFieldValues_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("automatic");
    QTest::newRow("valence, automatic") << int(Displays::DHistA) << true;
    QTest::newRow("valence, manual") << int(Displays::DHistA) << false;
    QTest::newRow("thickness, automatic") << int(Displays::DHistDMut) << true;
    QTest::newRow("thickness, manual") << int(Displays::DHistDMut) << false;
}

// The x limits of the plot follow the fields, while the bins keep the limits 1 and 4
// with which they were counted.
void tst_FourPsHistograms::xLimitsOfThePlotAreTheFieldValues()
{
    QFETCH(int, id);
    QFETCH(bool, automatic);
    const HistogramPlot histograms = plotFor(id);
    histograms.automatic->setChecked(automatic);
    static_cast<Histgram*>(histograms.main)->autoMode = automatic;
    histograms.from->setText("-0.7");
    histograms.to->setText("3.25");
    checkBoxes(histograms, true, {1});
    QVERIFY(showsOnly(histograms, true, {{1, 1}}));
    QCOMPARE(histograms.plot->DispA->cc.realX0, -0.7);
    QCOMPARE(histograms.plot->DispA->cc.realX1, 3.25);
    QCOMPARE(histograms.from->text(), QStringLiteral("-0.7"));
}

void tst_FourPsHistograms::histogramWithoutCountsHasNoBars_data()
{
    addBothPlots();
}

// All values are outside the limits, so every bin has the count 0.
void tst_FourPsHistograms::histogramWithoutCountsHasNoBars()
{
    QFETCH(int, id);
    const HistogramPlot histograms = plotFor(id);
    checkBoxes(histograms, true, {});
    *histograms.main = readyCounts(1.0, 4.0, QList<int>(11, 0), 30, 20);
    const QImage shown = pictureOf(histograms);
    QVERIFY(histograms.plot->DispA->cc.drawn);
    QVERIFY(!isBlank(shown));
    QCOMPARE(countOf(shown, automaticPlot(histograms, 1).inside(), mainColor), 0);
}

// With From = 4 and To = 1, bin 0 belongs to the value 4 and is at the left. No vertical grid
// line is drawn, because the loop over the grid lines runs upward from From and ends at To.
void tst_FourPsHistograms::reversedLimitsMirrorThePlot()
{
    const HistogramPlot histograms = plotFor(Displays::DHistA);
    histograms.from->setText("4");
    histograms.to->setText("1");
    checkBoxes(histograms, true, {1});
    *histograms.main = readyCounts(4.0, 1.0, {5, 1, 2, 40});
    *histograms.ofReferences.at(1) = readyCounts(4.0, 1.0, {2, 30, 0, 1});
    QVERIFY(showsOnly(histograms, true, {{1, 1}}));
}

// The bin width is (To - From) / (bins - 1). With one bin this is a division by zero, so the
// bar has no finite position and is not drawn.
void tst_FourPsHistograms::histogramWithOneBinHasNoBars()
{
    const HistogramPlot histograms = plotFor(Displays::DHistA);
    checkBoxes(histograms, true, {1});
    *histograms.main = readyCounts(1.0, 4.0, {8}, 20, 30);
    *histograms.ofReferences.at(1) = readyCounts(1.0, 4.0, {8}, 20, 30);
    const QImage shown = pictureOf(histograms);
    QVERIFY(histograms.plot->DispA->cc.drawn);
    const QRect inside = automaticPlot(histograms, 8).inside();
    QCOMPARE(countOf(shown, inside, mainColor), 0);
    QCOMPARE(countOf(shown, inside, rowColors.at(1)), 0);
    QVERIFY(countOf(shown, inside, plainGrid) > 0);
}

// The map has one pixel with a = 1/2, valences 2 and 3, and thickness 1: one count in
// the bin at valence 2.5 and one in the bin at thickness 1.
void tst_FourPsHistograms::histogramsOfACalculatedMapAreShownImmediately()
{
    FourPs& panel = *m_panel;
    resetPanel(panel);
    prepareThreePointMaps(panel);
    panel.ui.HgAFrom->setText("1");
    panel.ui.HgATo->setText("4");
    panel.ui.HgABoxes->setText("7"); // bin width (4 - 1) / (7 - 1) = 0.5
    panel.ui.HgTFrom->setText("0");
    panel.ui.HgTTo->setText("2");
    panel.ui.HgTBoxes->setText("5");
    SurfacePaints paints(*panel.Disps);
    panel.calcMap();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    const HistogramPlot valence = plotOf(panel, Displays::DHistA);
    const HistogramPlot thickness = plotOf(panel, Displays::DHistDMut);
    checkBoxes(thickness, true, {});
    *valence.main = readyCounts(1.0, 4.0, {0, 0, 0, 1, 0, 0, 0});
    *thickness.main = readyCounts(0.0, 2.0, {0, 0, 1, 0, 0});
    const QImage asCountedByHand = pictureOf(valence);
    const QImage thicknessByHand = pictureOf(thickness);
    panel.calcMap();
    QVERIFY(isSamePicture(pictureOf(valence), asCountedByHand));
    QVERIFY(isSamePicture(pictureOf(thickness), thicknessByHand));
    QVERIFY(showsOnly(valence, true, {}));
    QVERIFY(showsOnly(thickness, true, {}));
}

void tst_FourPsHistograms::checkBoxOfAnUnusedReferenceIsIgnored()
{
    setReferences(*m_panel, {1, 3}, {});
    checkBoxes(plotFor(Displays::DHistA), false, {0, 3});
    checkBoxes(plotFor(Displays::DHistDMut), false, {1, 2});
    QVERIFY(!m_panel->ratioChecked(0)); // index 0 in use is row 1
    QVERIFY(m_panel->ratioChecked(1));  // index 1 in use is row 3; its spectrum need not be valid
    QVERIFY(m_panel->dMutChecked(0));
    QVERIFY(!m_panel->dMutChecked(1));
    QVERIFY(!m_panel->ratioChecked(2)); // only two references are in use
    QVERIFY(!m_panel->dMutChecked(2));
    QVERIFY(!m_panel->ratioChecked(-1));
    QVERIFY(!m_panel->dMutChecked(-1));
}

// References in use: rows 0 and 2. With the check box of row 2, currentRatioHist() returns
// HistRatio.at(2): the index is the row. The plot still shows HistRatio.at(1): the index counts the
// references in use.
void tst_FourPsHistograms::plotIndexesUsedReferencesButCurrentRatioHistIndexesRows()
{
    setReferences(*m_panel, {0, 2}, {0, 2});
    const HistogramPlot histograms = plotFor(Displays::DHistA);
    QCOMPARE(m_panel->currentRatioHist(), m_panel->HistV);
    checkBoxes(histograms, false, {2});
    QCOMPARE(m_panel->currentRatioHist(), m_panel->HistRatio.at(2));
    QVERIFY(showsOnly(histograms, false, {{1, 2}}));
}

QTEST_MAIN(tst_FourPsHistograms)
#include "tst_FourPsHistograms.moc"
