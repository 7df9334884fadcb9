// Tests of cBar, the colour bar of a map.
#include "display/cBar.h"

#include "display/ColorTables.h"
#include "support/MemberOrder.h"
#include "support/PaintCounter.h"

#include <QImage>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double huge = std::numeric_limits<double>::max();

/// Entry @p i of one of three tables, calculated independently of ColorTables: blue to
/// yellow (type 11, 256 entries), blue to green to red (type 8, 512 entries), black to
/// red to yellow to white (type 0, 768 entries).
QColor entryOf(int type, int i)
{
    const auto level = [](int v) { return std::clamp(v, 0, 255); };
    switch (type) {
    case 11:
        return {i, i, 255 - i};
    case 8:
        return i < 256 ? QColor(0, i, 255 - i) : QColor(i - 256, 511 - i, 0);
    default:
        return {level(i), level(i - 256), level(i - 512)};
    }
}

/// A visible bar that is 256 pixels high, with a table of 256 entries, so that entry i
/// is at pixel row 256 - i.
class VisibleBar : public cBar
{
public:
    VisibleBar()
    {
        setCBarType(11);
        resize(40, 256);
        show();
    }

    bool isReady() { return QTest::qWaitForWindowExposed(this) && height() == 256; }

    void press(int y, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(this, button, {}, {20, y});
    }
    void move(int y)
    {
        QTest::mouseMove(this, {20, y});
        QCoreApplication::processEvents();
    }
    void release(int y, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(this, button, {}, {20, y});
        QCoreApplication::processEvents();
    }
    void drag(int from, int to, Qt::MouseButton button = Qt::LeftButton)
    {
        press(from, button);
        move(to);
        release(to, button);
    }
    /// Sends a mouse event with any position and any pressed buttons. The functions of
    /// QTest accept only whole pixels.
    void send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons pressed)
    {
        QMouseEvent event(type, at, mapToGlobal(at), button, pressed, Qt::NoModifier);
        QCoreApplication::sendEvent(this, &event);
        QCoreApplication::processEvents();
    }
};

/// Moves the lines to the pixel rows @p upper and @p lower, as a drag would: the table
/// entries fill the rows from the lower line (entry 0) up to the upper line (entry
/// nColors). imax and imin are the entries extrapolated to the top and bottom of the
/// bar.
void placeLines(cBar& bar, int upper, int lower)
{
    const double d = static_cast<double>(bar.nColors) / (upper - lower);
    bar.imax = -lower * d;
    bar.imin = (bar.height() - lower) * d;
}

bool rowHasColor(const QImage& image, int y, const std::function<bool(const QColor&)>& expected)
{
    const QList<int> columns{0, image.width() / 2, image.width() - 1};
    return std::all_of(columns.begin(), columns.end(),
                       [&](int x) { return expected(image.pixelColor(x, y)); });
}

bool rowHasColor(const QImage& image, int y, const QColor& expected)
{
    return rowHasColor(image, y, [&](const QColor& color) { return color == expected; });
}

/// Whether @p color is the colour of entry @p i or of a neighbouring entry.
bool isNear(const QColor& color, int type, int i, bool invert)
{
    const int last = type == 11 ? 255 : type == 8 ? 511 : 767;
    for (const int index : {i - 1, i, i + 1}) {
        const int clamped = std::clamp(index, 0, last);
        if (color == entryOf(type, invert ? last - clamped : clamped)) {
            return true;
        }
    }
    return false;
}

} // namespace

class tst_cBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheFirstTableAndDefaultSettings();
    void startsWithTheSettingsOfItsForm();
    void signalsAndSlotsAreDeclaredInTheExpectedOrder();

    void setCBarTypeBuildsItsTableOrTheFirstIfUnknown_data();
    void setCBarTypeBuildsItsTableOrTheFirstIfUnknown();
    void setCBarTypeResetsTheLines();

    void valuesSelectTheirTableEntries_data();
    void valuesSelectTheirTableEntries();
    void valuesWithoutATableEntryHaveTheFirstColour_data();
    void valuesWithoutATableEntryHaveTheFirstColour();
    void hugeLimitsStillMapValuesToTableEntries_data();
    void hugeLimitsStillMapValuesToTableEntries();
    void entryOfAValueIsInterpolatedFromIminToImax_data();
    void entryOfAValueIsInterpolatedFromIminToImax();

    void changedLimitsStayInAscendingOrder_data();
    void changedLimitsStayInAscendingOrder();
    void checkOrderSwapsReversedLimits();
    void setAutoScaleEmitsNewScale();
    void inversionEmitsNoSignal();

    void pixelRowsShowTheColoursOfTheirValues_data();
    void pixelRowsShowTheColoursOfTheirValues();
    void eachEntryOfABarAsHighAsItsTableFillsOneRow();
    void eachEntryOfATallBarFillsThreePixelRows();
    void pixelRowsOutsideTheLinesUseTheAboveAndBelowColours();
    void linesAreClampedToTheBar_data();
    void linesAreClampedToTheBar();
    void linesOfTinyBarsStayInOrder();
    void extremeLinePositionsCauseNoInvalidConversions_data();
    void extremeLinePositionsCauseNoInvalidConversions();

    void pressNearALineSelectsIt_data();
    void pressNearALineSelectsIt();
    void lowerLineIsSelectedIfBothLinesAreNear_data();
    void lowerLineIsSelectedIfBothLinesAreNear();
    void pressPositionIsRounded();
    void leftMiddleAndRightButtonsDragLines();
    void draggingTheUpperLineRaisesImax();
    void draggingTheLowerLineLowersImin();
    void draggingBothLinesSetsImaxAndImin();
    void scaleAfterADragDependsOnlyOnItsLastPosition();
    void pressAwayFromTheLinesKeepsTheSelection_data();
    void pressAwayFromTheLinesKeepsTheSelection();
    void dragWithoutASelectedLineEmitsAnUnchangedScale();
    void draggingALineOntoTheOtherKeepsTheScale();
    void crossedLinesReverseTheColours();
    void moveWithoutButtonOnlyRepaints();
    void releaseOnlyRepaints();
    void doubleClickResetsTheLinesWithoutSignal();
    void doubleClickStartsNoDrag();
};

