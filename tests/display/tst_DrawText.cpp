// Tests of DrawText: font sizes and positions of texts, overlapping boxes, and buttons.
#include "display/DrawText.h"

#include "support/DebugLog.h"
#include "support/PictureTools.h"
#include "support/TextRecorder.h"

#include <QImage>
#include <QMouseEvent>
#include <QStylePainter>
#include <QTest>
#include <QWidget>

#include <cmath>
#include <functional>

namespace
{

constexpr int leftMiddle = Qt::AlignLeft | Qt::AlignVCenter;
const QString shortText = QStringLiteral("Thick");
const QString longText = QStringLiteral("Thickness");

using Drawing = std::function<void(QStylePainter*)>;

QFont givenFont()
{
    QFont font;
    font.setPointSizeF(17.0);
    return font;
}

QFont tenPointFont()
{
    QFont font;
    font.setPointSizeF(10.0);
    return font;
}

/// A white widget of 300 by 200 pixels that shows one drawing.
class Canvas : public QWidget
{
public:
    explicit Canvas(Drawing drawing)
        : m_drawing(std::move(drawing))
    {
        setFixedSize(300, 200);
    }
    QImage image() { return grab().toImage(); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QStylePainter p(this);
        p.fillRect(rect(), Qt::white);
        m_drawing(&p);
    }

private:
    Drawing m_drawing;
};

QImage pictureOf(const Drawing& drawing)
{
    return Canvas(drawing).image();
}

/// The smallest rectangle with all pixels that are not white.
QRect ink(const QImage& image)
{
    return tests::boxOf(image, image.rect(), [](const QColor& c) { return c != Qt::white; });
}

bool near(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

bool nearRect(const QRectF& a, const QRectF& b, double tolerance)
{
    return near(a.left(), b.left(), tolerance) && near(a.top(), b.top(), tolerance) &&
           near(a.right(), b.right(), tolerance) && near(a.bottom(), b.bottom(), tolerance);
}

} // namespace

class tst_DrawText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaultColours();

    void fontSizeIsFittedToTheTighterSideOfTheBox_data();
    void fontSizeIsFittedToTheTighterSideOfTheBox();
    void fittedFontSizeIsProportionalToTheBoxSize();
    void fittedFontSizeIsLimitedToMaxPoints_data();
    void fittedFontSizeIsLimitedToMaxPoints();
    void returnedBoxIsMeasuredWithATenPointFont();
    void emptyTextHasEmptyBox();
    void modesOtherThanOneUseTheGivenFont_data();
    void modesOtherThanOneUseTheGivenFont();
    void textFunctionsLeaveTheGivenFontOnThePainter_data();
    void textFunctionsLeaveTheGivenFontOnThePainter();
    void boxOfNegativeSizeDrawsLikeTheNormalizedBox_data();
    void boxOfNegativeSizeDrawsLikeTheNormalizedBox();
    void fittedTextStaysInItsBox_data();
    void fittedTextStaysInItsBox();
    void smallTextStaysInItsBox_data();
    void smallTextStaysInItsBox();
    void textAtTheWidgetEdgeIsNotCutOff_data() { smallTextStaysInItsBox_data(); }
    void textAtTheWidgetEdgeIsNotCutOff();
    void noTextIsDrawnInAnEmptyBox_data();
    void noTextIsDrawnInAnEmptyBox();
    void boxOfZeroWidthOrHeightLimitsTheFontToTenPoints_data();
    void boxOfZeroWidthOrHeightLimitsTheFontToTenPoints();

    void textBoxReturnsWhereTheTextIsDrawn_data();
    void textBoxReturnsWhereTheTextIsDrawn();
    void textBoxHasNoMaximumFontSize();

    void listUsesSmallestFittedFontSizeTruncatedToWholePoints();
    void eachTextOfAListIsShiftedByTheSameStep();
    void modesOneAndTwoFitEachTextOfAListSeparately_data();
    void modesOneAndTwoFitEachTextOfAListSeparately();
    void textsOfAPairAreAlignedLeftAndRight();
    void pairsUseTheFontSizeThatFitsTheLongestPair();
    void emptyListsAndTooSmallBoxesDrawNothing();

    void overlappingBoxesAreFound_data();
    void overlappingBoxesAreFound();
    void boxesAreKeptInOrder();
    void normalizeMakesNegativeSizesPositive_data();
    void normalizeMakesNegativeSizesPositive();

