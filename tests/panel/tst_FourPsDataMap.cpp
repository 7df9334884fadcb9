// Tests of the window of the measured maps: the picture and its limits, the selection of a
// row, the loading of files, and mouse actions.

#include "support/MapWindows.h"
#include "support/MouseInput.h"
#include "support/TestFiles.h"

#include <QTest>

#include <limits>

using namespace tests;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Counts {
    double intensity;
    double i0;
};

/// Sets the map of an energy row from the counts of its pixels.
void setCounts(FourPs& panel, int row, int width, int height, const QList<Counts>& pixels)
{
    AEPoint* point = panel.EPoints.at(row);
    point->clear();
    point->xNum = width;
    point->yNum = height;
    for (const Counts& pixel : pixels) {
        point->rows.append({0.0, 0.0, pixel.intensity, pixel.i0, {}});
    }
    point->loaded = true;
}

/// Sets the map of an energy row from values of mut. By convention, a pixel with I0 = 0
/// stores mut in place of the intensity.
void setMuts(FourPs& panel, int row, int width, int height, const QList<double>& muts)
{
    QList<Counts> pixels;
    for (const double mut : muts) {
        pixels.append({mut, 0.0});
    }
    setCounts(panel, row, width, height, pixels);
}

/// The text of a map file of @p width by @p height pixels. Each pixel has I0 = 0, so one of
/// @p muts replaces its intensity.
QByteArray mapText(int width, int height, const QList<double>& muts)
{
    QByteArray text = "# map\n# X-NUM " + QByteArray::number(width) + "\n# Y-NUM " +
                      QByteArray::number(height) + "\n";
    for (const double mut : muts) {
        text += "0 0 " + QByteArray::number(mut) + " 0\n";
    }
    return text;
}

} // namespace

class tst_FourPsDataMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void mapWithoutSizeIsWhite_data();
    void mapWithoutSizeIsWhite();

    void countsAreShownAsAbsorbance();
    void missingPixelIsShownAsMinusOne();
    void nanPixelIsDrawnBlack();

    void mapWithOnlyNanPixelsKeepsTheLimits();
    void doubleClickFitsViewAndLimitsAgain_data();
    void doubleClickFitsViewAndLimitsAgain();

    void selectingARowFitsViewAndLimitsToItsMap();
    void selectingARowWithoutAMapShowsWhiteAndKeepsTheLimits();
    void loadingTheShownRowFitsViewAndLimits();
    void loadingAnotherRowKeepsThePicture();
    void loadingAllRowsFitsViewAndLimitsToTheShownMap();

    void mouseMoveShowsPositionAndValue();
    void valueIsShownWithSixDigitsAndCursorAtStart();

private:
    DispMBase* window() const { return m_panel->DMapDisp; }
    DispArea* surface() const { return m_panel->DMapDisp->DispA; }
    void load(int row, const QString& path) { m_panel->EPoints.at(row)->FileSelect->newFile(path); }

    QTemporaryDir m_dir;
    const SharedPanel m_panel;
};

void tst_FourPsDataMap::init()
{
    resetMaps(*m_panel);
    QVERIFY(showWindow(window()));
}

void tst_FourPsDataMap::mapWithoutSizeIsWhite_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("no size") << 0 << 0;
    QTest::newRow("no columns") << 0 << 1;
    QTest::newRow("no rows") << 2 << 0;
    QTest::newRow("negative size") << -2 << -1;
}

void tst_FourPsDataMap::mapWithoutSizeIsWhite()
{
    QFETCH(int, width);
    QFETCH(int, height);
    setMuts(*m_panel, 0, width, height, {1.0, 2.0});
    QVERIFY(isBlank(picture(window())));
    QVERIFY(!surface()->hasScale);
    QCOMPARE(barLimits(window()), QList<double>({0.0, 1.0}));
}