void tst_cBar::startsWithTheFirstTableAndDefaultSettings()
{
    const cBar bar;
    QCOMPARE(bar.table.size(), 768);
    QCOMPARE(bar.nColors, 768);
    QCOMPARE(bar.maxIdx, 768);
    QCOMPARE(bar.minIdx, 0);
    QCOMPARE(bar.imax, 768.0);
    QCOMPARE(bar.imin, 0.0);
    QCOMPARE(bar.zmax, 1.0);
    QCOMPARE(bar.zmin, 0.0);
    QVERIFY(bar.autoScale);
    QVERIFY(!bar.invert);
    QCOMPARE(bar.dragHandle, 2);
    QCOMPARE(bar.aboveColor, QColor(255, 255, 255));
    QCOMPARE(bar.belowColor, QColor(0, 0, 0));
    QCOMPARE(bar.lineColor, QColor(150, 150, 150));
    QVERIFY(!bar.mouse.pressed);
}

void tst_cBar::startsWithTheSettingsOfItsForm()
{
    const cBar bar;
    QCOMPARE(bar.objectName(), QString("cBar"));
    QCOMPARE(bar.windowTitle(), QString("Frame"));
    QCOMPARE(bar.size(), QSize(400, 300));
    QCOMPARE(bar.frameShape(), QFrame::StyledPanel);
    QCOMPARE(bar.frameShadow(), QFrame::Raised);
}

void tst_cBar::signalsAndSlotsAreDeclaredInTheExpectedOrder()
{
    const QMetaObject& meta = cBar::staticMetaObject;
    QCOMPARE(tests::memberNames(meta, QMetaMethod::Signal), QStringList{"newScale()"});
    QCOMPARE(tests::memberNames(meta, QMetaMethod::Slot),
             (QStringList{"setAutoScale(bool)", "newZmax(double)", "newZmin(double)",
                          "maxCBarTypes()", "setInvertCBar(bool)"}));
    cBar bar;
    int types = 0;
    QVERIFY(QMetaObject::invokeMethod(&bar, "maxCBarTypes", Q_RETURN_ARG(int, types)));
    QCOMPARE(types, 12);
}

void tst_cBar::setCBarTypeBuildsItsTableOrTheFirstIfUnknown_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("builtType");
    for (int type = 0; type < 12; ++type) {
        QTest::addRow("type %d", type) << type << type;
    }
    QTest::newRow("one below the lowest type") << -1 << 0;
    QTest::newRow("one above the highest type") << 12 << 0;
    QTest::newRow("largest int") << std::numeric_limits<int>::max() << 0;
}

void tst_cBar::setCBarTypeBuildsItsTableOrTheFirstIfUnknown()
{
    QFETCH(int, type);
    QFETCH(int, builtType);
    cBar bar;
    bar.setCBarType(9);
    bar.setCBarType(type);
    QList<QColor> colors;
    for (const QColor* entry : bar.table) {
        colors.append(*entry);
    }
    QCOMPARE(colors, display::colorTable(builtType));
    QCOMPARE(bar.nColors, colors.size());
    QCOMPARE(bar.maxIdx, colors.size());
}

void tst_cBar::setCBarTypeResetsTheLines()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    bar.drag(5, 100);
    bar.drag(250, 200);
    bar.zmax = 7.0;
    bar.zmin = -3.0;
    QSignalSpy spy(&bar, &cBar::newScale);
    tests::PaintCounter paints(&bar);
    paints.restart();
    bar.setCBarType(3);
    QCOMPARE(bar.nColors, 512);
    QCOMPARE(bar.maxIdx, 512);
    QCOMPARE(bar.minIdx, 0);
    QCOMPARE(bar.imax, 512.0);
    QCOMPARE(bar.imin, 0.0);
    QCOMPARE(bar.zmax, 7.0);
    QCOMPARE(bar.zmin, -3.0);
    QCOMPARE(paints.within(), 1);
    QCOMPARE(bar.maxLineY, 0);
    QCOMPARE(bar.minLineY, 255);
    QCOMPARE(spy.count(), 0);
}

