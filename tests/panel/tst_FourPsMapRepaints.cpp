// Tests of the actions that open and repaint the two map windows, and of the view and the limits
// after these actions.

#include "support/MapWindows.h"
#include "support/MouseInput.h"
#include "support/PaintCounter.h"

#include <QTest>

using namespace tests;

namespace
{

constexpr int ratio1 = 0;
constexpr int ratio2 = 1;
constexpr int dMut1 = 4;
constexpr int c1 = 9;
constexpr int c2 = 10;

/// Prepares the non-equivalent method with two references, five energies and a linear
/// background. Each map is a single row of pixels, with one pixel for each of @p parts. The
/// absorbance of a pixel is its part times the first reference plus the second reference.
void prepareNonEquivalent(FourPs& panel, const QList<double>& parts)
{
    const QList<double> energies{1000, 2000, 3000, 4000, 5000};
    const QList<QList<double>> shapes{{1, 0, 3, 2, 1}, {0, 1, 1, 3, 5}};
    chooseWithoutSignals(panel.ui.TypeNonEquiv);
    setSpectrum(*panel.XafsFiles.at(0), energies, shapes.at(0), {0.25, 0, 0}, {2.25, 0, 0});
    setSpectrum(*panel.XafsFiles.at(1), energies, shapes.at(1), {0.5, 0, 0}, {6.5, 0, 0});
    useReferences(panel, {0, 1});
    useRows(panel, {0, 1, 2, 3, 4});
    for (int row = 0; row < 5; ++row) {
        panel.EPoints.at(row)->Energy->setText(QString::number(energies.at(row)));
        QList<double> muts;
        for (const double part : parts) {
            muts.append(part * shapes.at(0).at(row) + shapes.at(1).at(row));
        }
        setMap(panel, row, muts);
    }
    clearMessages(panel);
}

/// The values of @p quantity in all pixels of the stored result.
QList<double> storedValues(const FourPs& panel, int quantity)
{
    QList<double> values;
    for (const A2DRow& row : panel.BaseData.rows) {
        values.append(row.values.at(quantity));
    }
    return values;
}

struct WindowPaints {
    explicit WindowPaints(const FourPs& panel)
        : result(panel.MapDisp->DispA)
        , data(panel.DMapDisp->DispA)
    {
        result.restart();
        data.restart();
    }

    /// The numbers of paints of the result map and of the data map.
    QList<int> counts() const { return {result.within(), data.count()}; }

    /// Whether only one window was painted: the result map if @p ofResult, otherwise the
    /// data map.
    bool isOnlyPaintOf(bool ofResult) const
    {
        const QList<int> times = counts();
        return ofResult ? times.at(0) > 0 && times.at(1) == 0 : times.at(0) == 0 && times.at(1) > 0;
    }

    PaintCounter result;
    PaintCounter data;
};

/// Paints the map, then sets a view and limits that a paint would not set by itself.
void paintAndSetManually(DispMBase* window)
{
    picture(window);
    window->DispA->cc.setReal(-0.5, -0.25, 1.5, 2.75);
    window->setZRange(0.25, 0.75);
}

} // namespace

class tst_FourPsMapRepaints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void reopenedMapWindowKeepsZoomAndLimits();

    void selectingAQuantityKeepsTheZoom();
    void selectingAQuantitySetsItsLimitsImmediately();
    void selectingQuantityC2KeepsTheLimits();
    void selectingAQuantityRepaintsTheResultMap_data();
    void selectingAQuantityRepaintsTheResultMap();
    void quantityRadiosReplaceTheLimitsExceptForC1AndC2();

    void gridCheckBoxRepaintsBothMapWindows_data();
    void gridCheckBoxRepaintsBothMapWindows();
    void gridCheckBoxKeepsZoomAndLimits();
    void updateMapsIgnoresItsArgument();

    void selectingARowRepaintsOnlyTheDataMap_data();
    void selectingARowRepaintsOnlyTheDataMap();
    void everyShowMapRadioSelectsItsRow();

    void nonEquivalentCalculationFitsViewAndLimitsToTheMap_data();
    void nonEquivalentCalculationFitsViewAndLimitsToTheMap();
    void repeatedNonEquivalentCalculationFitsViewAndLimits();
    void refusedCalculationKeepsTheResultMap();
    void threePointCalculationKeepsViewAndLimits_data();
    void threePointCalculationKeepsViewAndLimits();
    void repeatedThreePointCalculationKeepsViewAndLimits();
    void firstThreePointCalculationFitsTheView();
    void newResultSizeResetsTheViewButKeepsTheColorLimits_data();
    void newResultSizeResetsTheViewButKeepsTheColorLimits();
    void newResultSizeInAClosedWindowResetsTheView();
    void mapWindowShownForTheFirstTimeFitsViewAndLimits();
    void resultWithoutSizeKeepsTheView();
    void typedLimitsAreKeptForAResultOfAnotherSize();
    void mapCalculationKeepsViewAndLimitsOfTheDataMap();

    void settingLimitsInAPaintNeedsNoSecondPaint_data();
    void settingLimitsInAPaintNeedsNoSecondPaint();

