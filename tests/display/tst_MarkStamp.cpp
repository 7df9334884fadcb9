// Tests of MarkStamp: the pixels of one mark, and the painters and pens that have a
// stamp.
#include "display/MarkStamp.h"

#include "support/MarkPainters.h"
#include "support/PlainStrokes.h"

#include <QPicture>
#include <QTest>

using namespace tests;
using display::MarkStamp;

class tst_MarkStamp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stampMatchesTheMarkDrawnByQt_data();
    void stampMatchesTheMarkDrawnByQt();
    void stampHasAnEmptyBorder();
    void translatedOrClippedPaintersHaveAStamp_data();
    void translatedOrClippedPaintersHaveAStamp();
    void paintersThatAlterTheMarkPixelsHaveNoStamp_data();
    void paintersThatAlterTheMarkPixelsHaveNoStamp();
    void pensOtherThanThinSolidOpaqueOnesHaveNoStamp_data();
    void pensOtherThanThinSolidOpaqueOnesHaveNoStamp();
    void deviceWithoutPixelsHasNoStamp();
};

void tst_MarkStamp::stampMatchesTheMarkDrawnByQt_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::newRow("usual pen") << QPen(Qt::blue);
    QTest::newRow("cosmetic pen") << QPen(Qt::blue, 0);
    QTest::newRow("white pen") << QPen(Qt::white);
    QTest::newRow("pen with round ends")
        << QPen(Qt::blue, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// The marks are inside the image, across each edge and outside the image.
void tst_MarkStamp::stampMatchesTheMarkDrawnByQt()
{
    QFETCH(QPen, pen);
    for (int y = -4; y < 34; ++y) {
        for (int x = -4; x < 44; ++x) {
            QImage image(40, 30, QImage::Format_RGB32);
            image.fill(Qt::darkGray);
            QImage expected = image;
            QPainter p(&expected);
            p.setPen(pen);
            plainCircle(&p, {x, y}, 1);
            plainCircle(&p, {x, y}, 2);
            const auto stamp = MarkStamp::of(p, pen);
            QVERIFY(stamp);
            for (int row = 0; row < 2 * MarkStamp::reach + 1; ++row) {
                for (int column = 0; column < 2 * MarkStamp::reach + 1; ++column) {
                    const QPoint at(x + column - MarkStamp::reach, y + row - MarkStamp::reach);
                    if ((stamp->rows().at(static_cast<std::size_t>(row)) >> column & 1) &&
                        image.rect().contains(at)) {
                        image.setPixelColor(at, pen.color());
                    }
                }
            }
            p.end();
            QVERIFY(image == expected);
        }
    }
}

// The outermost pixel rows and columns of the stamp must be empty: this shows that no
// part of the mark is cut off.
void tst_MarkStamp::stampHasAnEmptyBorder()
{
    QImage image(9, 9, QImage::Format_RGB32);
    const QPainter p(&image);
    const auto stamp = MarkStamp::of(p, QPen(Qt::blue));
    QVERIFY(stamp);
    QCOMPARE(stamp->rows().size(), std::size_t{2 * MarkStamp::reach + 1});
    QCOMPARE(stamp->rows().front(), std::uint64_t{0});
    QCOMPARE(stamp->rows().back(), std::uint64_t{0});
    for (const std::uint64_t row : stamp->rows()) {
        QVERIFY((row & 1) == 0 && row < std::uint64_t{1} << (2 * MarkStamp::reach));
    }
}

void tst_MarkStamp::translatedOrClippedPaintersHaveAStamp_data()
{
    addPainterStates(true);
}

void tst_MarkStamp::translatedOrClippedPaintersHaveAStamp()
{
    QFETCH(PainterState, state);
    QImage image = whitePicture({150, 120});
    QPainter p(&image);
    state(&p);
    QVERIFY(MarkStamp::of(p, QPen(Qt::blue)));
}

void tst_MarkStamp::paintersThatAlterTheMarkPixelsHaveNoStamp_data()
{
    addPainterStates(false);
}

void tst_MarkStamp::paintersThatAlterTheMarkPixelsHaveNoStamp()
{
    QFETCH(PainterState, state);
    QFETCH(double, scale);
    QImage image = scaledPicture({150, 120}, scale);
    QPainter p(&image);
    state(&p);
    QVERIFY(!MarkStamp::of(p, QPen(Qt::blue)));
}

void tst_MarkStamp::pensOtherThanThinSolidOpaqueOnesHaveNoStamp_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::newRow("wide pen") << QPen(Qt::blue, 2);
    QTest::newRow("dashed pen") << QPen(Qt::blue, 1, Qt::DashLine);
    QTest::newRow("no pen") << QPen(Qt::NoPen);
    QTest::newRow("transparent pen") << QPen(QColor(0, 0, 255, 120));
    QTest::newRow("pen with a pattern") << QPen(QBrush(Qt::blue, Qt::Dense4Pattern), 1);
}

void tst_MarkStamp::pensOtherThanThinSolidOpaqueOnesHaveNoStamp()
{
    QFETCH(QPen, pen);
    QImage image = whitePicture({150, 120});
    const QPainter p(&image);
    QVERIFY(!MarkStamp::of(p, pen));
}

void tst_MarkStamp::deviceWithoutPixelsHasNoStamp()
{
    QPicture picture;
    const QPainter p(&picture);
    QVERIFY(!MarkStamp::of(p, QPen(Qt::blue)));
}

QTEST_MAIN(tst_MarkStamp)
#include "tst_MarkStamp.moc"