void tst_cBar::valuesSelectTheirTableEntries_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("entry");
    QTest::newRow("lower limit") << -384.0 << 0;
    QTest::newRow("inside the first entry") << -383.01 << 0;
    QTest::newRow("second entry") << -383.0 << 1;
    QTest::newRow("end of the first ramp") << -128.25 << 255;
    QTest::newRow("second ramp") << -128.0 << 256;
    QTest::newRow("middle") << 0.0 << 384;
    QTest::newRow("third ramp") << 128.0 << 512;
    QTest::newRow("last entry") << 383.5 << 767;
    QTest::newRow("upper limit") << 384.0 << 767;
    QTest::newRow("below the lower limit") << -384.5 << 0;
    QTest::newRow("above the upper limit") << 385.0 << 767;
    QTest::newRow("far below, outside the range of int") << -1e20 << 0;
    QTest::newRow("far above, outside the range of int") << 1e20 << 767;
}

// The limits are -384 and 384 and table 0 has 768 entries, so the index of a value is
// the value plus 384.
void tst_cBar::valuesSelectTheirTableEntries()
{
    QFETCH(double, value);
    QFETCH(int, entry);
    cBar bar;
    bar.newZmin(-384.0);
    bar.newZmax(384.0);
    QCOMPARE(bar.color(value), entryOf(0, entry));
    bar.setInvertCBar(true);
    QCOMPARE(bar.color(value), entryOf(0, 767 - entry));
}

void tst_cBar::valuesWithoutATableEntryHaveTheFirstColour_data()
{
    QTest::addColumn<double>("zmin");
    QTest::addColumn<double>("zmax");
    QTest::addColumn<double>("value");
    QTest::newRow("NaN") << 0.0 << 1.0 << notANumber;
    QTest::newRow("infinity") << 0.0 << 1.0 << infinite;
    QTest::newRow("negative infinity") << 0.0 << 1.0 << -infinite;
    QTest::newRow("equal limits, at the limit") << 2.0 << 2.0 << 2.0;
    QTest::newRow("equal limits, above") << 2.0 << 2.0 << 3.0;
    QTest::newRow("equal limits, below") << 2.0 << 2.0 << 1.0;
    QTest::newRow("equal limits, far above") << 0.0 << 0.0 << 1e300;
    QTest::newRow("limits one ulp apart") << 0.0 << 5e-324 << 1.0;
    QTest::newRow("NaN as the lower limit") << notANumber << 1.0 << 0.5;
    QTest::newRow("NaN as the upper limit") << 0.0 << notANumber << 0.5;
    QTest::newRow("infinite upper limit") << 0.0 << infinite << 0.5;
    QTest::newRow("infinite lower limit") << -infinite << 1.0 << 0.5;
}

void tst_cBar::valuesWithoutATableEntryHaveTheFirstColour()
{
    QFETCH(double, value);
    cBar bar;
    QFETCH(double, zmin);
    QFETCH(double, zmax);
    bar.zmin = zmin;
    bar.zmax = zmax;
    bar.setCBarType(8);
    QCOMPARE(bar.color(value), QColor(0, 0, 255));
    bar.setInvertCBar(true);
    QCOMPARE(bar.color(value), QColor(255, 0, 0));
}

void tst_cBar::hugeLimitsStillMapValuesToTableEntries_data()
{
    QTest::addColumn<double>("zmin");
    QTest::addColumn<double>("zmax");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("entry");
    QTest::newRow("lower limit") << -1e300 << 1e300 << -1e300 << 0;
    QTest::newRow("middle") << -1e300 << 1e300 << 0.0 << 384;
    QTest::newRow("three quarters") << -1e300 << 1e300 << 5e299 << 576;
    QTest::newRow("upper limit") << -1e300 << 1e300 << 1e300 << 767;
    QTest::newRow("beyond the range of int") << -1e300 << 1e300 << 1.7e308 << 767;
    // Limits that are set directly can be reversed: only checkOrder() swaps them.
    QTest::newRow("reversed, middle") << 1e300 << -1e300 << 0.0 << 384;
    QTest::newRow("reversed, quarter") << 1e300 << -1e300 << 5e299 << 192;
    QTest::newRow("range overflows") << -huge << huge << 0.0 << 0;
    QTest::newRow("range overflows, top") << -huge << huge << huge << 0;
}

void tst_cBar::hugeLimitsStillMapValuesToTableEntries()
{
    QFETCH(double, zmin);
    QFETCH(double, zmax);
    QFETCH(double, value);
    QFETCH(int, entry);
    cBar bar;
    bar.zmin = zmin;
    bar.zmax = zmax;
    QVERIFY(isNear(bar.color(value), 0, entry, false));
}