private:
    DispMBase* result() const { return m_panel->MapDisp; }
    DispMBase* data() const { return m_panel->DMapDisp; }
    bool showBoth(bool out);

    const SharedPanel m_panel;
};

void tst_FourPsMapRepaints::init()
{
    resetMaps(*m_panel);
}

bool tst_FourPsMapRepaints::showBoth(bool out)
{
    return showWindow(result()) && showWindow(data()) &&
           (!out || (popOut(result()) && popOut(data())));
}

void tst_FourPsMapRepaints::reopenedMapWindowKeepsZoomAndLimits()
{
    setQuantity(*m_panel, ratio1, 3, 2, QList<double>(6, 0.5));
    QVERIFY(showWindow(result()));
    picture(result());
    result()->DispA->cc.setReal(1.0, 0.5, 2.0, 1.5);
    enter(result()->MaxV, "0.75");
    QVERIFY(result()->close());
    m_panel->ui.ShowMap->click();
    QVERIFY(QTest::qWaitForWindowExposed(result()));
    QTest::qWait(20);
    QCOMPARE(viewOf(result()), QList<double>({1.0, 0.5, 2.0, 1.5}));
    QCOMPARE(barLimits(result()), QList<double>({-0.1, 0.75}));
}

void tst_FourPsMapRepaints::selectingAQuantityKeepsTheZoom()
{
    setResult(*m_panel, 2, 2, {{0.1, 0.9}, {0.2, 0.8}, {0.3, 0.7}, {0.4, 0.6}});
    mapRadio(*m_panel, ratio1)->click();
    QVERIFY(showWindow(result()));
    picture(result());
    const QSize size = result()->DispA->size();
    const QPoint at(size.width() / 2, size.height() / 2);
    tests::move(result()->DispA, at);
    turnWheel(result()->DispA, at, {0, 120});
    // The wheel zooms by 1.1 about the mouse position, which is the centre of the surface,
    // rounded down to a whole pixel. y grows upward in the map and downward on the surface.
    const double x = 2.0 * at.x() / size.width();
    const double y = 2.0 * (size.height() - at.y()) / size.height();
    const QList<double> zoomed{x - x / 1.1, y - y / 1.1, x + (2.0 - x) / 1.1, y + (2.0 - y) / 1.1};
    mapRadio(*m_panel, ratio2)->click();
    const QImage image = picture(result());
    for (int i = 0; i < 4; ++i) {
        QVERIFY(std::abs(viewOf(result()).at(i) - zoomed.at(i)) < 1e-12);
    }
    const QList<double> view = viewOf(result());
    QCOMPARE(image, plainPicture(result(), {2, 2, {0.9, 0.8, 0.7, 0.6}, -0.1, 1.1},
                                 {{}, view.at(0), view.at(1), view.at(2), view.at(3)}));
}

void tst_FourPsMapRepaints::selectingAQuantitySetsItsLimitsImmediately()
{
    setQuantity(*m_panel, ratio1, 1, 1, {0.5});
    picture(result());
    QVERIFY(result()->DispA->hasScale);
    mapRadio(*m_panel, dMut1)->click();
    QCOMPARE(limitTexts(result()), QStringList({"-0.8", "8.8"}));
    m_panel->ui.MapValence->click();
    QCOMPARE(limitTexts(result()), QStringList({"1.5", "3.5"}));
    QVERIFY(result()->DispA->hasScale);
    // A direct call of the slot also sets the limits.
    result()->setZRange(40.0, 50.0);
    m_panel->selectedNewMap();
    QCOMPARE(limitTexts(result()), QStringList({"1.5", "3.5"}));
}

