// Tests of what the plot frame and the map frame have in common, including the pop-out
// window.

#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "rows/FormChecks.h"
#include "support/MarkedLines.h"
#include "support/MouseInput.h"
#include "support/PaintCounter.h"

#include <QGridLayout>
#include <QPointer>
#include <QPushButton>
#include <QStylePainter>
#include <QTest>
#include <QWindow>

#include <functional>
#include <memory>

using namespace tests;

namespace
{

/// A common interface to a plot frame or a map frame: members that have the same names in
/// both classes, and a list of the mouse signals emitted so far.
struct AnyFrame {
    template <class Frame>
    explicit AnyFrame(Frame* made)
        : frame(made)
        , area(made->DispA)
        , content(made->DispABFrame)
        , strip(made->frame)
        , title(made->Title)
        , xPos(made->XPos)
        , yPos(made->YPos)
        , button(made->PopDockB)
        , pop(made->pop)
        , popLayout(made->popLayout)
        , grid(made->gridLayout)
        , docked([made] { return made->docked; })
        , popDock([made] { made->popDock(); })
        , clearScale([made] { made->clearScale(); })
        , update([made] { made->update(); })
        , setRealCoord([made](double x0, double y0, double x1, double y1) {
            made->setRealCoord(x0, y0, x1, y1);
        })
    {
        QObject::connect(made, &Frame::draw, made, [this](QStylePainter* p) {
            if (client) {
                client(p);
            }
        });
        note(made, &Frame::mPressed, "mPressed");
        note(made, &Frame::mDragging, "mDragging");
        note(made, &Frame::mReleased, "mReleased");
        note(made, &Frame::mDClicked, "mDClicked");
    }

    ~AnyFrame() { delete frame; }
    Q_DISABLE_COPY_MOVE(AnyFrame)

    template <class Frame>
    void note(Frame* made, void (Frame::*signal)(MouseC*), const QString& name)
    {
        QObject::connect(made, signal, made, [this, name](const MouseC* mouse) {
            signalsSeen << (mouse == &area->mouse ? name : name + " with another record");
        });
    }

    bool showDocked() const
    {
        frame->show();
        return QTest::qWaitForWindowExposed(frame.get());
    }

    bool showPoppedOut() const
    {
        const bool shown = showDocked();
        popDock();
        return shown && QTest::qWaitForWindowExposed(pop);
    }

    bool rangeIs(double x0, double y0, double x1, double y1) const
    {
        const ChCoord& cc = area->cc;
        return cc.realX0 == x0 && cc.realY0 == y0 && cc.realX1 == x1 && cc.realY1 == y1;
    }

    bool isDocked() const
    {
        return docked() && content->parent() == frame && !pop->isVisible() &&
               grid->itemAtPosition(1, 0) && grid->itemAtPosition(1, 0)->widget() == content &&
               popLayout->indexOf(content) < 0;
    }

    bool isPoppedOut() const
    {
        return !docked() && content->window() == pop && pop->isVisible() &&
               popLayout->indexOf(content) == 0 && grid->indexOf(content) < 0;
    }

    QPointer<QFrame> frame; ///< owned; a QPointer because a Qt parent may delete it first
    DispArea* area;
    QFrame* content;
    QFrame* strip;
    QLabel* title;
    QLineEdit* xPos;
    QLineEdit* yPos;
    QPushButton* button;
    PopBase* pop;
    QVBoxLayout* popLayout;
    QGridLayout* grid;
    std::function<bool()> docked;
    std::function<void()> popDock;
    std::function<void()> clearScale;
    std::function<void()> update; ///< calls the frame's own update(), which hides QWidget::update()
    std::function<void(double, double, double, double)> setRealCoord;
    std::function<void(QStylePainter*)> client;
    QStringList signalsSeen;
};

void click(QPushButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton);
}

constexpr int settleTime = 20; // milliseconds
constexpr int idleTime = 60;   // milliseconds

} // namespace