void tst_cBar::entryOfAValueIsInterpolatedFromIminToImax_data()
{
    QTest::addColumn<double>("imin");
    QTest::addColumn<double>("imax");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("entry");
    QTest::newRow("upper line in the middle, low") << 0.0 << 512.0 << 0.25 << 128;
    QTest::newRow("upper line in the middle, last entry") << 0.0 << 512.0 << 0.499 << 255;
    QTest::newRow("upper line in the middle, above") << 0.0 << 512.0 << 0.501 << 255;
    QTest::newRow("upper line in the middle, top") << 0.0 << 512.0 << 1.0 << 255;
    QTest::newRow("lower line in the middle, bottom") << -256.0 << 256.0 << 0.0 << 0;
    QTest::newRow("lower line in the middle, below") << -256.0 << 256.0 << 0.499 << 0;
    QTest::newRow("lower line in the middle, high") << -256.0 << 256.0 << 0.75 << 128;
    QTest::newRow("part of the table, bottom") << 64.0 << 192.0 << 0.0 << 64;
    QTest::newRow("part of the table, top") << 64.0 << 192.0 << 1.0 << 192;
    QTest::newRow("part of the table, beyond") << 64.0 << 192.0 << 1.25 << 224;
}

void tst_cBar::entryOfAValueIsInterpolatedFromIminToImax()
{
    QFETCH(double, value);
    QFETCH(int, entry);
    cBar bar;
    bar.setCBarType(11);
    QFETCH(double, imin);
    QFETCH(double, imax);
    bar.imin = imin;
    bar.imax = imax;
    QCOMPARE(bar.color(value), entryOf(11, entry));
}

void tst_cBar::changedLimitsStayInAscendingOrder_data()
{
    QTest::addColumn<bool>("upper");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("zmin");
    QTest::addColumn<double>("zmax");
    QTest::newRow("maximum up") << true << 9.0 << 2.0 << 9.0;
    QTest::newRow("maximum down") << true << 3.0 << 2.0 << 3.0;
    QTest::newRow("maximum equal to the minimum") << true << 2.0 << 2.0 << 2.0;
    QTest::newRow("maximum below the minimum") << true << -1.0 << -1.0 << 2.0;
    QTest::newRow("minimum down") << false << -9.0 << -9.0 << 5.0;
    QTest::newRow("minimum up") << false << 3.0 << 3.0 << 5.0;
    QTest::newRow("minimum equal to the maximum") << false << 5.0 << 5.0 << 5.0;
    QTest::newRow("minimum above the maximum") << false << 8.0 << 5.0 << 8.0;
}

// The limits before the change are 2 and 5. Each change emits newScale() once.
void tst_cBar::changedLimitsStayInAscendingOrder()
{
    QFETCH(bool, upper);
    QFETCH(double, value);
    cBar bar;
    bar.zmin = 2.0;
    bar.zmax = 5.0;
    QSignalSpy spy(&bar, &cBar::newScale);
    if (upper) {
        bar.newZmax(value);
    } else {
        bar.newZmin(value);
    }
    QTEST(bar.zmin, "zmin");
    QTEST(bar.zmax, "zmax");
    QCOMPARE(spy.count(), 1);
}

void tst_cBar::checkOrderSwapsReversedLimits()
{
    cBar bar;
    bar.zmin = 4.0;
    bar.zmax = -4.0;
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.checkOrder();
    QCOMPARE(bar.zmin, -4.0);
    QCOMPARE(bar.zmax, 4.0);
    QCOMPARE(spy.count(), 1);
    bar.checkOrder();
    QCOMPARE(bar.zmin, -4.0);
    QCOMPARE(bar.zmax, 4.0);
}

void tst_cBar::setAutoScaleEmitsNewScale()
{
    cBar bar;
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.setAutoScale(false);
    QVERIFY(!bar.autoScale);
    QCOMPARE(spy.count(), 1);
    bar.setAutoScale(true);
    QVERIFY(bar.autoScale);
    bar.setAutoScale(true);
    QCOMPARE(spy.count(), 3);
}

void tst_cBar::inversionEmitsNoSignal()
{
    cBar bar;
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.setInvertCBar(true);
    QVERIFY(bar.invert);
    bar.setInvertCBar(false);
    QVERIFY(!bar.invert);
    QCOMPARE(spy.count(), 0);
}

void tst_cBar::pixelRowsShowTheColoursOfTheirValues_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("height");
    // The pixel rows of the two lines, calculated from percentages of the height.
    QTest::addColumn<int>("upper");
    QTest::addColumn<int>("lower");
    const QList<QPair<int, int>> lines{{0, 100},   {25, 100}, {0, 75},     {30, 60},
                                       {-40, 100}, {0, 170},  {-300, 900}, {45, 52}};
    for (const int type : {11, 8, 0}) {
        for (const int height : {100, 256, 300, 512, 700, 1000}) {
            for (const auto& [upper, lower] : lines) {
                QTest::addRow("table %d, height %d, lines at %d%% and %d%%", type, height, upper,
                              lower)
                    << type << height << upper * height / 100 << lower * height / 100;
            }
        }
    }
}

