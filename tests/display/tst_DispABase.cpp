// Tests of DispABase, the frame of a plot: its form, its read-out fields and the titles
// of its axes.

#include "display/DispABase.h"
#include "support/MemberOrder.h"
#include "support/MouseInput.h"
#include "support/PictureTools.h"

#include <QGridLayout>
#include <QStylePainter>
#include <QTest>

#include <functional>

using namespace tests;

// On a surface of 400 by 300 pixels, the default margins are 40 (left), 20 (right), 30
// (bottom) and 15 (top) pixels, so the plot area spans x = 40 to 380 and y = 15 to 270.
// The height of a line of text is a twentieth of the height of the plot area:
// trunc((15 - 270) / 20) = -12 pixels, negative because y pixels grow downward. The
// characters take trunc(0.85 * -12) = -10 pixels of the line; the gap between the plot and
// the x title is trunc(0.15 * -12) = -1 pixel.

namespace
{

constexpr QSize surfaceSize(400, 300);
const QRectF xTitleBox(40.0, 271.0, 340.0, 10.0);
// The box of the y title, in coordinates rotated by 270 degrees about the upper left
// corner. On the screen the box spans x = 10 to 20 and the full height.
const QRectF yTitleBox(-300.0, 10.0, 300.0, 10.0);

void drawTitle(QStylePainter* p, const QRectF& box, const QString& text)
{
    DrawText().drawText(p, box, QFont(), Qt::AlignCenter, 1, text, 12.0);
}

/// The picture of a widget in a fixed format: grab() of a child widget can have another
/// format than grab() of a window.
QImage picture(QWidget* widget)
{
    return widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The expected picture: a white surface on which @p drawTitles draws with a black pen.
QImage surfaceWith(const QSize& size, const std::function<void(QStylePainter*)>& drawTitles)
{
    DispArea area;
    area.resize(size);
    QObject::connect(&area, &DispArea::draw, &area, [&](QStylePainter* p) {
        p->fillRect(area.rect(), Qt::white);
        p->setPen(Qt::black);
        drawTitles(p);
    });
    return picture(&area);
}

QImage expectedTitles(const QString& x, const QString& y)
{
    return surfaceWith(surfaceSize, [&](QStylePainter* p) {
        drawTitle(p, xTitleBox, x);
        p->rotate(270.0);
        drawTitle(p, yTitleBox, y);
    });
}

/// The bounding rectangle of all pixels with a grey level below 150.
QRect inkOf(const QImage& image)
{
    return boxOf(image, image.rect(), [](const QColor& c) { return qGray(c.rgb()) < 150; });
}

} // namespace

class tst_DispABase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void stripIsAboveTheSurface();
    void startsDockedWithTitlesInTheStrip();
    void signalsAndSlotsAreDeclaredInTheExpectedOrder();

    void readOutShowsSixDigitsWithCursorAtStart_data();
    void readOutShowsSixDigitsWithCursorAtStart();

    void stripShowsTheTitlesThatThePlotDoesNotDraw_data();
    void stripShowsTheTitlesThatThePlotDoesNotDraw();
    void plotDrawsOnlyTheEnabledTitles_data() { stripShowsTheTitlesThatThePlotDoesNotDraw_data(); }
    void plotDrawsOnlyTheEnabledTitles();
    void titleOfXIsBetweenTheRangeLabels();
    void titleOfYReadsUpwardAtTheLeft();
    void titlesFitTheirBoxesOnOddSurfaceSizes();
    void titlesOfLargePlotsAreLimitedToTwelvePoints();
    void drawXYTitleDrawsInBlackAndRestoresTheTransform();
    void plotWithoutDataHasNoTitlesButShowsTheMousePosition();
    void titlesAreHiddenWhileTheClientDrawsNothing();

private:
    QImage paintedTitles(bool xInArea, bool yInArea);

    std::unique_ptr<DispABase> m_frame;
};

void tst_DispABase::init()
{
    m_frame = std::make_unique<DispABase>();
}

void tst_DispABase::cleanup()
{
    m_frame.reset();
}

/// Sets the titles "Energy" and "mut" and returns the picture of the frame's surface,
/// which a client fills white. The arguments state which titles are drawn on the surface.
QImage tst_DispABase::paintedTitles(bool xInArea, bool yInArea)
{
    DispArea* area = m_frame->DispA;
    m_frame->xTitleInArea = xInArea;
    m_frame->yTitleInArea = yInArea;
    m_frame->setXYTitle("Energy", "mut");
    connect(m_frame.get(), &DispABase::draw, area, [area](QStylePainter* p) {
        p->fillRect(area->rect(), Qt::white);
        area->cc.computeArea();
    });
    area->setFixedSize(surfaceSize);
    return picture(area);
}