// A paint fits the limits only if no range is fixed. The first paint fixes the range, and
// the selection of a quantity does not release it.
void tst_FourPsMapRepaints::selectingQuantityC2KeepsTheLimits()
{
    setQuantity(*m_panel, ratio1, 2, 1, {0.5, 0.6});
    picture(result());
    setQuantity(*m_panel, c2, 2, 1, {0.3, 0.9});
    QCOMPARE(picture(result()), plainPicture(result(), {2, 1, {0.3, 0.9}, -0.1, 1.1}));
}

void tst_FourPsMapRepaints::selectingAQuantityRepaintsTheResultMap_data()
{
    QTest::addColumn<bool>("out");
    QTest::addColumn<int>("quantity");
    QTest::newRow("preset limits, docked") << false << ratio1;
    QTest::newRow("preset limits, popped out") << true << ratio1;
    QTest::newRow("no preset limits, docked") << false << c1;
    QTest::newRow("no preset limits, popped out") << true << c1;
}

void tst_FourPsMapRepaints::selectingAQuantityRepaintsTheResultMap()
{
    QFETCH(bool, out);
    QFETCH(int, quantity);
    setResult(*m_panel, 1, 1, {QList<double>(13, 0.5)});
    QVERIFY(showBoth(out));
    const WindowPaints paints(*m_panel);
    mapRadio(*m_panel, quantity)->click();
    QCOMPARE(paints.counts(), QList<int>({1, 0}));
}

// Selecting a quantity sets its preset limits. The quantities C1 and C2 have no preset limits, so
// the current limits remain.
void tst_FourPsMapRepaints::quantityRadiosReplaceTheLimitsExceptForC1AndC2()
{
    for (int quantity = 12; quantity >= 0; --quantity) {
        result()->setZRange(40.0, 50.0);
        mapRadio(*m_panel, quantity)->click();
        const bool hasLimits = quantity != c1 && quantity != c2;
        QCOMPARE(limitTexts(result()) != QStringList({"40", "50"}), hasLimits);
        for (int other = 0; other < 13; ++other) {
            QCOMPARE(mapRadio(*m_panel, other)->isChecked(), other == quantity);
        }
    }
}

void tst_FourPsMapRepaints::gridCheckBoxRepaintsBothMapWindows_data()
{
    QTest::addColumn<bool>("out");
    QTest::newRow("docked") << false;
    QTest::newRow("popped out") << true;
}

void tst_FourPsMapRepaints::gridCheckBoxRepaintsBothMapWindows()
{
    QFETCH(bool, out);
    setQuantity(*m_panel, ratio1, 2, 1, {0.5, 0.6});
    setMap(*m_panel, 0, {1.0, 2.0});
    QVERIFY(showBoth(out));
    const WindowPaints paints(*m_panel);
    m_panel->ui.MapWGrid->click();
    QCOMPARE(paints.counts(), QList<int>({1, 1}));
    QCOMPARE(picture(result()), plainPicture(result(), {2, 1, {0.5, 0.6}, -0.1, 1.1, true}));
    QCOMPARE(picture(data()), plainPicture(data(), {2, 1, {1.0, 2.0}, 1.0, 2.0, true}));
    const WindowPaints back(*m_panel);
    m_panel->ui.MapWGrid->click();
    QCOMPARE(back.counts(), QList<int>({1, 1}));
    QCOMPARE(picture(result()), plainPicture(result(), {2, 1, {0.5, 0.6}, -0.1, 1.1}));
    QCOMPARE(picture(data()), plainPicture(data(), {2, 1, {1.0, 2.0}, 1.0, 2.0}));
}

void tst_FourPsMapRepaints::gridCheckBoxKeepsZoomAndLimits()
{
    setQuantity(*m_panel, ratio1, 2, 1, {0.5, 0.6});
    setMap(*m_panel, 0, {1.0, 2.0});
    for (DispMBase* window : {result(), data()}) {
        picture(window);
        window->DispA->cc.setReal(0.5, 0.25, 1.5, 0.75);
        window->setZRange(0.25, 4.0);
    }
    m_panel->ui.MapWGrid->click();
    for (DispMBase* window : {result(), data()}) {
        picture(window);
        QCOMPARE(viewOf(window), QList<double>({0.5, 0.25, 1.5, 0.75}));
        QCOMPARE(barLimits(window), QList<double>({0.25, 4.0}));
    }
}