class tst_DispFrames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void frameHasExpectedNameTitleSizeAndBorder_data() { frameKinds(); }
    void frameHasExpectedNameTitleSizeAndBorder();
    void contentIsInRowOneOfTheGrid_data() { frameKinds(); }
    void contentIsInRowOneOfTheGrid();
    void stripHasExpectedWidgetsFromLeftToRight_data() { frameKinds(); }
    void stripHasExpectedWidgetsFromLeftToRight();
    void readOutsHaveTheResultStyleAndExpectedReadOnlyFlags_data() { frameKinds(); }
    void readOutsHaveTheResultStyleAndExpectedReadOnlyFlags();

    void readOutShowsTheMousePositionInDataValues_data() { frameKinds(); }
    void readOutShowsTheMousePositionInDataValues();
    void drawSignalPassesThePainterOfTheSurface_data() { frameKinds(); }
    void drawSignalPassesThePainterOfTheSurface();
    void mouseSignalsAreForwardedFromTheSurface_data() { frameKinds(); }
    void mouseSignalsAreForwardedFromTheSurface();

    void laterRangesAreIgnoredUntilClearScale_data() { frameKinds(); }
    void laterRangesAreIgnoredUntilClearScale();
    void rangeSetAtEachDrawKeepsTheZoom_data() { frameKinds(); }
    void rangeSetAtEachDrawKeepsTheZoom();
    void doubleClickRestoresTheRangeAtTheNextDraw_data() { frameKinds(); }
    void doubleClickRestoresTheRangeAtTheNextDraw();
    void clearScaleRequestsNoRepaint_data() { frameKinds(); }
    void clearScaleRequestsNoRepaint();
    void clearScaleOfHiddenFrameTakesEffectAtNextPaint_data() { frameKinds(); }
    void clearScaleOfHiddenFrameTakesEffectAtNextPaint();

    void metaObjectDerivesDirectlyFromQFrame_data() { frameKinds(); }
    void metaObjectDerivesDirectlyFromQFrame();
    void popOutWindowIsInitiallyAHiddenChildOfTheFrame_data() { frameKinds(); }
    void popOutWindowIsInitiallyAHiddenChildOfTheFrame();
    void buttonPopsTheContentOutAndDocksIt_data() { frameKinds(); }
    void buttonPopsTheContentOutAndDocksIt();
    void closingThePopOutWindowDocksTheContent_data() { frameKinds(); }
    void closingThePopOutWindowDocksTheContent();
    void closingThePopOutWindowByCodeDocksTheContent_data() { frameKinds(); }
    void closingThePopOutWindowByCodeDocksTheContent();
    void popOutKeepsViewAndMarkerLines_data() { frameKinds(); }
    void popOutKeepsViewAndMarkerLines();
    void stripMovesIntoThePopOutWindowWithTheSurface_data() { frameKinds(); }
    void stripMovesIntoThePopOutWindowWithTheSurface();
    void mouseSignalsAreEmittedInThePopOutWindow_data() { frameKinds(); }
    void mouseSignalsAreEmittedInThePopOutWindow();
    void frameWithPoppedOutContentKeepsItsPlaceInTheLayout_data() { frameKinds(); }
    void frameWithPoppedOutContentKeepsItsPlaceInTheLayout();
    void destroyedFrameDestroysItsPoppedOutContent_data() { frameKinds(); }
    void destroyedFrameDestroysItsPoppedOutContent();

    void idleSurfaceDoesNotPaint_data() { frameKindsAndStates(); }
    void idleSurfaceDoesNotPaint();
    void frameUpdatePaintsTheSurfaceOnce_data() { frameKindsAndStates(); }
    void frameUpdatePaintsTheSurfaceOnce();
    void surfacePaintRepaintsThePopOutWindow_data() { frameKinds(); }
    void surfacePaintRepaintsThePopOutWindow();