void tst_DispABase::stripIsAboveTheSurface()
{
    const auto* grid = qobject_cast<QGridLayout*>(m_frame->DispABFrame->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), "gridLayout_3");
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(grid->horizontalSpacing(), 0);
    QCOMPARE(grid->verticalSpacing(), 0);
    QCOMPARE(grid->count(), 2);
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), m_frame->frame);
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), m_frame->DispA);
    QCOMPARE(m_frame->frame->objectName(), "frame");
    QCOMPARE(m_frame->frame->frameShadow(), QFrame::Plain);
    QCOMPARE(m_frame->frame->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(m_frame->DispA->objectName(), "DispA");
}

void tst_DispABase::startsDockedWithTitlesInTheStrip()
{
    QVERIFY(m_frame->docked);
    QVERIFY(!m_frame->xTitleInArea);
    QVERIFY(!m_frame->yTitleInArea);
    QCOMPARE(m_frame->xTitle, QString());
    QCOMPARE(m_frame->yTitle, QString());
}

void tst_DispABase::signalsAndSlotsAreDeclaredInTheExpectedOrder()
{
    const QMetaObject& meta = DispABase::staticMetaObject;
    QCOMPARE(memberNames(meta, QMetaMethod::Signal),
             (QStringList{"draw(QStylePainter*)", "mPressed(MouseC*)", "mDragging(MouseC*)",
                          "mReleased(MouseC*)", "mDClicked(MouseC*)"}));
    QCOMPARE(memberNames(meta, QMetaMethod::Slot).first(5),
             (QStringList{"receiveNowPos(double,double)", "receiveDraw(QStylePainter*)",
                          "popDock()", "drawXYTitle(QStylePainter*)", "clearScale()"}));
}

void tst_DispABase::readOutShowsSixDigitsWithCursorAtStart_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("energy") << 8333.2469 << "8333.25";
    QTest::newRow("large") << 1234567.0 << "1.23457e+06";
    QTest::newRow("small") << -0.000012345678 << "-1.23457e-05";
}

void tst_DispABase::readOutShowsSixDigitsWithCursorAtStart()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    m_frame->receiveNowPos(value, 2.0 * value);
    QCOMPARE(m_frame->XPos->text(), text);
    QCOMPARE(m_frame->XPos->cursorPosition(), 0);
    QCOMPARE(m_frame->YPos->cursorPosition(), 0);
    m_frame->receiveNowPos(0.0, value);
    QCOMPARE(m_frame->XPos->text(), "0");
    QCOMPARE(m_frame->YPos->text(), text);
}

void tst_DispABase::stripShowsTheTitlesThatThePlotDoesNotDraw_data()
{
    QTest::addColumn<bool>("xInArea");
    QTest::addColumn<bool>("yInArea");
    QTest::newRow("both in the strip") << false << false;
    QTest::newRow("x in the plot") << true << false;
    QTest::newRow("y in the plot") << false << true;
    QTest::newRow("both in the plot") << true << true;
}

void tst_DispABase::stripShowsTheTitlesThatThePlotDoesNotDraw()
{
    QFETCH(bool, xInArea);
    QFETCH(bool, yInArea);
    m_frame->xTitleInArea = xInArea;
    m_frame->yTitleInArea = yInArea;
    m_frame->setXYTitle("Energy", "mut");
    QCOMPARE(m_frame->xTitle, "Energy");
    QCOMPARE(m_frame->yTitle, "mut");
    QCOMPARE(m_frame->XTitle->text(), xInArea ? "" : "Energy");
    QCOMPARE(m_frame->YTitle->text(), yInArea ? "" : "mut");
}

void tst_DispABase::plotDrawsOnlyTheEnabledTitles()
{
    QFETCH(bool, xInArea);
    QFETCH(bool, yInArea);
    QCOMPARE(paintedTitles(xInArea, yInArea),
             expectedTitles(xInArea ? "Energy" : "", yInArea ? "mut" : ""));
}

// The x title is on the same line of text as the two range labels, centred between
// them: the middle of the plot area, x = 40 to 380, is 210.
void tst_DispABase::titleOfXIsBetweenTheRangeLabels()
{
    const QRect ink = inkOf(paintedTitles(true, false));
    QVERIFY(ink.width() > 10);
    QVERIFY(ink.top() >= 269 && ink.bottom() <= 284);
    QVERIFY(ink.left() > 120 && ink.right() < 300);
    QVERIFY(qAbs(ink.center().x() - 210) <= 3);
}

// In rotated text that reads upward, the bar of a "T" is at its left and the first
// letter of a title is at the bottom.
void tst_DispABase::titleOfYReadsUpwardAtTheLeft()
{
    const QRect ink = inkOf(paintedTitles(false, true));
    QVERIFY(ink.height() > 10);
    QVERIFY(ink.left() >= 8 && ink.right() <= 22);
    QVERIFY(qAbs(ink.center().y() - 150) <= 3);

    m_frame->setXYTitle("", "T");
    const QImage letter = picture(m_frame->DispA);
    const QRect all = inkOf(letter);
    const QImage left = letter.copy(all.left(), all.top(), 2, all.height());
    const QImage right = letter.copy(all.right() - 1, all.top(), 2, all.height());
    QVERIFY(inkOf(left).height() > inkOf(right).height());

    m_frame->setXYTitle("", "T.....");
    const QImage word = picture(m_frame->DispA).copy(0, 0, 40, 300);
    const QRect whole = inkOf(word);
    const int half = whole.height() / 2;
    const QRect lower = inkOf(word.copy(whole.adjusted(0, half, 0, 0)));
    const QRect upper = inkOf(word.copy(whole.adjusted(0, 0, 0, -half)));
    QVERIFY(lower.width() > upper.width());
}

