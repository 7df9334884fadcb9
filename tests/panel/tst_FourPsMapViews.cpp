// Tests of the picture of the result map and of the limits of its colours.

#include "support/MapWindows.h"

#include <QTest>

#include <limits>

using namespace tests;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

enum Quantity { Ratio1, Ratio2, DMut1 = 4, Mut0 = 8, C1, C2, Valence, Amount };

// A value that is different for each pixel and each quantity.
double distinctValue(int pixel, int quantity)
{
    return 0.37 * pixel - 0.4 + 0.11 * quantity;
}

QList<QList<double>> distinctValues(int pixels)
{
    QList<QList<double>> all;
    for (int pixel = 0; pixel < pixels; ++pixel) {
        QList<double> values;
        for (int quantity = 0; quantity < 13; ++quantity) {
            values.append(distinctValue(pixel, quantity));
        }
        all.append(values);
    }
    return all;
}

// The preset limits of an amount are -0.1 and 1.1 times the sum of the edge jumps, which is 8
// for the references of setTwoReferences().
constexpr double amountLow = -0.8;
const double amountHigh = 8.0 * 1.1;

QColor colorAt(const QImage& image, const QPointF& place)
{
    return image.pixelColor(place.toPoint());
}

} // namespace

class tst_FourPsMapViews : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void resultWithoutSizeIsWhite_data();
    void resultWithoutSizeIsWhite();

    void everyQuantityOfTheNonEquivalentMethodIsShown_data();
    void everyQuantityOfTheNonEquivalentMethodIsShown();
    void valenceMapUsesTheCurrentReferences();
    void firstRowIsAtTheBottomAndFirstColumnAtTheLeft();
    void pixelsBeyondTheMapSizeAreNotShown();

    void presetLimitsAreSetWithoutAResult();

    void limitsOfC1AndC2AreFittedToTheValues_data();
    void limitsOfC1AndC2AreFittedToTheValues();
    void missingPixelsCountAsZeroForTheLimits();
    void mapWithOnlyNanPixelsKeepsTheLimits();
    void infinitePixelMakesALimitInfiniteAndTheMapBlack_data();
    void infinitePixelMakesALimitInfiniteAndTheMapBlack();
    void pixelsOfEqualValuesAreDrawnBlack();

    void typedLimitChangesTheColours();
    void zoomedAndPannedViewShowsItsPartOfTheMap();
    void newTopIndexOfTheColourBarChangesTheMapColours();

private:
    DispMBase* window() const { return m_panel->MapDisp; }
    QList<double> shown(int quantity, int pixels) const;

    const SharedPanel m_panel;
};

void tst_FourPsMapViews::init()
{
    resetMaps(*m_panel);
    QVERIFY(showWindow(window()));
}

void tst_FourPsMapViews::resultWithoutSizeIsWhite_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("no columns") << 0 << 1;
    QTest::newRow("no rows") << 2 << 0;
    QTest::newRow("negative width") << -1 << 2;
    QTest::newRow("negative height") << 2 << -1;
}

void tst_FourPsMapViews::resultWithoutSizeIsWhite()
{
    QFETCH(int, width);
    QFETCH(int, height);
    setQuantity(*m_panel, C1, width, height, {1.0, 2.0});
    QVERIFY(isBlank(picture(window())));
    QVERIFY(!window()->DispA->hasScale);
    QCOMPARE(barLimits(window()), QList<double>({0.0, 1.0}));
}

void tst_FourPsMapViews::everyQuantityOfTheNonEquivalentMethodIsShown_data()
{
    QTest::addColumn<int>("quantity");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    for (int i = 0; i < 4; ++i) {
        QTest::addRow("ratio %d", i + 1) << i << -0.1 << 1.1;
        QTest::addRow("dMut %d", i + 1) << 4 + i << amountLow << amountHigh;
    }
    QTest::newRow("mut0") << 8 << amountLow << amountHigh;
    // The limits of C1 and C2 are their lowest and highest values. distinctValue() increases
    // with the pixel, so these are the values of the first and the last pixel.
    QTest::newRow("c1") << 9 << distinctValue(0, 9) << distinctValue(5, 9);
    QTest::newRow("c2") << 10 << distinctValue(0, 10) << distinctValue(5, 10);
    QTest::newRow("valence") << 11 << 1.5 << 3.5;
    QTest::newRow("amount") << 12 << amountLow << amountHigh;
}