private:
    void frameKinds();
    void frameKindsAndStates();

    std::unique_ptr<AnyFrame> m_frame;
};

void tst_DispFrames::frameKinds()
{
    QTest::addColumn<bool>("map");
    QTest::newRow("plot") << false;
    QTest::newRow("map") << true;
}

void tst_DispFrames::frameKindsAndStates()
{
    QTest::addColumn<bool>("map");
    QTest::addColumn<bool>("out");
    QTest::newRow("plot, docked") << false << false;
    QTest::newRow("plot, popped out") << false << true;
    QTest::newRow("map, docked") << true << false;
    QTest::newRow("map, popped out") << true << true;
}

void tst_DispFrames::init()
{
    QFETCH(bool, map);
    m_frame =
        map ? std::make_unique<AnyFrame>(new DispMBase) : std::make_unique<AnyFrame>(new DispABase);
}

void tst_DispFrames::cleanup()
{
    m_frame.reset();
}

void tst_DispFrames::frameHasExpectedNameTitleSizeAndBorder()
{
    QFETCH(bool, map);
    QCOMPARE(m_frame->frame->objectName(), map ? "DispMBase" : "DispABase");
    QCOMPARE(m_frame->frame->windowTitle(), "Frame");
    QCOMPARE(m_frame->frame->size(), map ? QSize(578, 528) : QSize(528, 528));
    QCOMPARE(m_frame->frame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(m_frame->frame->frameShadow(), QFrame::Raised);
}

void tst_DispFrames::contentIsInRowOneOfTheGrid()
{
    QCOMPARE(m_frame->frame->layout(), m_frame->grid);
    QCOMPARE(m_frame->grid->objectName(), "gridLayout");
    QCOMPARE(m_frame->grid->contentsMargins(), QMargins(2, 2, 2, 2));
    QFETCH(bool, map);
    if (!map) { // the grid of a map uses the spacing of the style
        QCOMPARE(m_frame->grid->horizontalSpacing(), 2);
        QCOMPARE(m_frame->grid->verticalSpacing(), 2);
    }
    QCOMPARE(m_frame->grid->count(), 1);
    QVERIFY(m_frame->isDocked());
    QCOMPARE(m_frame->content->objectName(), "DispABFrame");
    QCOMPARE(m_frame->content->frameShadow(), QFrame::Raised);
}

void tst_DispFrames::stripHasExpectedWidgetsFromLeftToRight()
{
    QFETCH(bool, map);
    const QList<FormWidget> plotStrip{
        {"Title", 0, "QLabel", "TextLabel"},   {"label", 1, "QLabel", " x:"},
        {"XTitle", 2, "QLabel", "x-title"},    {"XPos", 3, "QLineEdit"},
        {"label_2", 4, "QLabel", "y:"}, // on purpose without a leading space
        {"YTitle", 5, "QLabel", "y-title"},    {"YPos", 6, "QLineEdit"},
        {"PopDockB", 7, "QPushButton", "P/D"},
    };
    const QList<FormWidget> mapStrip{
        {"Title", 0, "QLabel", "TextLabel"},
        {"label", 1, "QLabel", "  x:"},
        {"XPos", 2, "QLineEdit"},
        {"label_2", 3, "QLabel", "  y:"},
        {"YPos", 4, "QLineEdit"},
        {"label_3", 5, "QLabel", "  Val:"},
        {"Val", 6, "QLineEdit"},
        {"PopDockB", 7, "QPushButton", "P/D"},
    };
    QCOMPARE(formDifferences(m_frame->strip, map ? mapStrip : plotStrip), QStringList());
    const auto* row = qobject_cast<QGridLayout*>(m_frame->strip->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), "gridLayout_2");
    QCOMPARE(row->contentsMargins(), QMargins(3, 3, 3, 3));
    QCOMPARE(row->count(), 8);
    if (!map) {
        QCOMPARE(row->horizontalSpacing(), 3);
        QCOMPARE(row->verticalSpacing(), 3);
    }
    QCOMPARE(m_frame->button->maximumWidth(), 50);
}