// On a surface of 333 by 217 pixels, the margins are trunc(33.3) = 33 (left),
// trunc(16.65) = 16 (right), trunc(21.7) = 21 (bottom) and trunc(10.85) = 10 (top)
// pixels. So the plot area spans x = 33 to 317 and y = 10 to 196. A line of text is
// trunc(186 / 20) = 9 pixels high, its text trunc(0.85 * 9) = 7 and the gap
// trunc(0.15 * 9) = 1.
void tst_DispABase::titlesFitTheirBoxesOnOddSurfaceSizes()
{
    paintedTitles(true, true);
    m_frame->DispA->setFixedSize(333, 217);
    const QImage titles = picture(m_frame->DispA);
    QCOMPARE(titles, surfaceWith({333, 217}, [](QStylePainter* p) {
                 drawTitle(p, {33.0, 197.0, 284.0, 7.0}, "Energy");
                 p->rotate(270.0);
                 drawTitle(p, {-217.0, 7.0, 217.0, 7.0}, "mut");
             }));
}

// On a surface of 800 by 900 pixels, the plot area spans x = 80 to 760 and y = 45 to
// 810. A line of text is trunc(765 / 20) = 38 pixels high, its text
// trunc(0.85 * 38) = 32 and the gap trunc(0.15 * 38) = 5. A font of about 24 points
// would fit, but the size is limited to 12 points.
void tst_DispABase::titlesOfLargePlotsAreLimitedToTwelvePoints()
{
    paintedTitles(true, true);
    m_frame->DispA->setFixedSize(800, 900);
    const QImage titles = picture(m_frame->DispA);
    QCOMPARE(titles, surfaceWith({800, 900}, [](QStylePainter* p) {
                 QFont font;
                 font.setPointSizeF(12.0);
                 p->setFont(font);
                 p->drawText(QRectF(80.0, 815.0, 680.0, 32.0), Qt::AlignCenter, "Energy");
                 p->rotate(270.0);
                 p->drawText(QRectF(-900.0, 32.0, 900.0, 32.0), Qt::AlignCenter, "mut");
             }));
}

void tst_DispABase::drawXYTitleDrawsInBlackAndRestoresTheTransform()
{
    bool transformRestored = false;
    connect(m_frame.get(), &DispABase::draw, this, [&](QStylePainter* p) {
        DispArea* area = m_frame->DispA;
        p->fillRect(area->rect(), Qt::white);
        area->cc.computeArea();
        area->cc.drawn = false; // so that the frame does not draw the titles again
        p->setPen(Qt::red);
        m_frame->drawXYTitle(p);
        const QPointF corner = p->transform().map(QPointF(100.0, 50.0));
        transformRestored = QLineF(corner, QPointF(100.0, 50.0)).length() < 1e-9;
    });
    m_frame->xTitleInArea = true;
    m_frame->yTitleInArea = true;
    m_frame->setXYTitle("Energy", "mut");
    m_frame->DispA->setFixedSize(surfaceSize);
    QCOMPARE(picture(m_frame->DispA), expectedTitles("Energy", "mut"));
    QVERIFY(transformRestored);
}

void tst_DispABase::plotWithoutDataHasNoTitlesButShowsTheMousePosition()
{
    connect(m_frame.get(), &DispABase::draw, this,
            [this](QStylePainter*) { m_frame->DispA->cc.drawn = false; });
    QVERIFY(inkOf(paintedTitles(true, true)).isEmpty());
    m_frame->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_frame.get()));
    m_frame->DispA->cc.setArea(0.0, 200.0, 100.0, 0.0);
    m_frame->DispA->cc.setReal(0.0, 0.0, 1.0, 1.0);
    tests::move(m_frame->DispA, {75.0, 150.0});
    QCOMPARE(m_frame->XPos->text(), "0.75");
    QCOMPARE(m_frame->YPos->text(), "0.25");
}

void tst_DispABase::titlesAreHiddenWhileTheClientDrawsNothing()
{
    bool empty = true;
    connect(m_frame.get(), &DispABase::draw, this, [&](QStylePainter*) {
        if (empty) {
            m_frame->DispA->cc.drawn = false;
        }
    });
    QVERIFY(inkOf(paintedTitles(true, true)).isEmpty());
    empty = false;
    QCOMPARE(picture(m_frame->DispA), expectedTitles("Energy", "mut"));
}

QTEST_MAIN(tst_DispABase)
#include "tst_DispABase.moc"