void tst_FourPsMapRepaints::updateMapsIgnoresItsArgument()
{
    QVERIFY(showBoth(false));
    for (const bool argument : {false, true}) {
        const WindowPaints paints(*m_panel);
        m_panel->updateMaps(argument);
        QCOMPARE(paints.counts(), QList<int>({1, 1}));
    }
}

void tst_FourPsMapRepaints::selectingARowRepaintsOnlyTheDataMap_data()
{
    gridCheckBoxRepaintsBothMapWindows_data();
}

void tst_FourPsMapRepaints::selectingARowRepaintsOnlyTheDataMap()
{
    QFETCH(bool, out);
    setMap(*m_panel, 0, {1.0, 2.0});
    setMap(*m_panel, 3, {5.0, 7.0, 6.0});
    QVERIFY(showBoth(out));
    const WindowPaints paints(*m_panel);
    m_panel->EPoints.at(3)->ShowMapB->click();
    QVERIFY(paints.isOnlyPaintOf(false));
    QCOMPARE(picture(data()), plainPicture(data(), {3, 1, {5.0, 7.0, 6.0}, 5.0, 7.0}));
}

void tst_FourPsMapRepaints::everyShowMapRadioSelectsItsRow()
{
    for (const int row : {1, 2, 3, 4, 5, 6, 7, 0}) {
        data()->DispA->hasScale = true;
        m_panel->EPoints.at(row)->ShowMapB->click();
        QVERIFY(!data()->DispA->hasScale);
        QCOMPARE(m_panel->CheckedMapRow(), row);
    }
}

void tst_FourPsMapRepaints::nonEquivalentCalculationFitsViewAndLimitsToTheMap_data()
{
    gridCheckBoxRepaintsBothMapWindows_data();
}

void tst_FourPsMapRepaints::nonEquivalentCalculationFitsViewAndLimitsToTheMap()
{
    QFETCH(bool, out);
    prepareNonEquivalent(*m_panel, {0.5, 1.0, 3.0});
    setQuantity(*m_panel, ratio1, 2, 1, {0.5, 0.6});
    QVERIFY(showBoth(out));
    const WindowPaints paints(*m_panel);
    QVERIFY(result()->DispA->hasScale);
    result()->DispA->cc.setReal(0.5, 0.25, 1.5, 0.75);
    m_panel->ui.CalcMapB->click();
    QVERIFY(messages(*m_panel).isEmpty());
    QVERIFY(!result()->DispA->hasScale);
    QVERIFY(paints.isOnlyPaintOf(true));
    QVERIFY(result()->DispA->hasScale);
    QCOMPARE(m_panel->BaseData.xNum, 3);
    QCOMPARE(picture(result()),
             plainPicture(result(), {3, 1, storedValues(*m_panel, ratio1), -0.1, 1.1}));
}

void tst_FourPsMapRepaints::repeatedNonEquivalentCalculationFitsViewAndLimits()
{
    prepareNonEquivalent(*m_panel, {0.5, 1.0, 3.0});
    mapRadio(*m_panel, ratio1)->setChecked(true);
    m_panel->calcMap();
    QVERIFY(showBoth(false));
    picture(result());
    result()->DispA->cc.setReal(0.5, 0.25, 1.5, 0.75);
    result()->setZRange(0.25, 0.5);
    const WindowPaints paints(*m_panel);
    const A2DRow* before = m_panel->BaseData.rows.constData();
    m_panel->ui.CalcMapB->click();
    // The inputs are unchanged, so the map was not calculated again.
    QCOMPARE(m_panel->BaseData.rows.constData(), before);
    QVERIFY(!result()->DispA->hasScale);
    QVERIFY(paints.isOnlyPaintOf(true));
    QCOMPARE(viewOf(result()), QList<double>({0.0, 0.0, 3.0, 1.0}));
    QCOMPARE(limitTexts(result()), QStringList({"-0.1", "1.1"}));
}

void tst_FourPsMapRepaints::refusedCalculationKeepsTheResultMap()
{
    prepareNonEquivalent(*m_panel, {0.5, 1.0, 3.0});
    m_panel->calcMap();
    QVERIFY(showBoth(false));
    picture(result());
    result()->DispA->cc.setReal(0.5, 0.25, 1.5, 0.75);
    result()->setZRange(0.25, 0.5);
    useRows(*m_panel, {0, 1});
    const WindowPaints paints(*m_panel);
    m_panel->ui.CalcMapB->click();
    QCOMPARE(messages(*m_panel).size(), 1);
    QVERIFY(result()->DispA->hasScale);
    QCOMPARE(paints.counts(), QList<int>({0, 0}));
    QCOMPARE(viewOf(result()), QList<double>({0.5, 0.25, 1.5, 0.75}));
    QCOMPARE(limitTexts(result()), QStringList({"0.25", "0.5"}));
}