// In a plot, the fields of x and y are read-only. In a map, only the field of y is
// read-only.
void tst_DispFrames::readOutsHaveTheResultStyleAndExpectedReadOnlyFlags()
{
    QFETCH(bool, map);
    QCOMPARE(m_frame->xPos->isReadOnly(), !map);
    QVERIFY(m_frame->yPos->isReadOnly());
    QList<QLineEdit*> edits{m_frame->xPos, m_frame->yPos};
    if (map) {
        edits << m_frame->frame->findChild<QLineEdit*>("Val");
        QVERIFY(!edits.last()->isReadOnly());
    }
    for (const QLineEdit* edit : std::as_const(edits)) {
        QVERIFY(isRightAligned(edit));
        QCOMPARE(edit->styleSheet(), QString(resultStyle));
    }
}

void tst_DispFrames::readOutShowsTheMousePositionInDataValues()
{
    QVERIFY(m_frame->showDocked());
    m_frame->area->cc.setArea(0.0, 200.0, 100.0, 0.0);
    m_frame->area->cc.setReal(0.0, 0.0, 1.0, 1.0);
    tests::move(m_frame->area, {75.0, 150.0});
    QCOMPARE(m_frame->xPos->text(), "0.75");
    QCOMPARE(m_frame->yPos->text(), "0.25");
    tests::move(m_frame->area, {-25.0, 250.0});
    QCOMPARE(m_frame->xPos->text(), "-0.25");
    QCOMPARE(m_frame->yPos->text(), "-0.25");
}

void tst_DispFrames::drawSignalPassesThePainterOfTheSurface()
{
    QList<QPaintDevice*> devices;
    m_frame->client = [&devices](QStylePainter* p) { devices << p->device(); };
    m_frame->area->grab();
    QCOMPARE(devices, QList<QPaintDevice*>{m_frame->area});
}

void tst_DispFrames::mouseSignalsAreForwardedFromTheSurface()
{
    QVERIFY(m_frame->showDocked());
    press(m_frame->area, {100.0, 100.0});
    QCOMPARE(m_frame->signalsSeen, QStringList{"mPressed"});
    drag(m_frame->area, {110.0, 100.0});
    QCOMPARE(m_frame->signalsSeen, (QStringList{"mPressed", "mDragging"}));
    release(m_frame->area, {110.0, 100.0});
    QCOMPARE(m_frame->signalsSeen, (QStringList{"mPressed", "mDragging", "mReleased"}));
    doubleClick(m_frame->area, {110.0, 100.0});
    QCOMPARE(m_frame->signalsSeen,
             (QStringList{"mPressed", "mDragging", "mReleased", "mDClicked"}));
}

void tst_DispFrames::laterRangesAreIgnoredUntilClearScale()
{
    m_frame->setRealCoord(1.0, 2.0, 3.0, 4.0);
    QVERIFY(m_frame->area->hasScale);
    QVERIFY(m_frame->rangeIs(1.0, 2.0, 3.0, 4.0));
    m_frame->setRealCoord(5.0, 6.0, 7.0, 8.0);
    QVERIFY(m_frame->rangeIs(1.0, 2.0, 3.0, 4.0));
    m_frame->clearScale();
    QVERIFY(!m_frame->area->hasScale);
    QVERIFY(m_frame->rangeIs(1.0, 2.0, 3.0, 4.0));
    m_frame->setRealCoord(5.0, 6.0, 7.0, 8.0);
    QVERIFY(m_frame->area->hasScale);
    QVERIFY(m_frame->rangeIs(5.0, 6.0, 7.0, 8.0));
}