    void buttonSquareShowsItsState_data();
    void buttonSquareShowsItsState();
    void buttonTextIsBesideTheSquare();
    void buttonIsHitOnlyInsideItsEdges_data();
    void buttonIsHitOnlyInsideItsEdges();

private:
    /// The texts that @p drawing draws.
    QList<tests::DrawnText> textsDrawnBy(const Drawing& drawing);
    /// The text that drawText() draws with givenFont(); empty if drawText() draws no
    /// text or several texts.
    tests::DrawnText drawnText(const QRectF& box, int flags, int mode, const QString& text,
                               double maxPoints);
    /// The size of a text at 10 points, measured by QPainter.
    QSizeF measured(const QString& text, int flags = leftMiddle);
    /// A box that is @p space times the size of shortText at 10 points.
    QRectF boxFor(const QSizeF& space);

    tests::TextRecorder m_recorder;
    QWidget m_styled;
    DrawText m_dt;
};

QList<tests::DrawnText> tst_DrawText::textsDrawnBy(const Drawing& drawing)
{
    m_recorder.clear();
    QStylePainter p(&m_recorder, &m_styled);
    drawing(&p);
    p.end();
    return m_recorder.texts();
}

tests::DrawnText tst_DrawText::drawnText(const QRectF& box, int flags, int mode,
                                         const QString& text, double maxPoints)
{
    const QList<tests::DrawnText> all = textsDrawnBy([&](QStylePainter* p) {
        m_dt.drawText(p, box, givenFont(), flags, mode, text, maxPoints);
    });
    return all.size() == 1 ? all.first() : tests::DrawnText();
}

QSizeF tst_DrawText::measured(const QString& text, int flags)
{
    QPainter p(&m_recorder);
    p.setFont(tenPointFont());
    return p.boundingRect(QRectF(0, 0, 5000, 5000), flags, text).size();
}

QRectF tst_DrawText::boxFor(const QSizeF& space)
{
    const QSizeF size = measured(shortText);
    return {20, 30, space.width() * size.width(), space.height() * size.height()};
}

void tst_DrawText::startsWithDefaultColours()
{
    const DrawText dt;
    QCOMPARE(dt.align, -1);
    QVERIFY(dt.boxes.isEmpty());
    QCOMPARE(dt.buttonLine, QColor(0, 220, 220));
    QCOMPARE(dt.buttonOn, QColor(170, 255, 170));
    QCOMPARE(dt.buttonOff, QColor(140, 180, 140));
    QCOMPARE(dt.buttonText, QColor(0, 0, 0));
}

void tst_DrawText::fontSizeIsFittedToTheTighterSideOfTheBox_data()
{
    QTest::addColumn<QSizeF>("space"); // as a multiple of the text's size at 10 points
    QTest::addColumn<double>("points");
    QTest::newRow("size of the text") << QSizeF(1, 1) << 10.0;
    QTest::newRow("width is tight") << QSizeF(0.5, 3) << 5.0;
    QTest::newRow("height is tight") << QSizeF(4, 1.5) << 15.0;
    QTest::newRow("larger than the text") << QSizeF(2.5, 2.5) << 25.0;
    QTest::newRow("smaller than the text") << QSizeF(0.25, 0.75) << 2.5;
}

// The tolerance of 0.01 points is far below any visible difference.
void tst_DrawText::fontSizeIsFittedToTheTighterSideOfTheBox()
{
    QFETCH(QSizeF, space);
    QFETCH(double, points);
    const QRectF box = boxFor(space);
    const tests::DrawnText text = drawnText(box, leftMiddle, 1, shortText, -1.0);
    QCOMPARE(text.text, shortText);
    QVERIFY2(near(text.points, points, 0.01), qPrintable(QString::number(text.points)));
    const auto drawnMeanwhile = textsDrawnBy([&](QStylePainter* p) {
        QCOMPARE(m_dt.fitSize(p, box, givenFont(), leftMiddle, shortText), points);
    });
    QVERIFY(drawnMeanwhile.isEmpty());
}

// The size is calculated in one step, not by trying sizes, so a box of twice the size
// doubles the font size. The tolerance of 0.02 points is far below any visible
// difference.
void tst_DrawText::fittedFontSizeIsProportionalToTheBoxSize()
{
    const double small = drawnText({5, 5, 40, 11}, leftMiddle, 1, shortText, -1.0).points;
    const double large = drawnText({5, 5, 80, 22}, leftMiddle, 1, shortText, -1.0).points;
    QVERIFY(small > 0.0);
    QVERIFY(near(large, 2.0 * small, 0.02));
}

void tst_DrawText::fittedFontSizeIsLimitedToMaxPoints_data()
{
    QTest::addColumn<double>("maxPoints");
    QTest::addColumn<double>("points");
    QTest::newRow("maximum below the fitted size") << 12.0 << 12.0;
    QTest::newRow("maximum far below the fitted size") << 1.5 << 1.5;
    QTest::newRow("maximum above the fitted size") << 31.0 << 30.0;
    QTest::newRow("no maximum") << -1.0 << 30.0;
    QTest::newRow("zero means no maximum") << 0.0 << 30.0;
}