void tst_FourPsDataMap::countsAreShownAsAbsorbance()
{
    setCounts(*m_panel, 0, 2, 2, {{1.0, 2.0}, {4.0, 2.0}, {1.0, 8.0}, {3.0, 3.0}});
    const QList<double> values{std::log(2.0), std::log(0.5), std::log(8.0), 0.0};
    QCOMPARE(picture(window()),
             plainPicture(window(), {2, 2, values, std::log(0.5), std::log(8.0)}));
    QCOMPARE(limitTexts(window()), QStringList({"-0.693147", "2.07944"}));
}

void tst_FourPsDataMap::missingPixelIsShownAsMinusOne()
{
    setMuts(*m_panel, 0, 2, 2, {1.0, 2.0, 3.0});
    QCOMPARE(picture(window()), plainPicture(window(), {2, 2, {1.0, 2.0, 3.0, -1.0}, -1.0, 3.0}));
    QCOMPARE(limitTexts(window()), QStringList({"-1", "3"}));
}

void tst_FourPsDataMap::nanPixelIsDrawnBlack()
{
    // The second pixel is NaN because ln(I0 / I) of a negative intensity I is NaN.
    setCounts(*m_panel, 0, 4, 1, {{1.0, 0.0}, {-1.0, 2.0}, {notANumber, 0.0}, {2.0, 0.0}});
    const QList<double> values{1.0, notANumber, notANumber, 2.0};
    const QImage image = picture(window());
    QCOMPARE(image, plainPicture(window(), {4, 1, values, 1.0, 2.0}));
    QCOMPARE(image.pixelColor(pixelCentre(window(), 4, 1, 1, 0).toPoint()), QColor(0, 0, 0));
    QCOMPARE(limitTexts(window()), QStringList({"1", "2"}));
}

void tst_FourPsDataMap::mapWithOnlyNanPixelsKeepsTheLimits()
{
    window()->setZRange(40.0, 50.0);
    setMuts(*m_panel, 0, 2, 1, {notANumber, notANumber});
    picture(window());
    QCOMPARE(limitTexts(window()), QStringList({"40", "50"}));
    QCOMPARE(barLimits(window()), QList<double>({40.0, 50.0}));
    QCOMPARE(viewOf(window()), QList<double>({0.0, 0.0, 2.0, 1.0}));
}

void tst_FourPsDataMap::doubleClickFitsViewAndLimitsAgain_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left button") << Qt::LeftButton;
    QTest::newRow("right button") << Qt::RightButton;
}

void tst_FourPsDataMap::doubleClickFitsViewAndLimitsAgain()
{
    QFETCH(Qt::MouseButton, button);
    setMuts(*m_panel, 0, 2, 1, {1.0, 2.0});
    picture(window());
    surface()->cc.setReal(0.5, 0.25, 1.75, 0.75);
    window()->setZRange(-4.0, 4.0);
    doubleClick(surface(), {30.0, 40.0}, button);
    // The double-click only sets hasScale to false. The next paint fits the view and the limits.
    QCOMPARE(limitTexts(window()), QStringList({"-4", "4"}));
    QTest::qWait(20);
    QCOMPARE(limitTexts(window()), QStringList({"1", "2"}));
    QCOMPARE(picture(window()), plainPicture(window(), {2, 1, {1.0, 2.0}, 1.0, 2.0}));
}

void tst_FourPsDataMap::selectingARowFitsViewAndLimitsToItsMap()
{
    setMuts(*m_panel, 0, 2, 1, {1.0, 2.0});
    setMuts(*m_panel, 5, 3, 2, {6.0, 5.0, 4.0, 3.0, 8.0, 9.0});
    picture(window());
    surface()->cc.setReal(0.5, 0.25, 1.75, 0.75);
    m_panel->EPoints.at(5)->ShowMapB->click();
    QCOMPARE(picture(window()),
             plainPicture(window(), {3, 2, {6.0, 5.0, 4.0, 3.0, 8.0, 9.0}, 3.0, 9.0}));
    QCOMPARE(viewOf(window()), QList<double>({0.0, 0.0, 3.0, 2.0}));
    QCOMPARE(limitTexts(window()), QStringList({"3", "9"}));
    m_panel->EPoints.at(0)->ShowMapB->click();
    QCOMPARE(picture(window()), plainPicture(window(), {2, 1, {1.0, 2.0}, 1.0, 2.0}));
}