// Between the lines, pixel row y shows the entry
// imin + (imax - imin) * (height - y) / height. The tolerance is one entry. The drawn
// lines can be one pixel row away from the given rows, because their positions are
// truncated.
void tst_cBar::pixelRowsShowTheColoursOfTheirValues()
{
    QFETCH(int, type);
    QFETCH(int, height);
    QFETCH(int, upper);
    QFETCH(int, lower);
    cBar bar;
    bar.setCBarType(type);
    bar.resize(12, height);
    placeLines(bar, upper, lower);
    for (const bool invert : {false, true}) {
        bar.setInvertCBar(invert);
        const QImage image = bar.grab().toImage();
        QCOMPARE(image.height(), height);
        QVERIFY(std::abs(bar.maxLineY - std::clamp(upper, 0, height - 1)) <= 1);
        QVERIFY(std::abs(bar.minLineY - std::clamp(lower, 0, height - 1)) <= 1);
        for (int y = 0; y < height; ++y) {
            const double part = static_cast<double>(height - y) / height;
            const int i = static_cast<int>(bar.imin + part * (bar.imax - bar.imin));
            const auto isEntry = [&](const QColor& c) { return isNear(c, type, i, invert); };
            const bool fits = y == bar.maxLineY || y == bar.minLineY
                                  ? rowHasColor(image, y, bar.lineColor)
                              : y < bar.maxLineY ? rowHasColor(image, y, bar.aboveColor)
                              : y > bar.minLineY ? rowHasColor(image, y, bar.belowColor)
                                                 : rowHasColor(image, y, isEntry);
            QVERIFY2(fits, QByteArray::number(y));
            QVERIFY2(isEntry(bar.color(part)), QByteArray::number(y));
        }
    }
}

// The bar has 256 pixel rows for 256 entries, so no rounding occurs and entry i is at
// pixel row 256 - i.
void tst_cBar::eachEntryOfABarAsHighAsItsTableFillsOneRow()
{
    cBar bar;
    bar.setCBarType(11);
    bar.resize(30, 256);
    const QImage image = bar.grab().toImage();
    for (int y = 1; y < 255; ++y) {
        QVERIFY(rowHasColor(image, y, entryOf(11, 256 - y)));
    }
}

// Each entry covers three pixel rows: row 768 - 3 i and the two rows above it.
void tst_cBar::eachEntryOfATallBarFillsThreePixelRows()
{
    cBar bar;
    bar.setCBarType(11);
    bar.resize(30, 768);
    const QImage image = bar.grab().toImage();
    for (int i = 1; i < 255; ++i) {
        for (const int y : {768 - 3 * i, 768 - 3 * i - 1, 768 - 3 * i - 2}) {
            QVERIFY(rowHasColor(image, y, entryOf(11, i)));
        }
    }
}

void tst_cBar::pixelRowsOutsideTheLinesUseTheAboveAndBelowColours()
{
    cBar bar;
    bar.setCBarType(11);
    bar.resize(30, 256);
    bar.aboveColor = QColor(1, 2, 3);
    bar.belowColor = QColor(40, 50, 60);
    bar.lineColor = QColor(200, 0, 200);
    placeLines(bar, 64, 192); // 256 entries on 128 pixel rows: exactly two entries per row
    for (const bool invert : {false, true}) {
        bar.setInvertCBar(invert);
        const QImage image = bar.grab().toImage();
        QVERIFY(rowHasColor(image, 0, bar.aboveColor));
        QVERIFY(rowHasColor(image, 63, bar.aboveColor));
        QVERIFY(rowHasColor(image, 64, bar.lineColor));
        QVERIFY(rowHasColor(image, 65, entryOf(11, invert ? 1 : 254)));
        QVERIFY(rowHasColor(image, 128, entryOf(11, invert ? 127 : 128)));
        QVERIFY(rowHasColor(image, 191, entryOf(11, invert ? 253 : 2)));
        QVERIFY(rowHasColor(image, 192, bar.lineColor));
        QVERIFY(rowHasColor(image, 193, bar.belowColor));
        QVERIFY(rowHasColor(image, 255, bar.belowColor));
    }
}

void tst_cBar::linesAreClampedToTheBar_data()
{
    QTest::addColumn<int>("upper");
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("maxLineY");
    QTest::addColumn<int>("minLineY");
    QTest::newRow("at the ends") << 0 << 256 << 0 << 255;
    QTest::newRow("on the last row") << 128 << 256 << 128 << 255;
    QTest::newRow("inside") << 64 << 192 << 64 << 192;
    QTest::newRow("above the bar") << -256 << 256 << 0 << 255;
    QTest::newRow("below the bar") << 0 << 512 << 0 << 255;
    QTest::newRow("both lines above the bar") << -512 << -256 << 0 << 0;
    QTest::newRow("both lines below the bar") << 512 << 1024 << 255 << 255;
    QTest::newRow("crossed lines") << 192 << 64 << 192 << 64;
}