// The box is three times the size of the text at 10 points, so the text fills it at 30
// points. The tolerance of 0.01 points is far below any visible difference.
void tst_DrawText::fittedFontSizeIsLimitedToMaxPoints()
{
    QFETCH(double, maxPoints);
    QFETCH(double, points);
    const QRectF box(QPointF(10, 10), 3.0 * measured(shortText));
    QVERIFY(near(drawnText(box, leftMiddle, 1, shortText, maxPoints).points, points, 0.01));
}

void tst_DrawText::returnedBoxIsMeasuredWithATenPointFont()
{
    QRectF fitted;
    textsDrawnBy([&](QStylePainter* p) {
        fitted = m_dt.drawText(p, {50, 60, 200, 100}, givenFont(), leftMiddle, 1, shortText, 12.0);
    });
    QCOMPARE(fitted.size(), measured(shortText));
}

void tst_DrawText::emptyTextHasEmptyBox()
{
    const tests::DebugLog log;
    const auto all = textsDrawnBy([&](QStylePainter* p) {
        const QRectF box(20, 30, 100, 20);
        QVERIFY(m_dt.drawText(p, box, givenFont(), leftMiddle, 1, {}, 12.0).size().isNull());
        QCOMPARE(p->font(), givenFont());
        QCOMPARE(m_dt.fitSize(p, box, givenFont(), leftMiddle, {}), 10.0);
        QCOMPARE(m_dt.fitSize(p, {0, 0, 1, 1}, givenFont(), leftMiddle, {}), 10.0);
        m_dt.drawTexts(p, box, 0, 20, givenFont(), leftMiddle, 0, {QString(), QString()}, -1.0);
    });
    QVERIFY(all.isEmpty());
    QCOMPARE(log.lines(), QStringList());
}

void tst_DrawText::modesOtherThanOneUseTheGivenFont_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("mode 0") << 0;
    QTest::newRow("mode 2") << 2;
    QTest::newRow("mode -1") << -1;
}

void tst_DrawText::modesOtherThanOneUseTheGivenFont()
{
    QFETCH(int, mode);
    QCOMPARE(drawnText({10, 10, 400, 200}, leftMiddle, mode, shortText, 12.0).points, 17.0);
    QCOMPARE(drawnText({10, 10, 40, 5}, leftMiddle, mode, shortText, -1.0).points, 17.0);
}

void tst_DrawText::textFunctionsLeaveTheGivenFontOnThePainter_data()
{
    using Operation = std::function<void(DrawText&, QStylePainter*)>;
    QTest::addColumn<Operation>("operation");
    const QRectF box(10, 10, 200, 20);
    QTest::newRow("drawText, fitted") << Operation([=](DrawText& dt, QStylePainter* p) {
        dt.drawText(p, box, givenFont(), leftMiddle, 1, shortText, 12.0);
    });
    QTest::newRow("drawText, given size") << Operation([=](DrawText& dt, QStylePainter* p) {
        dt.drawText(p, box, givenFont(), leftMiddle, 0, shortText, 12.0);
    });
    QTest::newRow("drawText, empty box") << Operation([=](DrawText& dt, QStylePainter* p) {
        dt.drawText(p, QRectF(), givenFont(), leftMiddle, 1, shortText, 12.0);
    });
    QTest::newRow("textBox") << Operation([=](DrawText& dt, QStylePainter* p) {
        dt.textBox(p, box, givenFont(), leftMiddle, 1, shortText);
    });
    QTest::newRow("drawTexts") << Operation([=](DrawText& dt, QStylePainter* p) {
        dt.drawTexts(p, box, 0, 20, givenFont(), leftMiddle, 0, {shortText, longText}, 12.0);
    });
    QTest::newRow("drawTextPairs") << Operation([=](DrawText& dt, QStylePainter* p) {
        dt.drawTextPairs(p, box, 0, 20, givenFont(), {shortText}, {longText}, 12.0);
    });
}

void tst_DrawText::textFunctionsLeaveTheGivenFontOnThePainter()
{
    using Operation = std::function<void(DrawText&, QStylePainter*)>;
    QFETCH(Operation, operation);
    textsDrawnBy([&](QStylePainter* p) {
        p->setFont(tenPointFont());
        operation(m_dt, p);
        QCOMPARE(p->font(), givenFont());
    });
}