void tst_FourPsMapViews::everyQuantityOfTheNonEquivalentMethodIsShown()
{
    QFETCH(int, quantity);
    QFETCH(double, low);
    QFETCH(double, high);
    setResult(*m_panel, 3, 2, distinctValues(6));
    mapRadio(*m_panel, quantity)->setChecked(true);
    const QImage image = picture(window());
    QCOMPARE(barLimits(window()), QList<double>({low, high}));
    QCOMPARE(image, plainPicture(window(), {3, 2, shown(quantity, 6), low, high}));
}

QList<double> tst_FourPsMapViews::shown(int quantity, int pixels) const
{
    QList<double> values;
    for (int pixel = 0; pixel < pixels; ++pixel) {
        values.append(distinctValue(pixel, quantity));
    }
    return values;
}

void tst_FourPsMapViews::valenceMapUsesTheCurrentReferences()
{
    setFractions(*m_panel, 1, 1, {{0.25, 1.0}});
    QCOMPARE(picture(window()), plainPicture(window(), {1, 1, {2.75}, 1.5, 3.5}));
    m_panel->Refs.RefRows.at(0)->Valence->setText("1");
    // The limits do not change. The new valence is 0.25 * 1 + 0.75 * 3 = 2.5.
    QCOMPARE(picture(window()), plainPicture(window(), {1, 1, {2.5}, 1.5, 3.5}));
    // With only one valid reference, every pixel has the valence 0.
    m_panel->XafsFiles.at(1)->valid = false;
    QCOMPARE(picture(window()), plainPicture(window(), {1, 1, {0.0}, 1.5, 3.5}));
}

void tst_FourPsMapViews::firstRowIsAtTheBottomAndFirstColumnAtTheLeft()
{
    setQuantity(*m_panel, Ratio1, 2, 2, {-0.1, 0.3, 0.7, 1.1});
    const QImage image = picture(window());
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    QCOMPARE(image.pixelColor(0, bottom), QColor(0, 0, 0));
    QCOMPARE(image.pixelColor(right, bottom), plainMapColor(0.3, -0.1, 1.1));
    QCOMPARE(image.pixelColor(0, 0), plainMapColor(0.7, -0.1, 1.1));
    QCOMPARE(image.pixelColor(right, 0), QColor(255, 255, 255));
}

void tst_FourPsMapViews::pixelsBeyondTheMapSizeAreNotShown()
{
    setQuantity(*m_panel, C1, 2, 1, {1.0, 3.0, -50.0, 50.0});
    QCOMPARE(picture(window()), plainPicture(window(), {2, 1, {1.0, 3.0}, 1.0, 3.0}));
    QCOMPARE(limitTexts(window()), QStringList({"1", "3"}));
}

void tst_FourPsMapViews::presetLimitsAreSetWithoutAResult()
{
    mapRadio(*m_panel, Ratio2)->setChecked(true);
    window()->setZRange(40.0, 50.0);
    QVERIFY(m_panel->SetMapScale());
    QCOMPARE(limitTexts(window()), QStringList({"-0.1", "1.1"}));
    QVERIFY(isBlank(picture(window())));
    QVERIFY(!window()->DispA->hasScale);
}

void tst_FourPsMapViews::limitsOfC1AndC2AreFittedToTheValues_data()
{
    QTest::addColumn<int>("quantity");
    QTest::newRow("c1") << int(C1);
    QTest::newRow("c2") << int(C2);
}

void tst_FourPsMapViews::limitsOfC1AndC2AreFittedToTheValues()
{
    QFETCH(int, quantity);
    setQuantity(*m_panel, quantity, 2, 2, {3.0, -1234567.0, 7.5, 4.0});
    picture(window());
    QCOMPARE(barLimits(window()), QList<double>({-1234567.0, 7.5}));
    QCOMPARE(limitTexts(window()), QStringList({"-1.23457e+06", "7.5"}));
    QCOMPARE(window()->MinV->cursorPosition(), 0);
    QCOMPARE(window()->MaxV->cursorPosition(), 0);
}

void tst_FourPsMapViews::missingPixelsCountAsZeroForTheLimits()
{
    setQuantity(*m_panel, C2, 2, 2, {3.0, 5.0, 4.0});
    picture(window());
    QCOMPARE(barLimits(window()), QList<double>({0.0, 5.0}));
    setQuantity(*m_panel, C2, 2, 2, {-3.0, -5.0});
    window()->DispA->hasScale = false;
    picture(window());
    QCOMPARE(barLimits(window()), QList<double>({-5.0, 0.0}));
}