// The pixel rows are calculated without rounding errors, because the distances between
// the lines are powers of two. So no tolerance is needed.
void tst_cBar::linesAreClampedToTheBar()
{
    QFETCH(int, upper);
    QFETCH(int, lower);
    cBar bar;
    bar.setCBarType(11);
    bar.resize(30, 256);
    placeLines(bar, upper, lower);
    const QImage image = bar.grab().toImage();
    QTEST(bar.maxLineY, "maxLineY");
    QTEST(bar.minLineY, "minLineY");
    QVERIFY(rowHasColor(image, bar.maxLineY, bar.lineColor));
    QVERIFY(rowHasColor(image, bar.minLineY, bar.lineColor));
}

void tst_cBar::linesOfTinyBarsStayInOrder()
{
    cBar bar;
    for (const QSize size : {QSize(1, 1), QSize(1, 2), QSize(5, 1), QSize(1, 5), QSize(0, 0)}) {
        bar.resize(size);
        for (const int type : {0, 5, 10}) {
            bar.setCBarType(type);
            bar.grab();
            QVERIFY(bar.maxLineY >= 0 && bar.maxLineY < qMax(1, bar.height()));
            QVERIFY(bar.minLineY >= bar.maxLineY);
        }
    }
}

void tst_cBar::extremeLinePositionsCauseNoInvalidConversions_data()
{
    QTest::addColumn<double>("imin");
    QTest::addColumn<double>("imax");
    QTest::newRow("far outside the table") << -1e12 << 1e12;
    QTest::newRow("beyond the range of int") << -1e300 << 1e300;
    QTest::newRow("nearly no range") << 3.0 << 3.0000001;
    QTest::newRow("no range") << 3.0 << 3.0;
    QTest::newRow("not finite") << -infinite << notANumber;
}

// The picture is not checked. The sanitizers report invalid conversions and accesses.
void tst_cBar::extremeLinePositionsCauseNoInvalidConversions()
{
    QFETCH(double, imin);
    QFETCH(double, imax);
    cBar bar;
    bar.imin = imin;
    bar.imax = imax;
    QCOMPARE(bar.grab().toImage().isNull(), false);
    bar.color(0.5);
    bar.color(1e300);
}

void tst_cBar::pressNearALineSelectsIt_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("handle");
    QTest::newRow("on the upper line") << 64 << 0;
    QTest::newRow("nine rows above the upper line") << 55 << 0;
    QTest::newRow("ten rows above the upper line") << 54 << 2;
    QTest::newRow("nine rows below the upper line") << 73 << 0;
    QTest::newRow("ten rows below the upper line") << 74 << 2;
    QTest::newRow("between the lines") << 128 << 2;
    QTest::newRow("on the lower line") << 192 << 1;
    QTest::newRow("nine rows above the lower line") << 183 << 1;
    QTest::newRow("ten rows above the lower line") << 182 << 2;
    QTest::newRow("nine rows below the lower line") << 201 << 1;
    QTest::newRow("ten rows below the lower line") << 202 << 2;
}

void tst_cBar::pressNearALineSelectsIt()
{
    QFETCH(int, y);
    VisibleBar bar;
    QVERIFY(bar.isReady());
    placeLines(bar, 64, 192);
    bar.repaint();
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.press(y);
    QTEST(bar.dragHandle, "handle");
    bar.release(y);
    QTEST(bar.dragHandle, "handle");
    QCOMPARE(spy.count(), 0);
}

void tst_cBar::lowerLineIsSelectedIfBothLinesAreNear_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("handle");
    QTest::newRow("only the upper line is near") << 119 << 0;
    QTest::newRow("both lines near, between them") << 129 << 1;
    QTest::newRow("both lines near, on the upper line") << 128 << 1;
    QTest::newRow("both lines near, nine rows above the lower line") << 127 << 1;
    QTest::newRow("ten rows above the lower line") << 126 << 0;
    QTest::newRow("only the lower line is near") << 138 << 1;
}

// The lines are at the pixel rows 128 and 136. A line is near if it is less than 10
// pixel rows away.
void tst_cBar::lowerLineIsSelectedIfBothLinesAreNear()
{
    QFETCH(int, y);
    VisibleBar bar;
    QVERIFY(bar.isReady());
    placeLines(bar, 128, 136);
    bar.repaint();
    bar.press(y);
    QTEST(bar.dragHandle, "handle");
    bar.release(y);
}

void tst_cBar::pressPositionIsRounded()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    const auto pressAt = [&](double y) {
        bar.send(QEvent::MouseButtonPress, {20, y}, Qt::LeftButton, Qt::LeftButton);
        bar.send(QEvent::MouseButtonRelease, {20, y}, Qt::LeftButton, Qt::NoButton);
    };
    pressAt(9.5); // rounded to row 10, which is too far from the upper line at row 0
    QCOMPARE(bar.dragHandle, 2);
    pressAt(9.4);
    QCOMPARE(bar.dragHandle, 0);
    pressAt(246.4); // rounded to row 246, which is too far from the lower line at row 256
    QCOMPARE(bar.dragHandle, 0);
    pressAt(246.5);
    QCOMPARE(bar.dragHandle, 1);
}