void tst_DrawText::boxOfNegativeSizeDrawsLikeTheNormalizedBox_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::newRow("grows to the left") << QRectF(120, 30, -100, 20);
    QTest::newRow("grows upward") << QRectF(20, 50, 100, -20);
    QTest::newRow("grows to the left and upward") << QRectF(120, 50, -100, -20);
}

void tst_DrawText::boxOfNegativeSizeDrawsLikeTheNormalizedBox()
{
    QFETCH(QRectF, box);
    const QRectF positive(20, 30, 100, 20);
    for (const int mode : {0, 1}) {
        for (const int flags : {leftMiddle, int(Qt::AlignRight | Qt::AlignTop)}) {
            const auto a = drawnText(box, flags, mode, shortText, -1.0);
            const auto b = drawnText(positive, flags, mode, shortText, -1.0);
            QCOMPARE(a.text, shortText);
            QCOMPARE(a.points, b.points);
            QCOMPARE(a.at, b.at);
        }
    }
    textsDrawnBy([&](QStylePainter* p) {
        QCOMPARE(m_dt.textBox(p, box, givenFont(), leftMiddle, 1, shortText),
                 m_dt.textBox(p, positive, givenFont(), leftMiddle, 1, shortText));
    });
}

void tst_DrawText::fittedTextStaysInItsBox_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<int>("flags");
    QTest::newRow("left") << QRectF(50, 60, 160, 30) << leftMiddle;
    QTest::newRow("right") << QRectF(50, 60, 160, 30) << int(Qt::AlignRight | Qt::AlignVCenter);
    QTest::newRow("negative width and height")
        << QRectF(210, 90, -160, -30) << int(Qt::AlignCenter);
    QTest::newRow("narrow") << QRectF(50, 60, 40, 90) << int(Qt::AlignCenter);
}

// Glyph widths are whole pixels, so a drawn text can be slightly narrower than calculated;
// its position has a tolerance of 3 pixels. Letters can overhang the box by one pixel.
void tst_DrawText::fittedTextStaysInItsBox()
{
    QFETCH(QRectF, box);
    QFETCH(int, flags);
    const QRect found = ink(pictureOf(
        [&](QStylePainter* p) { m_dt.drawText(p, box, givenFont(), flags, 1, shortText, -1.0); }));
    const QRectF bounds = box.normalized();
    QVERIFY(!found.isEmpty());
    QVERIFY(bounds.adjusted(-1, -1, 1, 1).contains(QRectF(found)));
    if (flags & Qt::AlignLeft) {
        QVERIFY(near(found.left(), bounds.left(), 3.0));
    }
    if (flags & Qt::AlignRight) {
        QVERIFY(near(found.right() + 1.0, bounds.right(), 3.0));
    }
    QVERIFY(near(QRectF(found).center().y(), bounds.center().y(), 3.0));
}

void tst_DrawText::smallTextStaysInItsBox_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("flags");
    const int rightMiddle = Qt::AlignRight | Qt::AlignVCenter;
    QTest::newRow("range label") << "544.5" << rightMiddle;
    QTest::newRow("negative range label") << "-198." << rightMiddle;
    QTest::newRow("range label at the left") << "2.5470" << leftMiddle;
    QTest::newRow("edge jump") << "Edge Jump : 0.974817" << leftMiddle;
    QTest::newRow("edge jump in Japanese") << QStringLiteral("ジャンプ : 0.974817") << leftMiddle;
    QTest::newRow("title") << "Eng.[eV]" << int(Qt::AlignCenter);
    QTest::newRow("title in Japanese") << QStringLiteral("画素数") << int(Qt::AlignCenter);
}

// The smallest width is the label width in a small window. The width increases in steps
// of 3.1 pixels, so that it is rarely a whole number. Letters can overhang by one pixel
// at the top and bottom.
void tst_DrawText::smallTextStaysInItsBox()
{
    QFETCH(QString, text);
    QFETCH(int, flags);
    for (double width = 12.0; width < 90.0; width += 3.1) {
        for (const double height : {8.0, 11.0}) {
            const QRectF box(50.0, 60.0, width, height);
            const QRect found = ink(pictureOf(
                [&](QStylePainter* p) { m_dt.drawText(p, box, QFont(), flags, 1, text, 12.0); }));
            const QRect allowed = box.toAlignedRect().adjusted(0, -1, 0, 1);
            QVERIFY2(found.isEmpty() || allowed.contains(found),
                     qPrintable(QStringLiteral("in a box of %1 by %2, from %3 to %4")
                                    .arg(width)
                                    .arg(height)
                                    .arg(found.left())
                                    .arg(found.right())));
        }
    }
}