void tst_FourPsDataMap::selectingARowWithoutAMapShowsWhiteAndKeepsTheLimits()
{
    setMuts(*m_panel, 0, 2, 1, {1.0, 2.0});
    picture(window());
    m_panel->EPoints.at(7)->ShowMapB->click();
    QVERIFY(isBlank(picture(window())));
    QVERIFY(!surface()->hasScale);
    QCOMPARE(limitTexts(window()), QStringList({"1", "2"}));
    QCOMPARE(barLimits(window()), QList<double>({1.0, 2.0}));
}

void tst_FourPsDataMap::loadingTheShownRowFitsViewAndLimits()
{
    setMuts(*m_panel, 0, 3, 1, {10.0, 20.0, 30.0});
    picture(window());
    surface()->cc.setReal(0.5, 0.25, 1.75, 0.75);
    load(0, writeFile(m_dir, "a.dat", mapText(2, 2, {1.0, 2.0, 4.0, 3.0})));
    QVERIFY(!surface()->hasScale);
    QTest::qWait(20);
    QVERIFY(surface()->hasScale);
    QCOMPARE(viewOf(window()), QList<double>({0.0, 0.0, 2.0, 2.0}));
    QCOMPARE(limitTexts(window()), QStringList({"1", "4"}));
    QCOMPARE(picture(window()), plainPicture(window(), {2, 2, {1.0, 2.0, 4.0, 3.0}, 1.0, 4.0}));
}

void tst_FourPsDataMap::loadingAnotherRowKeepsThePicture()
{
    setMuts(*m_panel, 0, 3, 1, {10.0, 20.0, 30.0});
    picture(window());
    load(1, writeFile(m_dir, "a.dat", mapText(2, 2, {1.0, 2.0, 4.0, 3.0})));
    QTest::qWait(20);
    QCOMPARE(picture(window()), plainPicture(window(), {3, 1, {10.0, 20.0, 30.0}, 10.0, 30.0}));
}

void tst_FourPsDataMap::loadingAllRowsFitsViewAndLimitsToTheShownMap()
{
    QStringList paths;
    for (int row = 0; row < 8; ++row) {
        paths << writeFile(m_dir, QStringLiteral("row%1.dat").arg(row),
                           mapText(1, 2, {10.0 + row, 20.0}));
    }
    m_panel->EPoints.at(6)->ShowMapB->click();
    m_panel->receiveNewPaths(paths);
    QCOMPARE(picture(window()), plainPicture(window(), {1, 2, {16.0, 20.0}, 16.0, 20.0}));
}

void tst_FourPsDataMap::mouseMoveShowsPositionAndValue()
{
    setCounts(*m_panel, 0, 3, 2,
              {{1.0, 2.0}, {0.0, 2.0}, {2.5, 0.0}, {4.0, 2.0}, {0.0, 0.0}, {1.0, 10.0}});
    const QStringList texts{"0.693147", "1", "2.5", "-0.693147", "0", "2.30259"};
    picture(window());
    const double width = surface()->width();
    const double height = surface()->height();
    for (int pixel = 0; pixel < 6; ++pixel) {
        const QPoint at = pixelCentre(window(), 3, 2, pixel % 3, pixel / 3).toPoint();
        tests::move(surface(), at);
        QCOMPARE(window()->XPos->text(), sixDigits(3.0 / width * at.x()));
        QCOMPARE(window()->YPos->text(), sixDigits(2.0 / height * (height - at.y())));
        QCOMPARE(window()->Val->text(), texts.at(pixel));
    }
}

void tst_FourPsDataMap::valueIsShownWithSixDigitsAndCursorAtStart()
{
    setMuts(*m_panel, 0, 1, 1, {-1.0 / 3.0});
    m_panel->receiveNowPosInDMap(0.5, 0.5);
    QCOMPARE(window()->Val->text(), "-0.333333");
    QCOMPARE(window()->Val->cursorPosition(), 0);
}

QTEST_MAIN(tst_FourPsDataMap)
#include "tst_FourPsDataMap.moc"