void tst_FourPsMapRepaints::threePointCalculationKeepsViewAndLimits_data()
{
    gridCheckBoxRepaintsBothMapWindows_data();
}

void tst_FourPsMapRepaints::threePointCalculationKeepsViewAndLimits()
{
    QFETCH(bool, out);
    // The only pixel of the calculated map has a = 1/2.
    prepareThreePointMaps(*m_panel);
    setQuantity(*m_panel, ratio1, 1, 1, {0.2});
    QVERIFY(showBoth(out));
    paintAndSetManually(result());
    const WindowPaints paints(*m_panel);
    m_panel->ui.CalcMapB->click();
    QVERIFY(messages(*m_panel).isEmpty());
    QVERIFY(result()->DispA->hasScale);
    QCOMPARE(paints.counts(), QList<int>({1, 0}));
    QCOMPARE(m_panel->BaseData.rows.at(0).intensity, 0.5);
    QCOMPARE(picture(result()),
             plainPicture(result(), {1, 1, {0.5}, 0.25, 0.75}, {{}, -0.5, -0.25, 1.5, 2.75}));
    QCOMPARE(limitTexts(result()), QStringList({"0.25", "0.75"}));
}

void tst_FourPsMapRepaints::repeatedThreePointCalculationKeepsViewAndLimits()
{
    prepareThreePointMaps(*m_panel);
    m_panel->calcMap();
    QVERIFY(showBoth(false));
    paintAndSetManually(result());
    m_panel->calcMap();
    QVERIFY(result()->DispA->hasScale);
    picture(result());
    QCOMPARE(viewOf(result()), QList<double>({-0.5, -0.25, 1.5, 2.75}));
    QCOMPARE(limitTexts(result()), QStringList({"0.25", "0.75"}));
}

void tst_FourPsMapRepaints::firstThreePointCalculationFitsTheView()
{
    prepareThreePointMaps(*m_panel);
    mapRadio(*m_panel, ratio1)->setChecked(true);
    QVERIFY(showBoth(false));
    QVERIFY(isBlank(picture(result())));
    m_panel->calcMap();
    QTest::qWait(20);
    QCOMPARE(viewOf(result()), QList<double>({0.0, 0.0, 1.0, 1.0}));
    QVERIFY(result()->DispA->hasScale);
    QCOMPARE(picture(result()), plainPicture(result(), {1, 1, {0.5}, -0.1, 1.1}));
}

void tst_FourPsMapRepaints::newResultSizeResetsTheViewButKeepsTheColorLimits_data()
{
    gridCheckBoxRepaintsBothMapWindows_data();
}

void tst_FourPsMapRepaints::newResultSizeResetsTheViewButKeepsTheColorLimits()
{
    QFETCH(bool, out);
    prepareThreePointMaps(*m_panel);
    setQuantity(*m_panel, ratio1, 3, 2, {0.2, 0.3, 0.4, 0.5, 0.6, 0.7});
    QVERIFY(showBoth(out));
    picture(result());
    move(result()->DispA, {30.0, 40.0});
    turnWheel(result()->DispA, {30.0, 40.0}, {0, 120});
    result()->setZRange(0.25, 0.75);
    const WindowPaints paints(*m_panel);
    m_panel->ui.CalcMapB->click();
    QCOMPARE(paints.counts(), QList<int>({1, 0}));
    QVERIFY(result()->DispA->hasScale);
    QCOMPARE(viewOf(result()), QList<double>({0.0, 0.0, 1.0, 1.0}));
    QCOMPARE(picture(result()), plainPicture(result(), {1, 1, {0.5}, 0.25, 0.75}));
    QCOMPARE(limitTexts(result()), QStringList({"0.25", "0.75"}));
    QCOMPARE(barLimits(result()), QList<double>({0.25, 0.75}));
}

