// Tests of the panel's comparison plot, with the valence of the LCF fit on x and the valence
// of the target calculation on y: the picture, and mouse actions.

#include "display/Displays.h"
#include "rows/AXafsFileSelect.h"
#include "support/DataRows.h"
#include "support/MouseInput.h"
#include "support/PlainComparison.h"
#include "support/SharedPanel.h"
#include "support/SurfacePaints.h"

#include <QtTest>

#include <limits>

using namespace tests;

namespace
{

const QColor black(0, 0, 0);
const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor gridBlue(200, 200, 255);
const QColor diagonalGreen(0, 200, 0);

// At this size the plot area is 330 by 220 pixels: x from 38 to 368, y from 12 to 232.
const QSize evenSize(387, 257);

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

/// A point of the comparison, as the fit would add it. The fractions in it are arbitrary,
/// because the plot does not show them.
LCFPoint pointAt(double fit, double target, int color = 0)
{
    return {0.125, target, 0.875, fit, color};
}

} // namespace

class tst_FourPsComparison : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void plotWithoutPointsIsBlank();
    void plotShowsPointsOverGridAndDiagonal();
    void fitValenceIsOnXAndTargetValenceOnY();
    void pointsAreDrawnInTheirStoredColors();
    void lastPointHasARedOuterCircle();
    void pointsOutsideThePlotAreNotDrawn_data();
    void pointsOutsideThePlotAreNotDrawn();

    void extremeValencesLeaveTheMarginsWhite_data();
    void extremeValencesLeaveTheMarginsWhite();

    void doubleClickClearsThePlot();
    void rangeIsFittedAgainAfterThePlotIsCleared();
    void clickSelectsTheNextColorForLaterPoints();
    void releaseOfAMouseButtonSelectsTheNextColor_data();
    void releaseOfAMouseButtonSelectsTheNextColor();
    void fitShowsItsPointImmediately();

private:
    DispABase* frame() const { return m_panel->Disps->frame(Displays::DLCFvs4PS); }
    DispArea* surface() const { return frame()->DispA; }
    QImage paint() const { return surface()->grab().toImage(); }
    void setValences(const QStringList& valences) const;
    PlainComparison plain(double first = 2.0, double second = 3.0) const;

    const SharedPanel m_panel;
};

/// Selects references 1 and 2 with the valences 2 and 3.
void tst_FourPsComparison::init()
{
    resetPanel(*m_panel);
    clearRows(*m_panel);
    useReferences(*m_panel, {0, 1});
    setValences({"2", "3", "7", "9"});
    surface()->setFixedSize(evenSize);
    m_panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel->Disps));
}

void tst_FourPsComparison::setValences(const QStringList& valences) const
{
    for (int i = 0; i < 4; ++i) {
        m_panel->Refs.RefRows.at(i)->Valence->setText(valences.at(i));
    }
}

/// The expected picture of the current points, which must have colours 0 to 2.
PlainComparison tst_FourPsComparison::plain(double first, double second) const
{
    const QList<QColor> colors{black, red, blue};
    PlainComparison picture(surface()->size(), first, second);
    for (const LCFPoint& point : std::as_const(m_panel->LCFvs4PS)) {
        picture.points.append({point.lcfValence, point.fourPsValence, colors.at(point.color)});
    }
    return picture;
}

void tst_FourPsComparison::plotWithoutPointsIsBlank()
{
    QVERIFY(isBlank(paint()));
    QVERIFY(!surface()->cc.drawn);
    QVERIFY(!surface()->hasScale);
    QCOMPARE(frame()->xTitle, QStringLiteral("LCF"));
    QCOMPARE(frame()->yTitle, QStringLiteral("MPs"));
}

void tst_FourPsComparison::plotShowsPointsOverGridAndDiagonal()
{
    m_panel->LCFvs4PS = {pointAt(2.03, 2.87), pointAt(2.5, 2.35, 2), pointAt(2.77, 2.71)};
    const QImage image = paint();
    QVERIFY(isSamePicture(image, plain().picture()));
    QVERIFY(surface()->cc.drawn);
    const QRect inside = plain().place.inside();
    QVERIFY(countOf(image, inside, gridBlue) > 500);
    QVERIFY(countOf(image, inside, diagonalGreen) > 30);
    QVERIFY(countOf(image, inside, black) >= 10);
    QVERIFY(countOf(image, inside, blue) >= 10);
    QVERIFY(countOf(image, inside, red) >= 8);
}

void tst_FourPsComparison::fitValenceIsOnXAndTargetValenceOnY()
{
    m_panel->LCFvs4PS = {pointAt(2.1, 2.905)};
    const QImage image = paint();
    // Both axes are from 1.8 to 3.2, a span of 1.4. So the point is 330 * 0.3 / 1.4 = 70.7
    // pixels right of the left edge and 220 * 1.105 / 1.4 = 173.6 pixels above the bottom edge.
    // Its coordinates (108.7, 58.4) are rounded down to (108, 58).
    const QPoint centre(38 + 70, 232 - 174);
    QVERIFY(countOf(image, QRect(centre - QPoint(2, 2), QSize(5, 5)), red) >= 8);
    QCOMPARE(countOf(image, image.rect(), red),
             countOf(image, QRect(centre - QPoint(2, 2), QSize(5, 5)), red));
}

