// Tests of MarkPlaces, the conversion of data points to the pixels of their marks.
#include "display/MarkPlaces.h"

#include "display/Pixels.h"
#include "display/PointMarks.h"
#include "support/ExtremeNumbers.h"
#include "support/PlotSurface.h"

#include <QTest>

#include <random>

using namespace tests;

class tst_MarkPlaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placeIsTheTruncatedPixelPositionNearTheWidget_data();
    void placeIsTheTruncatedPixelPositionNearTheWidget();
    void areaContainsTheOutermostPlaces();
    void extremeRangesYieldOnlyPlacesInsideTheArea_data() { addExtremeNumbers(); }
    void extremeRangesYieldOnlyPlacesInsideTheArea();
};

void tst_MarkPlaces::placeIsTheTruncatedPixelPositionNearTheWidget_data()
{
    QTest::addColumn<double>("x0");
    QTest::addColumn<double>("y0");
    QTest::addColumn<double>("x1");
    QTest::addColumn<double>("y1");
    QTest::newRow("usual range") << 10.0 << -1.0 << 27.0 << 4.0;
    QTest::newRow("range limits in thirds") << 1.0 / 3.0 << 2.0 / 3.0 << 7.0 / 3.0 << 8.0 / 3.0;
    QTest::newRow("reversed range") << 3.7 << 4.1 << 2.2 << 0.3;
    QTest::newRow("narrow range") << 2.5 << 1.1 << 2.5000001 << 1.1000003;
    QTest::newRow("wide range") << -1e9 << -1e12 << 3e9 << 2e12;
}

// Random pixel positions on and around the widget are converted to data values.
// MarkPlaces must convert these values to the truncated pixel positions of ChCoord, or to no
// place if the position is 3 pixels or more outside the widget.
void tst_MarkPlaces::placeIsTheTruncatedPixelPositionNearTheWidget()
{
    QFETCH(double, x0);
    QFETCH(double, y0);
    QFETCH(double, x1);
    QFETCH(double, y1);
    const PlotSurface cc(x0, y0, x1, y1);
    const display::MarkPlaces places(cc);
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> column(-10.0, 410.0);
    std::uniform_real_distribution<double> row(-10.0, 310.0);
    for (int i = 0; i < 20000; ++i) {
        const double x = cc.s2rX(i % 2 == 0 ? column(random) : std::floor(column(random)));
        const double y = cc.s2rY(i % 2 == 0 ? row(random) : std::floor(row(random)));
        const double atX = cc.r2sX(x);
        const double atY = cc.r2sY(y);
        const bool shows = atX > -3.0 && atX < 403.0 && atY > -3.0 && atY < 303.0;
        const auto place = places.at(x, y);
        QCOMPARE(place.has_value(), shows);
        QCOMPARE(display::markPlace(cc, x, y), place);
        if (place) {
            QCOMPARE(*place, QPoint(display::truncated(atX), display::truncated(atY)));
            QVERIFY(places.area().contains(*place));
        }
    }
}

void tst_MarkPlaces::areaContainsTheOutermostPlaces()
{
    const PlotSurface cc;
    const QRect area = display::MarkPlaces(cc).area();
    for (const QPoint& corner :
         {QPoint(-3, -3), QPoint(402, -3), QPoint(-3, 302), QPoint(402, 302)}) {
        QVERIFY(area.contains(corner));
    }
}

void tst_MarkPlaces::extremeRangesYieldOnlyPlacesInsideTheArea()
{
    QFETCH(double, number);
    for (int field = 0; field < 4; ++field) {
        PlotSurface cc;
        *QList<double*>{&cc.realX0, &cc.realX1, &cc.realY0, &cc.realY1}.at(field) = number;
        const display::MarkPlaces places(cc);
        for (const double x : {number, 0.0, 15.0, -number}) {
            for (const double y : {number, 0.0, 2.0, -number}) {
                const auto place = places.at(x, y);
                QVERIFY(!place || places.area().contains(*place));
            }
        }
    }
}

QTEST_MAIN(tst_MarkPlaces)
#include "tst_MarkPlaces.moc"