void tst_cBar::leftMiddleAndRightButtonsDragLines()
{
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
        VisibleBar bar;
        QVERIFY(bar.isReady());
        bar.drag(3, 128, button);
        QCOMPARE(bar.dragHandle, 0);
        QCOMPARE(bar.imax, 512.0);
        QCOMPARE(bar.imin, 0.0);
    }
}

// The upper line moves from pixel row 0 to 128. The 256 table entries now fill the rows
// between the lines: 256 / (128 - 256) = -2 entries per row, negative because entries
// grow upward while pixel rows grow downward. The lower line stays at row 256 at entry
// 0. The top of the bar, 256 rows above this line, is at entry 2 * 256 = 512, which is
// imax.
void tst_cBar::draggingTheUpperLineRaisesImax()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    QSignalSpy spy(&bar, &cBar::newScale);
    tests::PaintCounter paints(&bar);
    paints.restart();
    bar.press(5);
    QCOMPARE(spy.count(), 0);
    paints.restart();
    bar.move(128);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(paints.within(), 1);
    bar.release(128);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(bar.imax, 512.0);
    QCOMPARE(bar.imin, 0.0);
    QCOMPARE(bar.maxIdx, 256);
    QCOMPARE(bar.minIdx, 0);
    QCOMPARE(bar.zmax, 1.0);
    QCOMPARE(bar.zmin, 0.0);
    QCOMPARE(bar.maxLineY, 128);
    QCOMPARE(bar.minLineY, 255);
    // imax is twice the length of the table, so values above the middle of the range
    // are beyond the last entry and have its colour.
    QCOMPARE(bar.color(1.0), entryOf(11, 255));
    QCOMPARE(bar.color(0.55), entryOf(11, 255));
    QCOMPARE(bar.color(0.25), entryOf(11, 128));
    QVERIFY(rowHasColor(bar.grab().toImage(), 100, bar.aboveColor));
}

// The lower line moves from pixel row 256 to 128. The 256 table entries now fill the
// rows between the lines: 256 / (0 - 128) = -2 entries per row. The lower line is at
// entry 0, so the bottom of the bar, 128 rows below it, is at entry -2 * 128 = -256,
// which is imin.
void tst_cBar::draggingTheLowerLineLowersImin()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.drag(250, 128);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(bar.dragHandle, 1);
    QCOMPARE(bar.imax, 256.0);
    QCOMPARE(bar.imin, -256.0);
    QCOMPARE(bar.maxLineY, 0);
    QCOMPARE(bar.minLineY, 128);
    QCOMPARE(bar.color(0.0), entryOf(11, 0));
    QCOMPARE(bar.color(0.45), entryOf(11, 0));
    QCOMPARE(bar.color(0.75), entryOf(11, 128));
    QVERIFY(rowHasColor(bar.grab().toImage(), 150, bar.belowColor));
}

// The lines move to the pixel rows 128 and 192: 256 / (128 - 192) = -4 entries per row.
// The lower line, at entry 0, is 192 rows below the top of the bar, so
// imax = 4 * 192 = 768. The line is 64 rows above the bottom, so imin = -4 * 64 = -256.
void tst_cBar::draggingBothLinesSetsImaxAndImin()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    bar.drag(9, 128);
    bar.drag(247, 192);
    QCOMPARE(bar.imax, 768.0);
    QCOMPARE(bar.imin, -256.0);
    QCOMPARE(bar.maxLineY, 128);
    QCOMPARE(bar.minLineY, 192);
    // Then the upper line is dragged to row -64, above the bar: 256 / (-64 - 192) = -1
    // entry per row. So imax = 192 and imin = -64, and the upper line is drawn in row
    // 0, the first row of the bar.
    bar.drag(120, -64);
    QCOMPARE(bar.imax, 192.0);
    QCOMPARE(bar.imin, -64.0);
    QCOMPARE(bar.maxLineY, 0);
    QCOMPARE(bar.minLineY, 192);
}

void tst_cBar::scaleAfterADragDependsOnlyOnItsLastPosition()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.press(2);
    for (const int y : {20, 77, 191, -33, 255, 64}) {
        bar.move(y);
    }
    bar.move(192);
    bar.release(192);
    QCOMPARE(spy.count(), 7);
    // Only the last position, row 192, counts: 256 / (192 - 256) = -4 entries per row.
    // The top of the bar is 256 rows above the lower line, so imax = 4 * 256 = 1024.
    QCOMPARE(bar.imax, 1024.0);
    QCOMPARE(bar.imin, 0.0);
}