void tst_FourPsMapRepaints::newResultSizeInAClosedWindowResetsTheView()
{
    prepareThreePointMaps(*m_panel);
    m_panel->calcMap();
    mapRadio(*m_panel, ratio1)->setChecked(true);
    QVERIFY(showBoth(false));
    paintAndSetManually(result());
    result()->close();
    setMap(*m_panel, 0, {1, 1});
    setMap(*m_panel, 1, {5, 5});
    setMap(*m_panel, 2, {3, 3});
    m_panel->calcMap();
    QVERIFY(showWindow(result()));
    QCOMPARE(viewOf(result()), QList<double>({0.0, 0.0, 2.0, 1.0}));
    QCOMPARE(picture(result()), plainPicture(result(), {2, 1, {0.5, 0.5}, 0.25, 0.75}));
}

void tst_FourPsMapRepaints::mapWindowShownForTheFirstTimeFitsViewAndLimits()
{
    prepareThreePointMaps(*m_panel);
    m_panel->calcMap();
    setMap(*m_panel, 2, {3, 3});
    mapRadio(*m_panel, ratio1)->setChecked(true);
    m_panel->calcMap();
    QVERIFY(!result()->DispA->hasScale);
    QVERIFY(showWindow(result()));
    picture(result());
    QCOMPARE(viewOf(result()), QList<double>({0.0, 0.0, 2.0, 1.0}));
    QCOMPARE(limitTexts(result()), QStringList({"-0.1", "1.1"}));
}

void tst_FourPsMapRepaints::resultWithoutSizeKeepsTheView()
{
    prepareThreePointMaps(*m_panel);
    m_panel->calcMap();
    QVERIFY(showBoth(false));
    paintAndSetManually(result());
    m_panel->EPoints.at(2)->yNum = 0;
    m_panel->calcMap();
    QVERIFY(isBlank(picture(result())));
    QCOMPARE(viewOf(result()), QList<double>({-0.5, -0.25, 1.5, 2.75}));
    setMap(*m_panel, 2, {3, 3});
    m_panel->calcMap();
    QCOMPARE(viewOf(result()), QList<double>({0.0, 0.0, 2.0, 1.0}));
    QCOMPARE(limitTexts(result()), QStringList({"0.25", "0.75"}));
}

void tst_FourPsMapRepaints::typedLimitsAreKeptForAResultOfAnotherSize()
{
    prepareThreePointMaps(*m_panel);
    m_panel->calcMap();
    QVERIFY(showBoth(false));
    picture(result());
    result()->MaxV->selectAll();
    QTest::keyClicks(result()->MaxV, "2.75");
    QTest::keyClick(result()->MaxV, Qt::Key_Return);
    const double lower = result()->CBar->zmin;
    setMap(*m_panel, 2, {3, 3});
    m_panel->calcMap();
    QTest::qWait(20);
    QCOMPARE(viewOf(result()), QList<double>({0.0, 0.0, 2.0, 1.0}));
    QCOMPARE(barLimits(result()), QList<double>({lower, 2.75}));
}

void tst_FourPsMapRepaints::mapCalculationKeepsViewAndLimitsOfTheDataMap()
{
    prepareNonEquivalent(*m_panel, {0.5, 1.0, 3.0});
    picture(data());
    data()->DispA->cc.setReal(0.5, 0.25, 1.5, 0.75);
    data()->setZRange(0.25, 0.5);
    m_panel->calcMap();
    QVERIFY(!result()->DispA->hasScale);
    QVERIFY(data()->DispA->hasScale);
    picture(data());
    QCOMPARE(viewOf(data()), QList<double>({0.5, 0.25, 1.5, 0.75}));
    QCOMPARE(limitTexts(data()), QStringList({"0.25", "0.5"}));
}

void tst_FourPsMapRepaints::settingLimitsInAPaintNeedsNoSecondPaint_data()
{
    gridCheckBoxRepaintsBothMapWindows_data();
}

// The limits that a paint sets are visible in the same paint, which requests no second paint.
void tst_FourPsMapRepaints::settingLimitsInAPaintNeedsNoSecondPaint()
{
    QFETCH(bool, out);
    setQuantity(*m_panel, c1, 2, 1, {0.5, 0.6});
    setMap(*m_panel, 0, {1.0, 2.0});
    QVERIFY(showBoth(out));
    const WindowPaints paints(*m_panel);
    result()->clearScale();
    result()->update();
    m_panel->updateDMap();
    QTest::qWait(60);
    QCOMPARE(paints.counts(), (QList<int>{1, 1}));
    QVERIFY(result()->DispA->hasScale);
    QVERIFY(data()->DispA->hasScale);
}

QTEST_MAIN(tst_FourPsMapRepaints)
#include "tst_FourPsMapRepaints.moc"