void tst_DispFrames::rangeSetAtEachDrawKeepsTheZoom()
{
    m_frame->client = [this](QStylePainter*) { m_frame->setRealCoord(0.0, 0.0, 10.0, 20.0); };
    QVERIFY(m_frame->showDocked());
    QTRY_VERIFY(m_frame->rangeIs(0.0, 0.0, 10.0, 20.0));
    tests::move(m_frame->area,
                QPointF(m_frame->area->width() / 2.0, m_frame->area->height() / 2.0));
    turnWheel(m_frame->area, {1.0, 1.0}, {0, -120});
    QVERIFY(m_frame->area->cc.realX1 > 10.25);
    const double x1 = m_frame->area->cc.realX1;
    m_frame->area->repaint();
    QCOMPARE(m_frame->area->cc.realX1, x1);
}

void tst_DispFrames::doubleClickRestoresTheRangeAtTheNextDraw()
{
    m_frame->client = [this](QStylePainter*) { m_frame->setRealCoord(0.0, 0.0, 10.0, 20.0); };
    QVERIFY(m_frame->showDocked());
    QTRY_VERIFY(m_frame->rangeIs(0.0, 0.0, 10.0, 20.0));
    m_frame->area->cc.setReal(3.0, 3.0, 4.0, 4.0);
    doubleClick(m_frame->area, {50.0, 50.0}, Qt::RightButton);
    QTRY_VERIFY(m_frame->rangeIs(0.0, 0.0, 10.0, 20.0));
    QVERIFY(m_frame->area->hasScale);
}

void tst_DispFrames::clearScaleRequestsNoRepaint()
{
    m_frame->client = [this](QStylePainter*) { m_frame->setRealCoord(0.0, 0.0, 10.0, 20.0); };
    QVERIFY(m_frame->showDocked());
    PaintCounter paints(m_frame->area);
    paints.restart();
    m_frame->area->cc.setReal(3.0, 3.0, 4.0, 4.0);
    m_frame->clearScale();
    QCOMPARE(paints.within(settleTime), 0);
    QVERIFY(m_frame->rangeIs(3.0, 3.0, 4.0, 4.0));
    m_frame->area->repaint();
    QVERIFY(m_frame->rangeIs(0.0, 0.0, 10.0, 20.0));
}

void tst_DispFrames::clearScaleOfHiddenFrameTakesEffectAtNextPaint()
{
    m_frame->client = [this](QStylePainter*) { m_frame->setRealCoord(0.0, 0.0, 10.0, 20.0); };
    QVERIFY(m_frame->showDocked());
    QTRY_VERIFY(m_frame->rangeIs(0.0, 0.0, 10.0, 20.0));
    m_frame->area->cc.setReal(3.0, 3.0, 4.0, 4.0);
    m_frame->frame->hide();
    PaintCounter paints(m_frame->area);
    paints.restart();
    m_frame->clearScale();
    QCOMPARE(paints.within(settleTime), 0);
    QVERIFY(!m_frame->frame->isVisible());
    QVERIFY(m_frame->rangeIs(3.0, 3.0, 4.0, 4.0));
    QVERIFY(m_frame->showDocked());
    QTRY_VERIFY(m_frame->rangeIs(0.0, 0.0, 10.0, 20.0));
}

void tst_DispFrames::metaObjectDerivesDirectlyFromQFrame()
{
    QCOMPARE(m_frame->frame->metaObject()->superClass(), &QFrame::staticMetaObject);
}

void tst_DispFrames::popOutWindowIsInitiallyAHiddenChildOfTheFrame()
{
    QCOMPARE(m_frame->pop->parent(), m_frame->frame);
    QVERIFY(m_frame->pop->isWindow());
    QCOMPARE(m_frame->pop->windowType(), Qt::Window);
    QCOMPARE(m_frame->pop->size(), QSize(800, 600));
    QVERIFY(m_frame->pop->isHidden());
    QCOMPARE(m_frame->popLayout, m_frame->pop->findChild<QVBoxLayout*>("PopBaseLayout"));
    QVERIFY(m_frame->isDocked());
    QVERIFY(m_frame->showDocked());
    QVERIFY(m_frame->isDocked());
}