// Draws the text at the widget's edge and again 40 pixels further inside. If the edge
// cuts nothing off, the two pictures show the same text.
void tst_DrawText::textAtTheWidgetEdgeIsNotCutOff()
{
    QFETCH(QString, text);
    QFETCH(int, flags);
    constexpr int offset = 40;
    for (double width = 12.0; width < 90.0; width += 3.1) {
        const auto at = [&](double left) {
            return pictureOf([&](QStylePainter* p) {
                m_dt.drawText(p, {left, 60.0, width, 9.0}, QFont(), flags, 1, text, 12.0);
            });
        };
        const QImage edge = at(0.0);
        const QImage whole = at(offset);
        QCOMPARE(ink(edge).translated(offset, 0), ink(whole));
        QCOMPARE(edge.copy(0, 0, 150, 200), whole.copy(offset, 0, 150, 200));
    }
}

void tst_DrawText::noTextIsDrawnInAnEmptyBox_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::newRow("no width, no height") << QRectF(40, 40, 0, 0);
    QTest::newRow("no width") << QRectF(40, 40, 0, 50);
    QTest::newRow("no height") << QRectF(40, 40, 100, 0);
    QTest::newRow("no height, negative width") << QRectF(140, 40, -100, 0);
}

void tst_DrawText::noTextIsDrawnInAnEmptyBox()
{
    QFETCH(QRectF, box);
    const tests::DebugLog log;
    const QImage image = pictureOf([&](QStylePainter* p) {
        m_dt.drawText(p, box, givenFont(), leftMiddle, 1, shortText, 12.0);
        m_dt.drawText(p, box, givenFont(), leftMiddle, 1, shortText, -1.0);
        m_dt.textBox(p, box, givenFont(), leftMiddle, 1, shortText);
        m_dt.drawTexts(p, box, 0, 20, givenFont(), leftMiddle, 1, {shortText, shortText}, -1.0);
        m_dt.drawTexts(p, box, 0, 20, givenFont(), leftMiddle, 0, {shortText, shortText}, -1.0);
        m_dt.drawTextPairs(p, box, 0, 20, givenFont(), {shortText}, {shortText}, -1.0);
    });
    QVERIFY(ink(image).isEmpty());
    QCOMPARE(log.lines(), QStringList());
}

void tst_DrawText::boxOfZeroWidthOrHeightLimitsTheFontToTenPoints_data()
{
    QTest::addColumn<QSizeF>("space"); // as a multiple of the text's size at 10 points
    QTest::addColumn<double>("points");
    QTest::newRow("no width, high") << QSizeF(0, 2) << 10.0;
    QTest::newRow("no width, low") << QSizeF(0, 0.5) << 5.0;
    QTest::newRow("no height, wide") << QSizeF(2, 0) << 10.0;
    QTest::newRow("no height, narrow") << QSizeF(0.25, 0) << 2.5;
    QTest::newRow("no width, no height") << QSizeF(0, 0) << 10.0;
}

// An empty side of the box counts as if the text fitted it at exactly 10 points. So the
// size is at most 10 points, and smaller if the text is too large for the side that is
// not empty.
void tst_DrawText::boxOfZeroWidthOrHeightLimitsTheFontToTenPoints()
{
    QFETCH(QSizeF, space);
    QFETCH(double, points);
    const QRectF box = boxFor(space);
    textsDrawnBy([&](QStylePainter* p) {
        QCOMPARE(m_dt.fitSize(p, box, givenFont(), leftMiddle, shortText), points);
    });
}

void tst_DrawText::textBoxReturnsWhereTheTextIsDrawn_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("flags");
    QTest::newRow("fitted, left") << 1 << leftMiddle;
    QTest::newRow("fitted, right") << 1 << int(Qt::AlignRight | Qt::AlignVCenter);
    QTest::newRow("fitted, centre") << 1 << int(Qt::AlignCenter);
    QTest::newRow("given size, left") << 0 << leftMiddle;
    QTest::newRow("given size, bottom right") << 0 << int(Qt::AlignRight | Qt::AlignBottom);
}

// Letters can overhang the returned box by two pixels at the sides and by one pixel at
// the top and bottom. Beside the first and the last letter, the box has up to 6 pixels
// of blank space.
void tst_DrawText::textBoxReturnsWhereTheTextIsDrawn()
{
    QFETCH(int, mode);
    QFETCH(int, flags);
    const QRectF box(40, 50, 200, 60);
    QRectF place;
    const QImage measuredOnly = pictureOf([&](QStylePainter* p) {
        place = m_dt.textBox(p, box, givenFont(), flags, mode, shortText);
    });
    QVERIFY(ink(measuredOnly).isEmpty());
    const QRect found = ink(pictureOf([&](QStylePainter* p) {
        m_dt.drawText(p, box, givenFont(), flags, mode, shortText, -1.0);
    }));
    QVERIFY(place.adjusted(-2, -1, 2, 1).contains(QRectF(found)));
    QVERIFY(near(found.left(), place.left(), 6.0));
    QVERIFY(near(found.right() + 1.0, place.right(), 6.0));
}