void tst_FourPsComparison::pointsAreDrawnInTheirStoredColors()
{
    m_panel->LCFColor = 4; // applies to the next point, not to existing points
    m_panel->LCFvs4PS = {pointAt(2.15, 2.25, 2), pointAt(2.35, 2.15, 8), pointAt(2.75, 2.45, 2)};
    PlainComparison wanted(evenSize, 2.0, 3.0);
    wanted.points = {{2.15, 2.25, blue}, {2.35, 2.15, QColor(0, 160, 0)}, {2.75, 2.45, blue}};
    QVERIFY(isSamePicture(paint(), wanted.picture()));
}

void tst_FourPsComparison::lastPointHasARedOuterCircle()
{
    m_panel->LCFvs4PS = {pointAt(2.25, 2.85, 2), pointAt(2.75, 2.15, 2)};
    const QImage image = paint();
    const PlotPlace& place = plain().place;
    const QSize box(5, 5);
    const QRect first(place.pixel(2.25, 2.85) - QPoint(2, 2), box);
    const QRect last(place.pixel(2.75, 2.15) - QPoint(2, 2), box);
    QCOMPARE(countOf(image, first, red), 0);
    QVERIFY(countOf(image, last, red) >= 8);
    // The inner circle keeps the point's colour.
    QVERIFY(countOf(image, last, blue) >= 4);
    QVERIFY(countOf(image, first, blue) >= countOf(image, last, blue) + 8);
}

void tst_FourPsComparison::pointsOutsideThePlotAreNotDrawn_data()
{
    QTest::addColumn<double>("fit");
    QTest::addColumn<double>("target");
    QTest::newRow("NaN as the fit") << notANumber << 2.5;
    QTest::newRow("NaN as the target") << 2.5 << notANumber;
    QTest::newRow("infinite fit") << infinite << 2.5;
    QTest::newRow("infinite target") << 2.5 << -infinite;
    QTest::newRow("huge fit") << -1e300 << 2.5;
    QTest::newRow("huge target") << 2.5 << 1e300;
    QTest::newRow("values beyond the range of int") << 1e10 << -1e10;
}

void tst_FourPsComparison::pointsOutsideThePlotAreNotDrawn()
{
    QFETCH(double, fit);
    QFETCH(double, target);
    m_panel->LCFvs4PS = {pointAt(2.75, 2.15, 2)};
    const PlainComparison wanted = plain();
    m_panel->LCFvs4PS.prepend(pointAt(fit, target, 2));
    QVERIFY(isSamePicture(paint(), wanted.picture()));
    // Only the newest point gets a red circle. If the newest point is outside the plot, no red
    // circle is drawn.
    m_panel->LCFvs4PS.append(pointAt(fit, target, 2));
    const QImage image = paint();
    QCOMPARE(countOf(image, image.rect(), red), 0);
    QVERIFY(countOf(image, wanted.place.inside(), blue) >= 12);
}

void tst_FourPsComparison::extremeValencesLeaveTheMarginsWhite_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    addTexts("millions of grid lines", {"0", "1e9"});
    addTexts("both valences huge", {"-1e300", "1e300"});
    addTexts("less than one ulp per grid line", {"1e17", "1.0000001e17"});
    addTexts("second valence infinite", {"0", "inf"});
    addTexts("both valences infinite", {"-inf", "inf"});
    addTexts("first valence NaN", {"nan", "3"});
    addTexts("second valence NaN", {"2", "nan"});
    addTexts("first valence above the second", {"1e300", "-1e300"});
}

// The paint must also terminate: with some of these valences, a loop over all grid lines would
// not end in a reasonable time.
void tst_FourPsComparison::extremeValencesLeaveTheMarginsWhite()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    setValences({first, second, "0", "0"});
    m_panel->LCFvs4PS = {pointAt(2.5, 2.5), pointAt(1e300, infinite)};
    const QImage image = paint();
    QVERIFY(surface()->cc.drawn);
    QVERIFY(isFilledWith(image, QRect(40, 2, 300, 9), Qt::white));
    QVERIFY(isFilledWith(image, QRect(370, 2, 17, 228), Qt::white));
}

void tst_FourPsComparison::doubleClickClearsThePlot()
{
    m_panel->LCFvs4PS = {pointAt(2.5, 2.35, 2), pointAt(2.6, 2.45)};
    m_panel->LCFColor = 7;
    QVERIFY(!isBlank(paint()));
    SurfacePaints paints(*m_panel->Disps);
    QTest::mouseDClick(surface(), Qt::LeftButton, {}, {100, 100});
    QVERIFY(m_panel->LCFvs4PS.isEmpty());
    QList<int> counts = paints.counts();
    QVERIFY(counts.takeAt(Displays::DLCFvs4PS) >= 1);
    QCOMPARE(counts, paintsOfGridPlots(1).mid(1));
    QVERIFY(isBlank(paint()));
    QVERIFY(!surface()->cc.drawn);
    QVERIFY(!surface()->hasScale);
}