// The button belongs to the content, which moves into the pop-out window. So in each
// round, the first click is in the frame and pops the content out, and the second click is
// in the window and docks it.
void tst_DispFrames::buttonPopsTheContentOutAndDocksIt()
{
    QVERIFY(m_frame->showDocked());
    for (int round = 0; round < 2; ++round) {
        click(m_frame->button);
        QVERIFY(m_frame->isPoppedOut());
        QVERIFY(QTest::qWaitForWindowExposed(m_frame->pop));
        QTRY_VERIFY(m_frame->area->isVisible());
        QCOMPARE(m_frame->button->window(), m_frame->pop);
        QCOMPARE(m_frame->pop->size(), QSize(800, 600));
        click(m_frame->button);
        QVERIFY(m_frame->isDocked());
        QTRY_VERIFY(m_frame->area->isVisible());
        QCOMPARE(m_frame->button->window(), m_frame->frame);
    }
}

void tst_DispFrames::closingThePopOutWindowDocksTheContent()
{
    QVERIFY(m_frame->showPoppedOut());
    for (int round = 0; round < 2; ++round) {
        QVERIFY(m_frame->isPoppedOut());
        QVERIFY(
            m_frame->pop->windowHandle()->close()); // like the close button of the window manager
        QVERIFY(m_frame->isDocked());
        QTRY_VERIFY(m_frame->area->isVisible());
        click(m_frame->button);
        QVERIFY(m_frame->isPoppedOut());
        QVERIFY(QTest::qWaitForWindowExposed(m_frame->pop));
    }
}

void tst_DispFrames::closingThePopOutWindowByCodeDocksTheContent()
{
    QVERIFY(m_frame->showPoppedOut());
    QVERIFY(m_frame->pop->close());
    QVERIFY(m_frame->isDocked());
}

void tst_DispFrames::popOutKeepsViewAndMarkerLines()
{
    MarkedLines lines;
    lines.add("5");
    m_frame->area->markLines = &lines.set;
    m_frame->client = [this](QStylePainter*) { m_frame->setRealCoord(0.0, 0.0, 10.0, 20.0); };
    QVERIFY(m_frame->showDocked());
    QTRY_VERIFY(m_frame->area->hasScale);
    m_frame->area->cc.setReal(1.0, 2.0, 3.0, 4.0);
    const QList<DispArea*> surfaces = m_frame->frame->findChildren<DispArea*>();
    QCOMPARE(surfaces, QList<DispArea*>{m_frame->area});
    PaintCounter paints(m_frame->area);
    for (int move = 0; move < 2; ++move) {
        m_frame->popDock();
        paints.restart();
        m_frame->area->repaint();
        QCOMPARE(paints.count(), 1);
        QVERIFY(m_frame->area->hasScale);
        QVERIFY(m_frame->rangeIs(1.0, 2.0, 3.0, 4.0));
        QCOMPARE(m_frame->area->markLines, &lines.set);
        QCOMPARE(m_frame->frame->findChildren<DispArea*>(), surfaces); // no surface was created
    }
    QVERIFY(m_frame->isDocked());
}

void tst_DispFrames::stripMovesIntoThePopOutWindowWithTheSurface()
{
    m_frame->title->setText("Ref1");
    QVERIFY(m_frame->showPoppedOut());
    for (const QWidget* part : QList<QWidget*>{m_frame->strip, m_frame->title, m_frame->xPos,
                                               m_frame->button, m_frame->area}) {
        QCOMPARE(part->window(), m_frame->pop);
        QTRY_VERIFY(part->isVisible());
    }
    QCOMPARE(m_frame->title->text(), "Ref1");
    m_frame->popDock();
    for (const QWidget* part : QList<QWidget*>{m_frame->strip, m_frame->title, m_frame->xPos,
                                               m_frame->button, m_frame->area}) {
        QCOMPARE(part->window(), m_frame->frame);
        QTRY_VERIFY(part->isVisible());
    }
}

