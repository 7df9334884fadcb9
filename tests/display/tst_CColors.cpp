// Tests of CColors, a list of drawing colours that is extended with derived colours.
#include "display/CColors.h"

#include <QTest>

namespace
{

QList<QColor> colorsOf(const QList<int>& reds)
{
    QList<QColor> colors;
    for (const int red : reds) {
        colors.append(QColor(red, 0, 0));
    }
    return colors;
}

} // namespace

class tst_CColors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void baseListContainsFifteenColoursThreeTimes_data();
    void baseListContainsFifteenColoursThreeTimes();
    void listGrowsToTheRequestedSizeButDoesNotShrink();
    void newColourIsDerivedFromAColourAndItsNeighbour();
    void brightDerivedColoursAreDarkened();
    void extensionRepeatsOnTheGrownListUntilTheRequestedSize();
    void baseListIsExtendedWithDerivedColours();
    void derivedColoursAreOpaque();
};

void tst_CColors::baseListContainsFifteenColoursThreeTimes_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QColor>("color");
    const QList<QColor> once{QColor(0, 0, 0),       QColor(255, 0, 0),     QColor(0, 0, 255),
                             QColor(120, 220, 120), QColor(200, 200, 0),   QColor(240, 0, 240),
                             QColor(0, 240, 240),   QColor(160, 0, 0),     QColor(0, 160, 0),
                             QColor(0, 0, 160),     QColor(255, 160, 160), QColor(160, 160, 160),
                             QColor(120, 220, 120), QColor(160, 160, 255), QColor(240, 160, 0)};
    for (int i = 0; i < 15; ++i) {
        QTest::addRow("colour %d", i) << i << once.at(i);
    }
}

void tst_CColors::baseListContainsFifteenColoursThreeTimes()
{
    QFETCH(int, index);
    QFETCH(QColor, color);
    const CColors colors;
    QCOMPARE(colors.colors.at(index), color);
    QCOMPARE(colors.colors.at(15 + index), color);
    QCOMPARE(colors.colors.at(30 + index), color);
}

void tst_CColors::listGrowsToTheRequestedSizeButDoesNotShrink()
{
    QCOMPARE(CColors().colors.size(), 45);
    for (const int requested : {-7, 0, 45}) {
        QCOMPARE(CColors(requested).colors.size(), 45);
    }
    QCOMPARE(CColors(47).colors.size(), 47);
    const QList<QColor> two{QColor(1, 2, 3), QColor(3, 2, 1)};
    QCOMPARE(CColors(two, 1).colors.size(), 2);
    QCOMPARE(CColors(two, 3).colors.size(), 3);
    QVERIFY(CColors({}, 5).colors.isEmpty());
    QVERIFY(CColors({}, -1).colors.isEmpty());
}

void tst_CColors::newColourIsDerivedFromAColourAndItsNeighbour()
{
    // Each new colour derives from a colour and its neighbour, the next colour in the
    // list, channel by channel. Here the colour is (100, 10, 7) and its neighbour is
    // (40, 20, 7). Red falls, so the new red is (40 + 2 * 100) / 3 = 80. Green rises,
    // so the new green is the neighbour's, 20. Blue is equal, so it is kept. The
    // neighbour of the last colour is the first colour.
    const CColors colors({QColor(100, 10, 7), QColor(40, 20, 7)}, 4);
    QCOMPARE(colors.colors.at(2), QColor(80, 20, 7));
    QCOMPARE(colors.colors.at(3), QColor(100, (10 + 40) / 3, 7));
}

void tst_CColors::brightDerivedColoursAreDarkened()
{
    // A derived colour is darkened if the sum of its channels is above 500:
    // 201 + 181 + 121 = 503 is, 200 + 180 + 120 = 500 is not. Darkening multiplies red
    // by 0.8, green by 0.6 and blue by 0.8. The products 160.8, 108.6 and 96.8 are
    // truncated.
    const CColors bright({QColor(201, 181, 121)}, 2);
    QCOMPARE(bright.colors.at(1), QColor(160, 108, 96));
    const CColors dark({QColor(200, 180, 120)}, 2);
    QCOMPARE(dark.colors.at(1), QColor(200, 180, 120));
    // Only the sum of the channels matters, not a single bright channel: (255, 245, 0)
    // with the sum 500 is kept, (255, 245, 1) with the sum 501 is darkened. The
    // products are 255 * 0.8 = 204, 245 * 0.6 = 147 and 1 * 0.8 = 0.8, which is
    // truncated to 0.
    QCOMPARE(CColors({QColor(255, 245, 0)}, 2).colors.at(1), QColor(255, 245, 0));
    QCOMPARE(CColors({QColor(255, 245, 1)}, 2).colors.at(1), QColor(204, 147, 0));
}

void tst_CColors::extensionRepeatsOnTheGrownListUntilTheRequestedSize()
{
    const auto grown = [](const QList<int>& reds, int requested) {
        return CColors(colorsOf(reds), requested).colors;
    };
    // If the neighbour's red b is lower than the red a, the new red is (b + 2 a) / 3;
    // otherwise it is b. So the first round derives 70 and 90 from 90 and 30. The
    // second round derives 70, 70, 90 and, after wrapping around, 90 from the grown
    // list 90, 30, 70 and 90.
    QCOMPARE(grown({90, 30}, 8), colorsOf({90, 30, 70, 90, 70, 70, 90, 90}));
    // Reds 30, 60 and 90 rise, so the new reds are 60 and 90. No third colour is added,
    // because five colours were requested.
    QCOMPARE(grown({30, 60, 90}, 5), colorsOf({30, 60, 90, 60, 90}));
}

// Colours 0, 1, 2 and 44 of the base list are black, red, blue and (240, 160, 0).
void tst_CColors::baseListIsExtendedWithDerivedColours()
{
    const CColors colors(91);
    QCOMPARE(colors.colors.size(), 91);
    QCOMPARE(colors.colors.at(45), QColor(255, 0, 0));
    QCOMPARE(colors.colors.at(46), QColor(510 / 3, 0, 255));
    // Colour 48 derives from colours 3 and 4, which are (120, 220, 120) and
    // (200, 200, 0). Red rises to 200. Green and blue fall, so they are
    // (200 + 2 * 220) / 3 = 213 and (0 + 2 * 120) / 3 = 80.
    QCOMPARE(colors.colors.at(48), QColor(200, 213, 80));
    // The first round ends by wrapping around: colour 44 is combined with black.
    QCOMPARE(colors.colors.at(89), QColor(480 / 3, 320 / 3, 0));
    // The second round starts again with colours 0 and 1.
    QCOMPARE(colors.colors.at(90), QColor(255, 0, 0));
}

void tst_CColors::derivedColoursAreOpaque()
{
    const CColors colors({QColor(10, 20, 30, 40)}, 2);
    QCOMPARE(colors.colors.at(0), QColor(10, 20, 30, 40));
    QCOMPARE(colors.colors.at(1), QColor(10, 20, 30));
}

QTEST_APPLESS_MAIN(tst_CColors)
#include "tst_CColors.moc"
