// Tests of LayeredMarks, the fast path for drawing overlapping marks of several colours.
#include "display/LayeredMarks.h"

#include "display/MarkPlaces.h"
#include "support/MarkPainters.h"
#include "support/PlainStrokes.h"
#include "support/PlotSurface.h"

#include <QTest>

#include <random>

using namespace tests;

namespace
{

const QList<QColor> inks{Qt::blue, QColor(0, 160, 0), Qt::black, QColor(240, 0, 240)};

struct Mark {
    QPoint place;
    qsizetype layer = 0;
};

/// Random marks on @p part of the surface, in the order in which they are drawn.
QList<Mark> randomMarks(int count, const QRect& part)
{
    std::mt19937 random(static_cast<unsigned>(count));
    const auto below = [&random](int end) {
        return static_cast<int>(random() % static_cast<unsigned>(end));
    };
    QList<Mark> marks;
    for (int i = 0; i < count; ++i) {
        const int x = part.left() + below(part.width());
        const int y = part.top() + below(part.height());
        marks.append({{x, y}, below(static_cast<int>(inks.size()))});
    }
    return marks;
}

QImage layered(const QList<Mark>& marks, const PainterState& state)
{
    QImage image = whiteSurface();
    QPainter p(&image);
    state(&p);
    const auto stamp = display::LayeredMarks::stampOf(p, inks);
    if (!stamp) {
        return {};
    }
    display::LayeredMarks layers(*stamp, display::MarkPlaces(PlotSurface()), inks);
    for (auto mark = marks.crbegin(); mark != marks.crend(); ++mark) {
        layers.addBelow(mark->place, mark->layer);
    }
    layers.draw(&p);
    return image;
}

QImage oneByOne(const QList<Mark>& marks, const PainterState& state)
{
    QImage image = whiteSurface();
    QPainter p(&image);
    state(&p);
    for (const Mark& mark : marks) {
        p.setPen(inks.at(mark.layer));
        plainCircle(&p, mark.place, 1);
        plainCircle(&p, mark.place, 2);
    }
    return image;
}

const auto unchanged = [](QPainter*) {};

} // namespace

class tst_LayeredMarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void laterMarkCoversEarlierMark();
    void laterMarkAtTheSamePixelReplacesEarlierMarks();
    void fastPathMatchesMarkByMarkDrawing_data();
    void fastPathMatchesMarkByMarkDrawing();
    void drawingOrderIsKeptWithTranslatedOrClippedPainters_data();
    void drawingOrderIsKeptWithTranslatedOrClippedPainters();
    void listWithATranslucentColorHasNoStamp();
    void emptyColorListHasNoStamp();
    void scaledPainterHasNoStamp();
};

// The two marks have radius 2 and are at (100, 80) and (101, 80). Both cover the pixel
// (101, 78), which must show the later mark.
void tst_LayeredMarks::laterMarkCoversEarlierMark()
{
    const QList<Mark> marks{{{100, 80}, 0}, {{101, 80}, 1}};
    const QImage image = layered(marks, unchanged);
    QVERIFY(isSamePicture(image, oneByOne(marks, unchanged)));
    QCOMPARE(image.pixelColor(101, 78), inks.at(1));
    QCOMPARE(image.pixelColor(98, 80), inks.at(0));
    const QImage reversed = layered({marks.at(1), marks.at(0)}, unchanged);
    QCOMPARE(reversed.pixelColor(101, 78), inks.at(0));
}

void tst_LayeredMarks::laterMarkAtTheSamePixelReplacesEarlierMarks()
{
    const QImage image = layered({{{100, 80}, 0}, {{100, 80}, 2}, {{100, 80}, 1}}, unchanged);
    QVERIFY(isSamePicture(image, oneByOne({{{100, 80}, 1}}, unchanged)));
}

void tst_LayeredMarks::fastPathMatchesMarkByMarkDrawing_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QRect>("part");
    const QRect all(-3, -3, 406, 306);
    QTest::newRow("no marks") << 0 << all;
    QTest::newRow("50 marks") << 50 << all;
    QTest::newRow("4000 marks") << 4000 << all;
    QTest::newRow("4000 overlapping marks") << 4000 << QRect(60, 50, 70, 9);
    QTest::newRow("48000 overlapping marks") << 48000 << QRect(100, 30, 200, 200);
    QTest::newRow("at the left edge") << 600 << QRect(-3, 0, 8, 300);
    QTest::newRow("at the right edge") << 600 << QRect(395, 0, 8, 300);
    QTest::newRow("at the upper edge") << 600 << QRect(0, -3, 400, 8);
    QTest::newRow("at the lower edge") << 600 << QRect(0, 295, 400, 8);
}

void tst_LayeredMarks::fastPathMatchesMarkByMarkDrawing()
{
    QFETCH(int, count);
    QFETCH(QRect, part);
    const QList<Mark> marks = randomMarks(count, part);
    QVERIFY(isSamePicture(layered(marks, unchanged), oneByOne(marks, unchanged)));
}

void tst_LayeredMarks::drawingOrderIsKeptWithTranslatedOrClippedPainters_data()
{
    addPainterStates(true);
}

void tst_LayeredMarks::drawingOrderIsKeptWithTranslatedOrClippedPainters()
{
    QFETCH(PainterState, state);
    const QList<Mark> marks = randomMarks(4000, {0, 0, 150, 120});
    QVERIFY(isSamePicture(layered(marks, state), oneByOne(marks, state)));
}

void tst_LayeredMarks::listWithATranslucentColorHasNoStamp()
{
    QImage image = whiteSurface();
    const QPainter p(&image);
    QVERIFY(display::LayeredMarks::stampOf(p, inks));
    QVERIFY(!display::LayeredMarks::stampOf(p, inks + QList<QColor>{QColor(0, 0, 255, 254)}));
}

void tst_LayeredMarks::emptyColorListHasNoStamp()
{
    QImage image = whiteSurface();
    const QPainter p(&image);
    QVERIFY(!display::LayeredMarks::stampOf(p, {}));
}

void tst_LayeredMarks::scaledPainterHasNoStamp()
{
    QImage image = scaledPicture({40, 30}, 2.0);
    const QPainter p(&image);
    QVERIFY(!display::LayeredMarks::stampOf(p, inks));
}

QTEST_MAIN(tst_LayeredMarks)
#include "tst_LayeredMarks.moc"