void tst_FourPsComparison::rangeIsFittedAgainAfterThePlotIsCleared()
{
    m_panel->LCFvs4PS = {pointAt(2.5, 2.35, 2)};
    paint();
    surface()->cc.setReal(2.3, 2.3, 2.4, 2.4);
    doubleClick(surface(), {100, 100});
    paint();
    setValences({"1", "4", "0", "0"});
    m_panel->LCFvs4PS = {pointAt(2.5, 2.35, 2)};
    QVERIFY(isSamePicture(paint(), plain(1.0, 4.0).picture()));
}

void tst_FourPsComparison::clickSelectsTheNextColorForLaterPoints()
{
    const auto addPoint = [this](double fit) { // adds a point, as a run of the fit would
        m_panel->LCFvs4PS.append(pointAt(fit, 2.35, m_panel->LCFColor));
    };
    addPoint(2.05);
    addPoint(2.15);
    QTest::mouseClick(surface(), Qt::LeftButton, {}, {100, 100});
    addPoint(2.25);
    QTest::mouseClick(surface(), Qt::LeftButton, {}, {200, 150});
    addPoint(2.35);
    addPoint(2.45);
    addPoint(2.55);
    PlainComparison wanted(evenSize, 2.0, 3.0);
    wanted.points = {{2.05, 2.35, black}, {2.15, 2.35, black}, {2.25, 2.35, red},
                     {2.35, 2.35, blue},  {2.45, 2.35, blue},  {2.55, 2.35, blue}};
    QVERIFY(isSamePicture(paint(), wanted.picture()));
}

void tst_FourPsComparison::releaseOfAMouseButtonSelectsTheNextColor_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("keys");
    QTest::newRow("left button") << int(Qt::LeftButton) << int(Qt::NoModifier);
    QTest::newRow("right button") << int(Qt::RightButton) << int(Qt::NoModifier);
    QTest::newRow("left button with Shift") << int(Qt::LeftButton) << int(Qt::ShiftModifier);
}

void tst_FourPsComparison::releaseOfAMouseButtonSelectsTheNextColor()
{
    QFETCH(int, button);
    QFETCH(int, keys);
    const auto which = static_cast<Qt::MouseButton>(button);
    const auto held = static_cast<Qt::KeyboardModifiers>(keys);
    m_panel->LCFvs4PS = {pointAt(2.5, 2.35, 2)};
    const QImage before = paint();
    press(surface(), {100, 100}, which, held);
    QCOMPARE(m_panel->LCFColor, 0);
    release(surface(), {100, 100}, which, held);
    QCOMPARE(m_panel->LCFColor, 1);
    // Existing points keep their colours.
    QVERIFY(isSamePicture(paint(), before));
}

// The target is a mixture of 3/5 of reference 1 and 2/5 of reference 2.
void tst_FourPsComparison::fitShowsItsPointImmediately()
{
    const QList<double> energies{8300, 8350, 8400, 8450, 8500};
    const QList<double> first{0.1, 0.9, 0.4, 0.7, 0.2};
    const QList<double> second{0.3, 0.2, 0.8, 0.1, 0.9};
    QList<double> target;
    for (int i = 0; i < 5; ++i) {
        target.append(0.6 * first.at(i) + 0.4 * second.at(i));
    }
    setSpectrum(*m_panel->XafsFiles.at(0), energies, first, {}, {1.0, 0.0, 0.0});
    setSpectrum(*m_panel->XafsFiles.at(1), energies, second, {}, {1.0, 0.0, 0.0});
    setSpectrum(*m_panel->ui.TargetFile, energies, target, {}, {1.0, 0.0, 0.0});
    {
        const QSignalBlocker quiet1(m_panel->EPoints.at(0));
        const QSignalBlocker quiet2(m_panel->EPoints.at(5));
        m_panel->EPoints.at(0)->LCFCB->setChecked(true);
        m_panel->EPoints.at(0)->Energy->setText("8290");
        m_panel->EPoints.at(5)->LCFCB->setChecked(true);
        m_panel->EPoints.at(5)->Energy->setText("8510");
    }
    m_panel->TargetT = 2.805;
    QVERIFY(m_panel->LCFvs4PS.isEmpty());
    m_panel->ui.LCFB->click();
    QTest::qWait(20);
    QCOMPARE(m_panel->LCFvs4PS.size(), 1);
    QVERIFY(surface()->cc.drawn);
    PlainComparison wanted(evenSize, 2.0, 3.0);
    // x is the valence of the fit, y the target valence that was set above.
    wanted.points = {{2.0 * 0.6 + 3.0 * 0.4, 2.805, black}};
    QVERIFY(isSamePicture(paint(), wanted.picture()));
}

QTEST_MAIN(tst_FourPsComparison)
#include "tst_FourPsComparison.moc"
