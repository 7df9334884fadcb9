// Tests of PixelSet: insertion, dilation, runs and fill.
#include "display/PixelSet.h"

#include "support/PictureTools.h"

#include <QPainter>
#include <QTest>

#include <random>
#include <set>

using namespace tests;
using display::PixelSet;

namespace
{

const QRect area(-3, -5, 150, 20);

using Pixels = std::set<std::pair<int, int>>; // (y, x) of each pixel

Pixels pixelsOf(const PixelSet& set)
{
    Pixels pixels;
    set.forEachRun([&](int x, int y, int length) {
        for (int i = 0; i < length; ++i) {
            pixels.insert({y, x + i});
        }
    });
    return pixels;
}

/// Random pixels of the area; each pixel is included with probability 1 / @p oneIn.
Pixels randomPixels(unsigned oneIn)
{
    std::mt19937 random(oneIn);
    Pixels pixels;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (random() % oneIn == 0) {
                pixels.insert({y, x});
            }
        }
    }
    return pixels;
}

PixelSet setOf(const Pixels& pixels)
{
    PixelSet set(area);
    for (const auto& [y, x] : pixels) {
        set.insert({x, y});
    }
    return set;
}

} // namespace

class tst_PixelSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newSetIsEmpty();
    void insertReturnsTrueOncePerPixel();
    void insertRowReturnsTheNewPixels_data();
    void insertRowReturnsTheNewPixels();
    void runsContainExactlyTheInsertedPixels_data();
    void runsContainExactlyTheInsertedPixels();
    void fullPixelRowIsASingleRun();
    void dilationAppliesTheStampToEachPixel_data();
    void dilationAppliesTheStampToEachPixel();
    void fillDrawsExactlyThePixelsOfTheSet();
    void fillKeepsThePenAndBrushOfThePainter();
};

void tst_PixelSet::newSetIsEmpty()
{
    QVERIFY(pixelsOf(PixelSet(area)).empty());
    QVERIFY(pixelsOf(PixelSet(QRect())).empty());
}

void tst_PixelSet::insertReturnsTrueOncePerPixel()
{
    PixelSet set(area);
    for (const QPoint& at : {area.topLeft(), area.bottomRight(), QPoint(60, 0), QPoint(61, 0)}) {
        QVERIFY(set.insert(at));
        QVERIFY(!set.insert(at));
    }
    QCOMPARE(pixelsOf(set).size(), std::size_t{4});
}

void tst_PixelSet::insertRowReturnsTheNewPixels_data()
{
    QTest::addColumn<int>("x");
    QTest::newRow("first word") << area.left();
    QTest::newRow("across a word boundary") << area.left() + 59;
    QTest::newRow("last pixel of a word") << area.left() + 63;
    QTest::newRow("second word") << area.left() + 64;
    QTest::newRow("at the right edge") << area.right() - 8;
}

void tst_PixelSet::insertRowReturnsTheNewPixels()
{
    QFETCH(int, x);
    PixelSet set(area);
    QCOMPARE(set.insertRow({x, 2}, 0b100010001u), std::uint64_t{0b100010001});
    QCOMPARE(set.insertRow({x, 2}, 0b101010001u), std::uint64_t{0b001000000});
    QCOMPARE(set.insertRow({x, 2}, 0b101010001u), std::uint64_t{0});
    QCOMPARE(pixelsOf(set), (Pixels{{2, x}, {2, x + 4}, {2, x + 6}, {2, x + 8}}));
}

void tst_PixelSet::runsContainExactlyTheInsertedPixels_data()
{
    QTest::addColumn<unsigned>("oneIn");
    QTest::newRow("every pixel") << 1u;
    QTest::newRow("one in 2") << 2u;
    QTest::newRow("one in 100") << 100u;
}

void tst_PixelSet::runsContainExactlyTheInsertedPixels()
{
    QFETCH(unsigned, oneIn);
    const Pixels pixels = randomPixels(oneIn);
    QCOMPARE(pixelsOf(setOf(pixels)), pixels);
}

void tst_PixelSet::fullPixelRowIsASingleRun()
{
    QList<QRect> runs;
    setOf(randomPixels(1)).forEachRun([&](int x, int y, int length) {
        runs.append({x, y, length, 1});
    });
    QCOMPARE(runs.size(), area.height());
    QCOMPARE(runs.first(), QRect(area.left(), area.top(), area.width(), 1));
    QCOMPARE(runs.last(), QRect(area.left(), area.bottom(), area.width(), 1));
}

void tst_PixelSet::dilationAppliesTheStampToEachPixel_data()
{
    QTest::addColumn<unsigned>("oneIn");
    QTest::newRow("every pixel") << 1u;
    QTest::newRow("one in 20") << 20u;
    QTest::newRow("one in 300") << 300u;
}

void tst_PixelSet::dilationAppliesTheStampToEachPixel()
{
    QFETCH(unsigned, oneIn);
    const std::vector<std::uint64_t> stamp{0b00100, 0, 0b10001, 0b01000, 0b00001};
    const Pixels pixels = randomPixels(oneIn);
    Pixels expected;
    for (const auto& [y, x] : pixels) {
        for (int row = 0; row < 5; ++row) {
            for (int column = 0; column < 5; ++column) {
                if (stamp.at(static_cast<std::size_t>(row)) >> column & 1) {
                    expected.insert({y + row - 2, x + column - 2});
                }
            }
        }
    }
    QCOMPARE(pixelsOf(setOf(pixels).dilated(stamp)), expected);
}

void tst_PixelSet::fillDrawsExactlyThePixelsOfTheSet()
{
    const Pixels pixels = randomPixels(3);
    QImage image = whitePicture({200, 40});
    QImage expected = image;
    QPainter p(&image);
    p.translate(10, 12);
    setOf(pixels).fill(&p, Qt::blue);
    p.end();
    for (const auto& [y, x] : pixels) {
        expected.setPixelColor(x + 10, y + 12, Qt::blue);
    }
    QVERIFY(isSamePicture(image, expected));
}

void tst_PixelSet::fillKeepsThePenAndBrushOfThePainter()
{
    QImage image = whitePicture({200, 40});
    QPainter p(&image);
    const QPen pen(Qt::green, 3, Qt::DashLine);
    p.setPen(pen);
    p.setBrush(Qt::red);
    setOf(randomPixels(3)).fill(&p, Qt::blue);
    QCOMPARE(p.pen(), pen);
    QCOMPARE(p.brush(), QBrush(Qt::red));
}

QTEST_APPLESS_MAIN(tst_PixelSet)
#include "tst_PixelSet.moc"