void tst_DispFrames::mouseSignalsAreEmittedInThePopOutWindow()
{
    QVERIFY(m_frame->showPoppedOut());
    m_frame->area->cc.setArea(0.0, 100.0, 100.0, 0.0);
    m_frame->area->cc.setReal(0.0, 0.0, 1.0, 1.0);
    press(m_frame->area, {25.0, 50.0});
    drag(m_frame->area, {75.0, 50.0});
    release(m_frame->area, {75.0, 50.0});
    QCOMPARE(m_frame->signalsSeen, (QStringList{"mPressed", "mDragging", "mReleased"}));
    QCOMPARE(m_frame->xPos->text(), "0.75");
}

void tst_DispFrames::frameWithPoppedOutContentKeepsItsPlaceInTheLayout()
{
    QWidget window;
    window.resize(700, 400);
    QGridLayout places(&window);
    QFrame neighbour;
    places.addWidget(&neighbour, 0, 0);
    places.addWidget(m_frame->frame, 0, 1);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    m_frame->popDock();
    QTest::qWait(settleTime);
    QVERIFY(m_frame->isPoppedOut());
    QCOMPARE(places.itemAtPosition(0, 1)->widget(), m_frame->frame);
    QVERIFY(m_frame->frame->isVisible());
    QVERIFY(m_frame->frame->width() > 0);
    m_frame->popDock();
    QVERIFY(m_frame->isDocked());
    QCOMPARE(m_frame->area->window(), &window);
    QTRY_VERIFY(m_frame->area->isVisible());
}

void tst_DispFrames::destroyedFrameDestroysItsPoppedOutContent()
{
    QVERIFY(m_frame->showPoppedOut());
    const QPointer<PopBase> pop(m_frame->pop);
    const QPointer<DispArea> area(m_frame->area);
    m_frame.reset();
    QVERIFY(!pop);
    QVERIFY(!area);
}

// A surface that requests a repaint in its paint event would never become idle.
void tst_DispFrames::idleSurfaceDoesNotPaint()
{
    QFETCH(bool, out);
    QVERIFY(out ? m_frame->showPoppedOut() : m_frame->showDocked());
    PaintCounter paints(m_frame->area);
    paints.restart();
    QCOMPARE(paints.within(idleTime), 0);
}

void tst_DispFrames::frameUpdatePaintsTheSurfaceOnce()
{
    QFETCH(bool, out);
    QVERIFY(out ? m_frame->showPoppedOut() : m_frame->showDocked());
    int drawings = 0;
    PaintCounter paints(m_frame->area);
    paints.restart();
    m_frame->client = [&drawings](QStylePainter*) { ++drawings; };
    m_frame->update();
    QCOMPARE(paints.count(), 0); // the paint is scheduled but not done yet
    QCOMPARE(paints.within(settleTime), 1);
    QCOMPARE(paints.within(settleTime), 1);
    QCOMPARE(drawings, 1);
}

void tst_DispFrames::surfacePaintRepaintsThePopOutWindow()
{
    QVERIFY(m_frame->showPoppedOut());
    PaintCounter surface(m_frame->area);
    PaintCounter window(m_frame->pop);
    surface.restart();
    window.restart();
    m_frame->area->update();
    QVERIFY(window.within(settleTime) >= 1);
    QVERIFY(window.region().contains(m_frame->pop->rect().topLeft()));
    QVERIFY(window.region().contains(m_frame->pop->rect().bottomRight()));
    QCOMPARE(surface.count(), 1);
}

QTEST_MAIN(tst_DispFrames)
#include "tst_DispFrames.moc"