void tst_FourPsMapViews::mapWithOnlyNanPixelsKeepsTheLimits()
{
    window()->setZRange(40.0, 50.0);
    setQuantity(*m_panel, C1, 2, 1, {notANumber, notANumber});
    QCOMPARE(picture(window()),
             plainPicture(window(), {2, 1, {notANumber, notANumber}, 40.0, 50.0}));
    QCOMPARE(barLimits(window()), QList<double>({40.0, 50.0}));
    QCOMPARE(limitTexts(window()), QStringList({"40", "50"}));
    QCOMPARE(viewOf(window()), QList<double>({0.0, 0.0, 2.0, 1.0}));
}

void tst_FourPsMapViews::infinitePixelMakesALimitInfiniteAndTheMapBlack_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("infinity") << infinity << QStringList{"2", "inf"};
    QTest::newRow("minus infinity") << -infinity << QStringList{"-inf", "6"};
}

void tst_FourPsMapViews::infinitePixelMakesALimitInfiniteAndTheMapBlack()
{
    QFETCH(double, value);
    setQuantity(*m_panel, C1, 3, 1, {2.0, value, 6.0});
    // The difference between the limits is infinite, so every pixel has the first colour.
    QCOMPARE(picture(window()), plainPicture(window(), {3, 1, {0.0, 0.0, 0.0}, 0.0, 1.0}));
    QTEST(limitTexts(window()), "texts");
}

void tst_FourPsMapViews::pixelsOfEqualValuesAreDrawnBlack()
{
    setQuantity(*m_panel, C1, 2, 2, {4.0, 4.0, 4.0, 4.0});
    QImage black(window()->DispA->size(), QImage::Format_RGB32);
    black.fill(Qt::black);
    QCOMPARE(picture(window()), black);
    QCOMPARE(barLimits(window()), QList<double>({4.0, 4.0}));
    QCOMPARE(limitTexts(window()), QStringList({"4", "4"}));
}

void tst_FourPsMapViews::typedLimitChangesTheColours()
{
    setQuantity(*m_panel, Ratio1, 2, 1, {0.0, 1.0});
    picture(window());
    enter(window()->MaxV, "2.3");
    QCOMPARE(picture(window()), plainPicture(window(), {2, 1, {0.0, 1.0}, -0.1, 2.3}));
    enter(window()->MinV, "-4");
    QCOMPARE(picture(window()), plainPicture(window(), {2, 1, {0.0, 1.0}, -4.0, 2.3}));
}

void tst_FourPsMapViews::zoomedAndPannedViewShowsItsPartOfTheMap()
{
    const QList<double> values{0.0, 0.2, 0.4, 0.6, 0.8, 1.0};
    setQuantity(*m_panel, Ratio1, 3, 2, values);
    picture(window());
    const PlainMap map{3, 2, values, -0.1, 1.1};
    window()->DispA->cc.setReal(0.75, 0.5, 1.3, 1.7);
    QCOMPARE(picture(window()), plainPicture(window(), map, {{}, 0.75, 0.5, 1.3, 1.7}));
    window()->DispA->cc.setReal(-2.5, -1.25, 4.0, 5.0);
    QCOMPARE(picture(window()), plainPicture(window(), map, {{}, -2.5, -1.25, 4.0, 5.0}));
}

// The colour table has 768 entries. With imax = 1536, the upper limit has the index 1536, so
// half the upper limit and all higher values have the last colour, which is white.
void tst_FourPsMapViews::newTopIndexOfTheColourBarChangesTheMapColours()
{
    setQuantity(*m_panel, C1, 3, 1, {0.0, 192.0, 768.0});
    picture(window());
    window()->CBar->imax = 1536.0;
    const QImage image = picture(window());
    QCOMPARE(colorAt(image, pixelCentre(window(), 3, 1, 0, 0)), QColor(0, 0, 0));
    QCOMPARE(colorAt(image, pixelCentre(window(), 3, 1, 1, 0)), QColor(255, 128, 0));
    QCOMPARE(colorAt(image, pixelCentre(window(), 3, 1, 2, 0)), QColor(255, 255, 255));
}

QTEST_MAIN(tst_FourPsMapViews)
#include "tst_FourPsMapViews.moc"