// The box has the proportions of the text, so the text fills it. The tolerance of 5 %
// of the width covers the rounding of glyph widths to whole pixels.
void tst_DrawText::textBoxHasNoMaximumFontSize()
{
    const QRectF box(QPointF(40, 50), 4.0 * measured(shortText));
    textsDrawnBy([&](QStylePainter* p) {
        const QRectF place = m_dt.textBox(p, box, givenFont(), leftMiddle, 1, shortText);
        QVERIFY(nearRect(place, box, 0.05 * box.width()));
    });
}

// The box is 2.59 times as wide as longText at 10 points, so longText fits at 25.9
// points, which is truncated to 25. shortText alone would fit at a larger size.
void tst_DrawText::listUsesSmallestFittedFontSizeTruncatedToWholePoints()
{
    const QSizeF size = measured(longText);
    const QRectF box(20, 30, 2.59 * size.width(), 10.0 * size.height());
    const auto all = textsDrawnBy([&](QStylePainter* p) {
        m_dt.drawTexts(p, box, 0, 20, givenFont(), leftMiddle, 0, {shortText, longText, shortText},
                       12.0);
    });
    QCOMPARE(all.size(), 3);
    for (const tests::DrawnText& text : all) {
        QCOMPARE(text.points, 25.0);
    }
}

void tst_DrawText::eachTextOfAListIsShiftedByTheSameStep()
{
    const auto all = textsDrawnBy([&](QStylePainter* p) {
        m_dt.drawTexts(p, {20, 130, 100, -30}, 7.5, -20.25, givenFont(), leftMiddle, 0,
                       {shortText, longText, shortText}, -1.0);
    });
    QCOMPARE(all.size(), 3);
    QCOMPARE(all.at(0).text, shortText);
    QCOMPARE(all.at(1).text, longText);
    QCOMPARE(all.at(2).text, shortText);
    QVERIFY(near(all.at(0).at.x(), 20.0, 1.0));
    QCOMPARE(all.at(1).at - all.at(0).at, QPointF(7.5, -20.25));
    QCOMPARE(all.at(2).at - all.at(0).at, QPointF(15.0, -40.5));
}

void tst_DrawText::modesOneAndTwoFitEachTextOfAListSeparately_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("mode 1") << 1;
    QTest::newRow("mode 2") << 2;
}

// The box is twice as wide as shortText at 10 points, and high enough for all texts. So
// shortText fits at 20 points.
void tst_DrawText::modesOneAndTwoFitEachTextOfAListSeparately()
{
    QFETCH(int, mode);
    const double width = 2.0 * measured(shortText).width();
    const double fitting = 10.0 * width / measured(longText).width();
    const QRectF box(20, 30, width, 100);
    const auto drawWith = [&](double maxPoints) {
        return textsDrawnBy([&](QStylePainter* p) {
            m_dt.drawTexts(p, box, 0, 50, givenFont(), leftMiddle, mode, {shortText, longText},
                           maxPoints);
        });
    };
    const auto unlimited = drawWith(-1.0);
    QCOMPARE(unlimited.size(), 2);
    QVERIFY(near(unlimited.at(0).points, 20.0, 0.01));
    QVERIFY(near(unlimited.at(1).points, fitting, 0.01));
    QVERIFY(near(unlimited.at(1).at.x() - unlimited.at(0).at.x(), 0.0, 1e-9));
    const auto limited = drawWith(12.0);
    QCOMPARE(limited.size(), 2);
    QVERIFY(near(limited.at(0).points, 12.0, 0.01));
    QVERIFY(near(limited.at(1).points, std::min(12.0, fitting), 0.01));
}

void tst_DrawText::textsOfAPairAreAlignedLeftAndRight()
{
    const auto all = textsDrawnBy([&](QStylePainter* p) {
        m_dt.drawTextPairs(p, {20, 30, 300, 20}, 5, 25, givenFont(), {"First", "Third"},
                           {"Second", "Fourth"}, -1.0);
    });
    QCOMPARE(all.size(), 4);
    QCOMPARE(all.at(0).text, QString("First"));
    QCOMPARE(all.at(1).text, QString("Second"));
    QCOMPARE(all.at(2).text, QString("Third"));
    QCOMPARE(all.at(3).text, QString("Fourth"));
    QVERIFY(near(all.at(0).at.x(), 20.0, 1.0));
    QVERIFY(near(all.at(1).at.x() + all.at(1).width, 320.0, 1.0));
    QVERIFY(near(all.at(2).at.x(), 25.0, 1.0));
    QVERIFY(near(all.at(3).at.x() + all.at(3).width, 325.0, 1.0));
    QCOMPARE(all.at(0).at.y(), all.at(1).at.y());
    QCOMPARE(all.at(2).at.y() - all.at(0).at.y(), 25.0);
}