void tst_cBar::pressAwayFromTheLinesKeepsTheSelection_data()
{
    QTest::addColumn<int>("selectAt");
    QTest::addColumn<int>("handle");
    QTest::addColumn<double>("imin");
    QTest::addColumn<double>("imax");
    // The selected line is moved to row 128. With the upper line there are
    // 256 / (128 - 256) = -2 entries per row, with the lower line 256 / (0 - 128) = -2.
    QTest::newRow("upper line") << 4 << 0 << 0.0 << 512.0;
    QTest::newRow("lower line") << 252 << 1 << -256.0 << 256.0;
}

void tst_cBar::pressAwayFromTheLinesKeepsTheSelection()
{
    QFETCH(int, selectAt);
    QFETCH(int, handle);
    VisibleBar bar;
    QVERIFY(bar.isReady());
    bar.press(selectAt);
    bar.release(selectAt);
    QCOMPARE(bar.dragHandle, handle);
    bar.press(100); // too far from both lines
    QCOMPARE(bar.dragHandle, handle);
    bar.move(128);
    bar.release(128);
    QCOMPARE(bar.dragHandle, handle);
    QTEST(bar.imin, "imin");
    QTEST(bar.imax, "imax");
}

void tst_cBar::dragWithoutASelectedLineEmitsAnUnchangedScale()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.drag(100, 150);
    QCOMPARE(bar.dragHandle, 2);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(bar.imax, 256.0);
    QCOMPARE(bar.imin, 0.0);
}

void tst_cBar::draggingALineOntoTheOtherKeepsTheScale()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    bar.drag(254, 128);
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.press(3);
    tests::PaintCounter paints(&bar);
    paints.restart();
    bar.move(128);
    QCOMPARE(paints.within(), 1);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar.imax, 256.0);
    QCOMPARE(bar.imin, -256.0);
    bar.release(128);
    bar.press(128);
    QCOMPARE(bar.dragHandle, 1);
    bar.move(0);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar.imax, 256.0);
    QCOMPARE(bar.imin, -256.0);
    bar.release(0);
}

// The upper line is dragged to pixel row 192, the lower line to row 128:
// 256 / (192 - 128) = 4 entries per row. The number is positive, so the colours are in
// reverse order. The lower line, at entry 0, is 128 rows from the top and the bottom of
// the bar, so imax = -512 and imin = 512.
void tst_cBar::crossedLinesReverseTheColours()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    bar.drag(254, 128);
    bar.drag(3, 192);
    QCOMPARE(bar.imax, -512.0);
    QCOMPARE(bar.imin, 512.0);
    QCOMPARE(bar.maxLineY, 192);
    QCOMPARE(bar.minLineY, 128);
    QCOMPARE(bar.color(0.0), entryOf(11, 255));
    QCOMPARE(bar.color(0.375), entryOf(11, 128));
    QCOMPARE(bar.color(1.0), entryOf(11, 0));
}

void tst_cBar::moveWithoutButtonOnlyRepaints()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    bar.drag(3, 128);
    bar.setMouseTracking(true); // otherwise Qt sends no events for moves without a button
    QSignalSpy spy(&bar, &cBar::newScale);
    tests::PaintCounter paints(&bar);
    paints.restart();
    bar.send(QEvent::MouseMove, {20, 30}, Qt::NoButton, Qt::NoButton);
    QCOMPARE(paints.within(), 1);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar.imax, 512.0);
    QCOMPARE(bar.imin, 0.0);
    QCOMPARE(bar.mouse.now, QPoint(20, 30));
}

void tst_cBar::releaseOnlyRepaints()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.press(3);
    tests::PaintCounter paints(&bar);
    paints.restart();
    bar.release(90);
    QCOMPARE(paints.within(), 1);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar.imax, 256.0);
}

// The full event sequence is press, release, double click, release.
void tst_cBar::doubleClickResetsTheLinesWithoutSignal()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    bar.drag(3, 128);
    bar.drag(254, 192);
    QVERIFY(bar.imax != 256.0 && bar.imin != 0.0);
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.press(220);
    bar.release(220);
    tests::PaintCounter paints(&bar);
    paints.restart();
    QTest::mouseDClick(&bar, Qt::LeftButton, {}, {20, 220});
    QCOMPARE(paints.within(), 1);
    QCOMPARE(bar.imax, 256.0);
    QCOMPARE(bar.imin, 0.0);
    QCOMPARE(bar.maxLineY, 0);
    QCOMPARE(bar.minLineY, 255);
    bar.release(220);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar.mouse.dClickPos, QPoint(20, 220));
}

void tst_cBar::doubleClickStartsNoDrag()
{
    VisibleBar bar;
    QVERIFY(bar.isReady());
    QSignalSpy spy(&bar, &cBar::newScale);
    bar.send(QEvent::MouseButtonDblClick, {20, 3}, Qt::RightButton, Qt::RightButton);
    QVERIFY(!bar.mouse.pressed);
    QCOMPARE(bar.dragHandle, 2);
    bar.send(QEvent::MouseMove, {20, 128}, Qt::NoButton, Qt::RightButton);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar.imax, 256.0);
}

QTEST_MAIN(tst_cBar)
#include "tst_cBar.moc"