// The second pair, longText and shortText, is the longest. The box is 1.59 times as
// wide as this pair at 10 points, so the pair fits at 15.9 points, which is truncated
// to 15.
void tst_DrawText::pairsUseTheFontSizeThatFitsTheLongestPair()
{
    const QSizeF size = measured(longText + shortText, Qt::AlignVCenter);
    const QRectF box(20, 30, 1.59 * size.width(), 10.0 * size.height());
    const auto all = textsDrawnBy([&](QStylePainter* p) {
        m_dt.drawTextPairs(p, box, 0, 25, givenFont(), {"a", longText}, {"b", shortText}, 12.0);
    });
    QCOMPARE(all.size(), 4);
    for (const tests::DrawnText& text : all) {
        QCOMPARE(text.points, 15.0);
    }
}

void tst_DrawText::emptyListsAndTooSmallBoxesDrawNothing()
{
    const tests::DebugLog log;
    const auto all = textsDrawnBy([&](QStylePainter* p) {
        const QRectF box(20, 30, 100, 20);
        m_dt.drawTexts(p, box, 0, 20, givenFont(), leftMiddle, 0, {}, -1.0);
        m_dt.drawTexts(p, box, 0, 20, givenFont(), leftMiddle, 1, {}, -1.0);
        m_dt.drawTextPairs(p, box, 0, 20, givenFont(), {}, {}, -1.0);
        // The text would fit this box only at less than one point, so nothing is drawn.
        m_dt.drawTexts(p, {20, 30, 0.5, 0.5}, 0, 20, givenFont(), leftMiddle, 0, {shortText}, -1.0);
    });
    QVERIFY(all.isEmpty());
    QCOMPARE(log.lines(), QStringList());
}

void tst_DrawText::overlappingBoxesAreFound_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<bool>("found");
    QTest::newRow("inside") << QRectF(20, 20, 5, 5) << true;
    QTest::newRow("around") << QRectF(0, 0, 500, 500) << true;
    QTest::newRow("across an edge") << QRectF(0, 15, 11, 2) << true;
    QTest::newRow("across an edge, negative size") << QRectF(11, 17, -11, -2) << true;
    QTest::newRow("touching") << QRectF(0, 15, 10, 2) << false;
    QTest::newRow("outside, negative size") << QRectF(9, 17, -9, -2) << false;
    QTest::newRow("overlapping the second box") << QRectF(190, 95, 20, 10) << true;
    QTest::newRow("between the two boxes") << QRectF(60, 60, 100, 30) << false;
}

// One box in use extends from (10, 10) to (50, 40), the other from (200, 100) to
// (210, 110).
void tst_DrawText::overlappingBoxesAreFound()
{
    QFETCH(QRectF, box);
    DrawText dt;
    QVERIFY(!dt.overlaps(box));
    dt.addBox({10, 10, 40, 30});
    dt.addBox({200, 100, 10, 10});
    QTEST(dt.overlaps(box), "found");
}

void tst_DrawText::boxesAreKeptInOrder()
{
    DrawText dt;
    dt.addBox({1, 2, 3, 4});
    dt.addBox({5, 6, 7, 8});
    QCOMPARE(dt.boxes, (QList<QRectF>{{1, 2, 3, 4}, {5, 6, 7, 8}}));
    dt.overlaps({0, 0, 100, 100});
    QCOMPARE(dt.boxes.size(), 2);
}

void tst_DrawText::normalizeMakesNegativeSizesPositive_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<QRectF>("normal");
    QTest::newRow("positive width and height") << QRectF(1, 2, 3, 4) << QRectF(1, 2, 3, 4);
    QTest::newRow("negative width") << QRectF(10, 2, -3, 4) << QRectF(7, 2, 3, 4);
    QTest::newRow("negative height") << QRectF(10, 20, 3, -4) << QRectF(10, 16, 3, 4);
    QTest::newRow("negative width and height") << QRectF(10, 20, -3, -4) << QRectF(7, 16, 3, 4);
    QTest::newRow("empty") << QRectF(10, 20, 0, 0) << QRectF(10, 20, 0, 0);
}

void tst_DrawText::normalizeMakesNegativeSizesPositive()
{
    QFETCH(QRectF, box);
    QTEST(DrawText::normalize(box), "normal");
}

void tst_DrawText::buttonSquareShowsItsState_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<QColor>("inside");
    QTest::newRow("on") << true << QColor(1, 200, 3);
    QTest::newRow("off") << false << QColor(4, 5, 200);
}

// The square has sides of 30 pixels, and its lower left corner is (40, 100).
void tst_DrawText::buttonSquareShowsItsState()
{
    QFETCH(bool, on);
    QFETCH(QColor, inside);
    DrawText dt;
    dt.buttonOn = QColor(1, 200, 3);
    dt.buttonOff = QColor(4, 5, 200);
    dt.buttonLine = QColor(200, 7, 8);
    const QImage image =
        pictureOf([&](QStylePainter* p) { dt.drawButton(p, on, {}, 40, 100, 200, 30); });
    QCOMPARE(ink(image), QRect(40, 70, 31, 31));
    for (const QPoint at : {QPoint(40, 70), QPoint(70, 70), QPoint(40, 100), QPoint(70, 100),
                            QPoint(40, 85), QPoint(55, 100)}) {
        QCOMPARE(image.pixelColor(at), dt.buttonLine);
    }
    for (const QPoint at : {QPoint(41, 71), QPoint(69, 71), QPoint(55, 85), QPoint(69, 99)}) {
        QCOMPARE(image.pixelColor(at), inside);
    }
}

// The square has sides of 30 pixels, and its lower left corner is (40, 100). The text
// box starts 1.2 * 30 = 36 pixels to the right of this corner and 0.95 * 30 = 28.5
// pixels above it. It is 0.9 * 30 = 27 pixels high, and 200 - 36 = 164 pixels wide,
// because square and text together are 200 pixels wide.
void tst_DrawText::buttonTextIsBesideTheSquare()
{
    DrawText dt;
    dt.buttonText = QColor(12, 34, 56);
    const auto all = textsDrawnBy([&](QStylePainter* p) {
        p->setFont(givenFont());
        dt.drawButton(p, true, shortText, 40, 100, 200, 30);
    });
    QCOMPARE(all.size(), 1);
    QCOMPARE(all.first().text, shortText);
    QCOMPARE(all.first().color, dt.buttonText);
    QVERIFY(near(all.first().at.x(), 76.0, 1.0));
    const QSizeF size = measured(shortText);
    const double points = 10.0 * std::min(164.0 / size.width(), 27.0 / size.height());
    QVERIFY(near(all.first().points, points, 0.01));

    const QRect found = ink(pictureOf([&](QStylePainter* p) {
                                dt.drawButton(p, true, shortText, 40, 100, 200, 30);
                            }).copy(72, 0, 228, 200));
    QVERIFY(QRectF(2, 70.5, 168, 29).contains(QRectF(found)));
}

void tst_DrawText::buttonIsHitOnlyInsideItsEdges_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<bool>("hit");
    QTest::newRow("middle") << QPointF(20, 40) << true;
    QTest::newRow("left edge") << QPointF(10, 40) << false;
    QTest::newRow("right edge") << QPointF(30, 40) << false;
    QTest::newRow("lower edge") << QPointF(20, 50) << false;
    QTest::newRow("upper edge") << QPointF(20, 30) << false;
    QTest::newRow("rounded onto the left edge") << QPointF(10.4, 40) << false;
    QTest::newRow("rounded away from the left edge") << QPointF(10.5, 40) << true;
    QTest::newRow("rounded onto the right edge") << QPointF(29.5, 40) << false;
    QTest::newRow("rounded away from the right edge") << QPointF(29.4, 40) << true;
    QTest::newRow("rounded onto the upper edge") << QPointF(20, 30.4) << false;
    QTest::newRow("rounded away from the upper edge") << QPointF(20, 30.5) << true;
    QTest::newRow("rounded onto the lower edge") << QPointF(20, 49.5) << false;
    QTest::newRow("rounded away from the lower edge") << QPointF(20, 49.4) << true;
    QTest::newRow("below the square") << QPointF(20, 60) << false;
}

// The square has sides of 20 pixels, with the lower left corner (10, 50) and the upper
// right corner (30, 30). The mouse position is rounded to whole pixels.
void tst_DrawText::buttonIsHitOnlyInsideItsEdges()
{
    QFETCH(QPointF, at);
    const QMouseEvent event(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton,
                            Qt::NoModifier);
    QTEST(DrawText::inButton(&event, 10, 50, 20), "hit");
}

QTEST_MAIN(tst_DrawText)
#include "tst_DrawText.moc"
