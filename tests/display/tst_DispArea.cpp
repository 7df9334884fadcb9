// Tests of DispArea's mouse input: positions, marker lines, panning, double click and
// wheel.

#include "display/DispArea.h"
#include "support/MarkedLines.h"
#include "support/MemberOrder.h"
#include "support/MouseInput.h"
#include "support/PaintCounter.h"

#include <QSignalSpy>
#include <QStylePainter>
#include <QTest>

#include <cmath>
#include <memory>

using namespace tests;

// The surface is 400 by 300 pixels. With the default margins, its plot area spans
// x = 40 to 380 and y = 15 to 270 in pixels. With x from 0 to 340 and y from 0 to 255,
// one pixel is one unit: x = pixel column - 40, y = 270 - pixel row.

namespace
{

const QList<double> unitRange{0.0, 0.0, 340.0, 255.0};

enum Action { Drag, Pan, Nothing };

struct KeyCase {
    const char* name;
    Qt::KeyboardModifiers keys;
    Action action;
};

const QList<KeyCase> keysAtPress{
    {"no key", Qt::NoModifier, Drag},
    {"Shift", Qt::ShiftModifier, Pan},
    {"Control", Qt::ControlModifier, Nothing},
    {"Alt", Qt::AltModifier, Nothing},
    {"Control Alt", Qt::ControlModifier | Qt::AltModifier, Nothing},
    {"Shift Control", Qt::ShiftModifier | Qt::ControlModifier, Nothing},
    {"Shift Alt", Qt::ShiftModifier | Qt::AltModifier, Nothing},
    {"Shift Control Alt", Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier, Nothing},
    {"Meta", Qt::MetaModifier, Drag},
    {"Keypad", Qt::KeypadModifier, Drag},
    {"Shift Meta", Qt::ShiftModifier | Qt::MetaModifier, Pan},
};

} // namespace

class tst_DispArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void moveWithoutButtonReportsPosition();
    void moveWithPressedButtonReportsPosition();
    void positionRefersToWholeWidgetIfThereAreNoMargins();
    void positionIsRoundedToNearestPixel();
    void mouseTrackingIsOn();

    void onlyLeftPressWithoutShiftControlOrAltIsSignalled_data();
    void onlyLeftPressWithoutShiftControlOrAltIsSignalled();
    void signalsPassTheSurfacesOwnMouseState();
    void modifiersAtPressNotAtMoveDecideBetweenDragAndPan_data();
    void modifiersAtPressNotAtMoveDecideBetweenDragAndPan();

    void dragAndPanNeedARecordedLeftPress_data();
    void dragAndPanNeedARecordedLeftPress();

    void pressLessThanTwentyPixelsAwaySelectsTheLine_data();
    void pressLessThanTwentyPixelsAwaySelectsTheLine();
    void nearestLineIsSelected_data();
    void nearestLineIsSelected();
    void pressInAMarginSelectsTheLine_data();
    void pressInAMarginSelectsTheLine();
    void lineOutsideThePlotAreaIsHitAtItsOwnPosition();
    void relativeLineIsHitAtItsAbsolutePosition();
    void lineWithUnparsableTextIsHitAtZero();
    void pressFarFromAllLinesKeepsTheSelection();
    void pressAndDragWithoutLinesOnlyEmitSignals();
    void secondPressReleasesTheOldLineBeforeSelectingTheNewLine();

    void dragMovesTheTextCursorToTheStart();
    void dragMovesAHorizontalLineInY();
    void dragOfRelativeLineWritesDistanceFromBase_data();
    void dragOfRelativeLineWritesDistanceFromBase();
    void dragKeepsThePositionOfOtherLines();
    void dragRequestsNoRepaint();
    void dragWritesTextThenEmitsMovingThenDragging();
    void dragWithInvalidSelectedIndexMovesNoLine();

    void releaseOfAnyButtonMovesTheLineAndEndsTheDrag_data();
    void releaseOfAnyButtonMovesTheLineAndEndsTheDrag();
    void releaseEmitsMovingThenNewPosThenReleased();
    void releaseWithoutSelectionOnlyEmitsReleased();
    void releaseWithoutLinesOnlyEmitsReleased();
    void rightPressKeepsTheDragAndRightReleaseEndsIt();
    void lineHeldOnOneSurfaceCanBeReleasedOnAnotherSurface();

    void panMovesTheContentsWithTheMouse();
    void eachPanStepStartsAtThePreviousPosition();
    void panRepaintsAndLeavesTheScaleFlagUnchanged_data();
    void panRepaintsAndLeavesTheScaleFlagUnchanged();
    void panReportsThePositionInThePreviousRange();

    void doubleClickOfAnyButtonRestoresAutomaticRange_data();
    void doubleClickOfAnyButtonRestoresAutomaticRange();
    void doubleClickKeepsRecordedMousePositions();
    void fullDoubleClickSequenceLeavesNoLineHeld();

    void wheelZoomsAroundThePointer_data();
    void wheelZoomsAroundThePointer();
    void wheelZoomDependsOnlyOnTheSignOfTheAngle_data();
    void wheelZoomDependsOnlyOnTheSignOfTheAngle();
    void edgeBandsSelectTheZoomedAxes_data();
    void edgeBandsSelectTheZoomedAxes();
    void edgeBandIsATenthOfThePlotArea_data();
    void edgeBandIsATenthOfThePlotArea();
    void wheelZoomsAroundThePositionOfTheLastMove();
    void zoomingInAndOutRestoresTheRange();
    void wheelRepaintsOnceAndKeepsHasScale();
    void automaticRangeDiscardsWheelStepAtNextPaint();
    void wheelEmitsNoMouseSignal();

    void positionsBeforeFirstPaintReferToWholeWidget();
    void signalsAreDeclaredInTheExpectedOrder();

private:
    std::unique_ptr<DispArea> makeSurface() const;
    QList<double> range() const;
    bool rangeIs(const QList<double>& expected) const;
    void record();

    std::unique_ptr<DispArea> m_area;
    std::unique_ptr<MarkedLines> m_lines;
    QStringList m_order;
};

std::unique_ptr<DispArea> tst_DispArea::makeSurface() const
{
    auto area = std::make_unique<DispArea>();
    DispArea* surface = area.get();
    connect(surface, &DispArea::draw, surface, [surface] { surface->cc.computeArea(); });
    area->cc.setReal(0.0, 0.0, 340.0, 255.0);
    area->hasScale = true;
    return area;
}

void tst_DispArea::init()
{
    m_lines = std::make_unique<MarkedLines>();
    m_area = makeSurface();
    m_area->markLines = &m_lines->set;
    m_area->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_area.get()));
    QTRY_COMPARE(m_area->cc.areaX0, 40.0);
    QCOMPARE(m_area->cc.areaX1, 380.0);
    QCOMPARE(m_area->cc.areaY0, 270.0);
    QCOMPARE(m_area->cc.areaY1, 15.0);
    m_order.clear();
}

void tst_DispArea::cleanup()
{
    m_area.reset();
    m_lines.reset();
}

QList<double> tst_DispArea::range() const
{
    const ChCoord& cc = m_area->cc;
    return {cc.realX0, cc.realY0, cc.realX1, cc.realY1};
}

// The tolerance of 1e-9 is far above the rounding errors of a few operations on numbers
// of a few hundred (about 1e-13) and far below one pixel, which is one unit.
bool tst_DispArea::rangeIs(const QList<double>& expected) const
{
    const QList<double> got = range();
    for (qsizetype i = 0; i < got.size(); ++i) {
        if (!(std::abs(got.at(i) - expected.at(i)) <= 1e-9)) {
            qWarning() << "range (x0, y0, x1, y1) is" << got << "instead of" << expected;
            return false;
        }
    }
    return true;
}

/// Records in m_order the signals that the surface and the lines emit on mouse input, each
/// with the index of the selected line (-1 without a selection).
void tst_DispArea::record()
{
    const auto note = [this](const char* name) {
        const MarkLines& set = m_lines->set;
        m_order << QStringLiteral("%1 %2").arg(name).arg(set.selected ? set.selectedIndex : -1);
    };
    connect(m_area.get(), &DispArea::nowPos, this, [note] { note("nowPos"); });
    connect(m_area.get(), &DispArea::mPressed, this, [note] { note("pressed"); });
    connect(m_area.get(), &DispArea::mDragging, this, [note] { note("dragging"); });
    connect(m_area.get(), &DispArea::mReleased, this, [note] { note("released"); });
    connect(m_area.get(), &DispArea::mDClicked, this, [note] { note("dClicked"); });
    connect(&m_lines->set, &MarkLines::moving, this, [note] { note("moving"); });
    connect(&m_lines->set, &MarkLines::newPos, this, [note] { note("newPos"); });
}

void tst_DispArea::moveWithoutButtonReportsPosition()
{
    const QSignalSpy positions(m_area.get(), &DispArea::nowPos);
    tests::move(m_area.get(), {140.0, 170.0});
    tests::move(m_area.get(), {30.0, 290.0});
    QCOMPARE(positions.size(), 2);
    QCOMPARE(positions.at(0), (QVariantList{100.0, 100.0}));
    QCOMPARE(positions.at(1), (QVariantList{-10.0, -20.0}));
}

void tst_DispArea::moveWithPressedButtonReportsPosition()
{
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        const QSignalSpy positions(m_area.get(), &DispArea::nowPos);
        press(m_area.get(), {140.0, 170.0}, button);
        QCOMPARE(positions.size(), 0);
        tests::move(m_area.get(), {150.0, 150.0}, button);
        release(m_area.get(), {160.0, 150.0}, button);
        QCOMPARE(positions.size(), 1);
        QCOMPARE(positions.at(0), (QVariantList{110.0, 120.0}));
    }
}

// Without margins, the range 0 to 1 covers the whole widget. The position is a quarter
// of 400 pixels from the left edge and a quarter of 300 pixels from the lower edge.
void tst_DispArea::positionRefersToWholeWidgetIfThereAreNoMargins()
{
    DispArea bare;
    bare.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bare));
    QTRY_COMPARE(bare.cc.areaX1, 400.0);
    const QSignalSpy positions(&bare, &DispArea::nowPos);
    tests::move(&bare, {100.0, 225.0});
    QCOMPARE(positions.size(), 1);
    QCOMPARE(positions.at(0), (QVariantList{0.25, 0.25}));
}

void tst_DispArea::positionIsRoundedToNearestPixel()
{
    const QSignalSpy positions(m_area.get(), &DispArea::nowPos);
    tests::move(m_area.get(), {139.5, 170.25});
    QCOMPARE(positions.size(), 1);
    QCOMPARE(positions.at(0), (QVariantList{100.0, 100.0}));
}

void tst_DispArea::mouseTrackingIsOn()
{
    QVERIFY(m_area->hasMouseTracking());
    const QSignalSpy positions(m_area.get(), &DispArea::nowPos);
    QTest::mouseMove(m_area->windowHandle(), QPoint(140, 170));
    QCoreApplication::processEvents();
    QVERIFY(!positions.isEmpty());
    QCOMPARE(positions.last(), (QVariantList{100.0, 100.0}));
}

void tst_DispArea::onlyLeftPressWithoutShiftControlOrAltIsSignalled_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::KeyboardModifiers>("keys");
    QTest::addColumn<bool>("announced");
    for (const KeyCase& at : keysAtPress) {
        QTest::addRow("left %s", at.name) << Qt::LeftButton << at.keys << (at.action == Drag);
        QTest::addRow("right %s", at.name) << Qt::RightButton << at.keys << false;
        QTest::addRow("middle %s", at.name) << Qt::MiddleButton << at.keys << false;
    }
}

void tst_DispArea::onlyLeftPressWithoutShiftControlOrAltIsSignalled()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(Qt::KeyboardModifiers, keys);
    QFETCH(bool, announced);
    m_lines->add("100");
    record();
    press(m_area.get(), {140.0, 170.0}, button, keys);
    QCOMPARE(m_order, announced ? QStringList{"pressed 0"} : QStringList());
    QCOMPARE(m_lines->set.selected, announced);
    // The press is recorded even if it is not signalled.
    QVERIFY(m_area->mouse.pressed);
    QCOMPARE(m_area->mouse.pressPos, QPoint(140, 170));
    QCOMPARE(m_area->mouse.pressButton, button);
    QCOMPARE(m_area->mouse.pressMods, keys);
}

void tst_DispArea::signalsPassTheSurfacesOwnMouseState()
{
    QList<MouseC*> records;
    const auto keep = [&records](MouseC* m) { records << m; };
    connect(m_area.get(), &DispArea::mPressed, this, keep);
    connect(m_area.get(), &DispArea::mDragging, this, keep);
    connect(m_area.get(), &DispArea::mReleased, this, keep);
    connect(m_area.get(), &DispArea::mDClicked, this, keep);
    press(m_area.get(), {140.0, 170.0});
    drag(m_area.get(), {150.0, 170.0});
    release(m_area.get(), {160.0, 170.0});
    doubleClick(m_area.get(), {160.0, 170.0});
    QCOMPARE(records, QList<MouseC*>(4, &m_area->mouse));
}

void tst_DispArea::modifiersAtPressNotAtMoveDecideBetweenDragAndPan_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("atPress");
    QTest::addColumn<Qt::KeyboardModifiers>("atMove");
    QTest::addColumn<int>("action");
    for (const KeyCase& before : keysAtPress) {
        for (const KeyCase& now : keysAtPress) {
            QTest::addRow("%s, then %s", before.name, now.name)
                << before.keys << now.keys << int(before.action);
        }
    }
}

// The mouse moves from (100, 100) to (120, 120) in data values: a drag moves the line
// to 120, a pan subtracts 20 from all limits. After every kind of press the test itself
// selects the line, so that an unwanted drag would be visible.
void tst_DispArea::modifiersAtPressNotAtMoveDecideBetweenDragAndPan()
{
    QFETCH(Qt::KeyboardModifiers, atPress);
    QFETCH(Qt::KeyboardModifiers, atMove);
    QFETCH(int, action);
    m_lines->add("100");
    press(m_area.get(), {140.0, 170.0}, Qt::LeftButton, atPress);
    m_lines->hold(0);
    record();
    drag(m_area.get(), {160.0, 150.0}, atMove);
    QStringList expected{"nowPos 0"};
    if (action == Drag) {
        expected << "moving 0"
                 << "dragging 0";
    }
    QCOMPARE(m_order, expected);
    QCOMPARE(m_lines->text(0), action == Drag ? "120" : "100");
    QVERIFY(rangeIs(action == Pan ? QList<double>{-20.0, -20.0, 320.0, 235.0} : unitRange));
}

void tst_DispArea::dragAndPanNeedARecordedLeftPress_data()
{
    QTest::addColumn<QList<Qt::MouseButton>>("presses");
    QTest::addColumn<bool>("released");
    using Buttons = QList<Qt::MouseButton>;
    QTest::newRow("no press") << Buttons{} << false;
    QTest::newRow("right press") << Buttons{Qt::RightButton} << false;
    QTest::newRow("left press and its release") << Buttons{Qt::LeftButton} << true;
    QTest::newRow("middle press last") << Buttons{Qt::LeftButton, Qt::MiddleButton} << false;
}

// Only the recorded press decides; the buttons in the move event are ignored. With
// Shift, a move that is not ignored would pan.
void tst_DispArea::dragAndPanNeedARecordedLeftPress()
{
    QFETCH(QList<Qt::MouseButton>, presses);
    QFETCH(bool, released);
    m_lines->add("100");
    for (const Qt::KeyboardModifiers keys : {Qt::NoModifier, Qt::ShiftModifier}) {
        for (const Qt::MouseButton button : presses) {
            press(m_area.get(), {140.0, 170.0}, button, keys);
        }
        if (released) {
            release(m_area.get(), {140.0, 170.0});
        }
        m_lines->hold(0);
        QSignalSpy drags(m_area.get(), &DispArea::mDragging);
        drag(m_area.get(), {160.0, 150.0}, keys);
        QCOMPARE(drags.size(), 0);
        QCOMPARE(m_lines->text(0), "100");
        QVERIFY(rangeIs(unitRange));
    }
}

void tst_DispArea::pressLessThanTwentyPixelsAwaySelectsTheLine_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<bool>("hit");
    // The value 100 is at pixel column 140 (x) and pixel row 170 (y). A line is hit if
    // it is less than 20 pixels away from the mouse position, which is rounded to whole
    // pixels.
    QTest::newRow("vertical, on the line") << vertical << "100" << QPointF(140, 60) << true;
    QTest::newRow("vertical, 19 pixels right") << vertical << "100" << QPointF(159, 60) << true;
    QTest::newRow("vertical, 19 pixels left") << vertical << "100" << QPointF(121, 60) << true;
    QTest::newRow("vertical, 20 pixels right") << vertical << "100" << QPointF(160, 60) << false;
    QTest::newRow("vertical, 20 pixels left") << vertical << "100" << QPointF(120, 60) << false;
    QTest::newRow("vertical, 19.75 pixels left") << vertical << "99.75" << QPointF(120, 60) << true;
    QTest::newRow("vertical, rounded to 19 pixels")
        << vertical << "100" << QPointF(159.25, 60) << true;
    QTest::newRow("vertical, rounded to 20 pixels")
        << vertical << "100" << QPointF(159.5, 60) << false;
    QTest::newRow("horizontal, on the line") << horizontal << "100" << QPointF(300, 170) << true;
    QTest::newRow("horizontal, 19 pixels above")
        << horizontal << "100" << QPointF(300, 151) << true;
    QTest::newRow("horizontal, 19 pixels below")
        << horizontal << "100" << QPointF(300, 189) << true;
    QTest::newRow("horizontal, 20 pixels above")
        << horizontal << "100" << QPointF(300, 150) << false;
    QTest::newRow("horizontal, 20 pixels below")
        << horizontal << "100" << QPointF(300, 190) << false;
    QTest::newRow("horizontal, 19.75 pixels above")
        << horizontal << "100.25" << QPointF(300, 150) << true;
    QTest::newRow("direction -7 counts as horizontal") << -7 << "100" << QPointF(300, 170) << true;
}

void tst_DispArea::pressLessThanTwentyPixelsAwaySelectsTheLine()
{
    QFETCH(int, direction);
    QFETCH(QString, text);
    QFETCH(QPointF, at);
    QFETCH(bool, hit);
    m_lines->add(text, direction);
    record();
    press(m_area.get(), at);
    QCOMPARE(m_lines->set.selected, hit);
    QCOMPARE(m_lines->set.selectedIndex, hit ? 0 : -1);
    QCOMPARE(m_order, QStringList{hit ? "pressed 0" : "pressed -1"});
    QCOMPARE(m_lines->text(0), text);
}

void tst_DispArea::nearestLineIsSelected_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QList<int>>("directions");
    QTest::addColumn<int>("selected");
    // The press is at (105, 105) in data values. Of several lines at the same distance,
    // the line with the lowest index is selected.
    const QList<int> allVertical{vertical, vertical, vertical};
    QTest::newRow("middle line") << QStringList{"90", "104", "110"} << allVertical << 1;
    QTest::newRow("last line") << QStringList{"90", "100", "106"} << allVertical << 2;
    QTest::newRow("midway between two lines, lower line listed first")
        << QStringList{"100", "110", "300"} << allVertical << 0;
    QTest::newRow("midway between two lines, upper line listed first")
        << QStringList{"300", "110", "100"} << allVertical << 1;
    QTest::newRow("two lines at the same value")
        << QStringList{"300", "105", "105"} << allVertical << 1;
    QTest::newRow("horizontal line is nearer")
        << QStringList{"100", "107", "300"} << QList<int>{vertical, horizontal, vertical} << 1;
    QTest::newRow("equal distance in x and y")
        << QStringList{"300", "100", "110"} << QList<int>{vertical, horizontal, vertical} << 1;
}

void tst_DispArea::nearestLineIsSelected()
{
    QFETCH(QStringList, values);
    QFETCH(QList<int>, directions);
    QFETCH(int, selected);
    for (int i = 0; i < values.size(); ++i) {
        m_lines->add(values.at(i), directions.at(i));
    }
    press(m_area.get(), {145.0, 165.0});
    QVERIFY(m_lines->set.selected);
    QCOMPARE(m_lines->set.selectedIndex, selected);
}

void tst_DispArea::pressInAMarginSelectsTheLine_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QPointF>("at");
    QTest::newRow("above") << vertical << QPointF(140, 0);
    QTest::newRow("below") << vertical << QPointF(140, 299);
    QTest::newRow("left") << horizontal << QPointF(0, 170);
    QTest::newRow("right") << horizontal << QPointF(399, 170);
}

void tst_DispArea::pressInAMarginSelectsTheLine()
{
    QFETCH(int, direction);
    QFETCH(QPointF, at);
    m_lines->add("100", direction);
    press(m_area.get(), at);
    QVERIFY(m_lines->set.selected);
}

// The line is at pixel column 40 - 25 = 15, in the left margin. The hit distance is
// less than 20 pixels, so a press at column 34 hits the line and a press at column 40
// does not.
void tst_DispArea::lineOutsideThePlotAreaIsHitAtItsOwnPosition()
{
    m_lines->add("-25");
    press(m_area.get(), {40.0, 100.0});
    QVERIFY(!m_lines->set.selected);
    press(m_area.get(), {34.0, 100.0});
    QVERIFY(m_lines->set.selected);
}

void tst_DispArea::relativeLineIsHitAtItsAbsolutePosition()
{
    m_lines->add("200");
    m_lines->add("-100", vertical, 0);
    press(m_area.get(), {140.0, 100.0});
    QVERIFY(m_lines->set.selected);
    QCOMPARE(m_lines->set.selectedIndex, 1);
}

void tst_DispArea::lineWithUnparsableTextIsHitAtZero()
{
    m_lines->add("edge");
    press(m_area.get(), {40.0, 100.0});
    QVERIFY(m_lines->set.selected);
}

void tst_DispArea::pressFarFromAllLinesKeepsTheSelection()
{
    m_lines->add("100");
    m_lines->add("200");
    press(m_area.get(), {240.0, 100.0});
    record();
    press(m_area.get(), {340.0, 100.0});
    QCOMPARE(m_order, QStringList{"pressed 1"});
}

void tst_DispArea::pressAndDragWithoutLinesOnlyEmitSignals()
{
    record();
    for (MarkLines* set : {&m_lines->set, static_cast<MarkLines*>(nullptr)}) {
        m_area->markLines = set;
        m_order.clear();
        press(m_area.get(), {140.0, 170.0});
        drag(m_area.get(), {160.0, 150.0});
        QCOMPARE(m_order, (QStringList{"pressed -1", "nowPos -1", "dragging -1"}));
    }
}

// The second press emits newPos() for line 0, which is still selected at that time, and
// then selects line 1.
void tst_DispArea::secondPressReleasesTheOldLineBeforeSelectingTheNewLine()
{
    m_lines->add("100");
    m_lines->add("200");
    press(m_area.get(), {140.0, 170.0});
    record();
    press(m_area.get(), {240.0, 170.0});
    QCOMPARE(m_order, (QStringList{"newPos 0", "pressed 1"}));
    QCOMPARE(m_lines->text(0), "100");
    QCOMPARE(m_lines->text(1), "200");
}

// The range is 100 units over 340 pixels and starts at pixel column 40. So column 177
// is at 8300 + (177 - 40) * 100 / 340 = 8340.29411...
void tst_DispArea::dragMovesTheTextCursorToTheStart()
{
    m_area->cc.setRealX(8300.0, 8400.0);
    const MarkLine* line = m_lines->add("8350"); // pixel column 40 + 50 * 3.4 = 210
    press(m_area.get(), {210.0, 100.0});
    drag(m_area.get(), {177.0, 20.0});
    QCOMPARE(m_lines->text(0), "8340.29");
    QCOMPARE(line->edit->cursorPosition(), 0);
}

void tst_DispArea::dragMovesAHorizontalLineInY()
{
    m_lines->add("100", horizontal);
    press(m_area.get(), {300.0, 170.0});
    drag(m_area.get(), {200.0, 150.0});
    QCOMPARE(m_lines->text(0), "120");
}

void tst_DispArea::dragOfRelativeLineWritesDistanceFromBase_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    // The line is dragged to pixel (240, 150), which is x = 200 or y = 120. Its text
    // becomes the signed distance from the base line to this position.
    QTest::newRow("to the right of the base") << vertical << "150"
                                              << "50" << 200.0;
    QTest::newRow("to the left of the base") << vertical << "300.5"
                                             << "-100.5" << 200.0;
    QTest::newRow("horizontal") << horizontal << "150"
                                << "-30" << 120.0;
    QTest::newRow("unparsable base counts as 0") << vertical << "edge"
                                                 << "200" << 200.0;
}

void tst_DispArea::dragOfRelativeLineWritesDistanceFromBase()
{
    QFETCH(int, direction);
    QFETCH(QString, base);
    QFETCH(QString, text);
    QFETCH(double, value);
    m_lines->add(base, direction);
    MarkLine* line = m_lines->add("7", direction, 0);
    press(m_area.get(), {380.0, 15.0}); // too far from both lines
    m_lines->hold(1);
    line->edit->setCursorPosition(1);
    drag(m_area.get(), {240.0, 150.0});
    QCOMPARE(line->edit->text(), text);
    QCOMPARE(line->edit->cursorPosition(), 0);
    QCOMPARE(m_lines->set.value(1), value);
    QCOMPARE(m_lines->text(0), base);
}

void tst_DispArea::dragKeepsThePositionOfOtherLines()
{
    m_lines->add("100");
    m_lines->add("110");
    press(m_area.get(), {150.0, 170.0});
    drag(m_area.get(), {140.0, 170.0}); // onto the first line
    drag(m_area.get(), {130.0, 170.0});
    QCOMPARE(m_lines->text(0), "100");
    QCOMPARE(m_lines->text(1), "90");
}

// The surface requests no repaint while a line is dragged. In the program, slots connected
// to moving() request it; this test connects none.
void tst_DispArea::dragRequestsNoRepaint()
{
    m_lines->add("100");
    PaintCounter paints(m_area.get());
    paints.restart();
    press(m_area.get(), {140.0, 170.0});
    drag(m_area.get(), {160.0, 150.0});
    release(m_area.get(), {160.0, 150.0});
    QCOMPARE(paints.within(50), 0);
}

void tst_DispArea::dragWritesTextThenEmitsMovingThenDragging()
{
    m_lines->add("100");
    press(m_area.get(), {140.0, 170.0});
    const auto note = [this](const QString& name) { m_order << name + m_lines->text(0); };
    connect(&m_lines->set, &MarkLines::moving, this, [note] { note("moving "); });
    connect(m_area.get(), &DispArea::mDragging, this, [note] { note("dragging "); });
    drag(m_area.get(), {141.0, 170.0});
    drag(m_area.get(), {142.0, 170.0});
    QCOMPARE(m_order, (QStringList{"moving 101", "dragging 101", "moving 102", "dragging 102"}));
}

void tst_DispArea::dragWithInvalidSelectedIndexMovesNoLine()
{
    m_lines->add("100");
    const QSignalSpy moving(&m_lines->set, &MarkLines::moving);
    for (const int index : {-1, 1}) {
        press(m_area.get(), {300.0, 170.0});
        m_lines->hold(index);
        drag(m_area.get(), {160.0, 150.0});
        release(m_area.get(), {160.0, 150.0});
        QCOMPARE(moving.size(), 0);
        QCOMPARE(m_lines->text(0), "100");
        QVERIFY(!m_lines->set.selected);
    }
}

void tst_DispArea::releaseOfAnyButtonMovesTheLineAndEndsTheDrag_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::KeyboardModifiers>("keys");
    for (const KeyCase& at : keysAtPress) {
        QTest::addRow("left %s", at.name) << Qt::LeftButton << at.keys;
    }
    QTest::newRow("right") << Qt::RightButton << Qt::KeyboardModifiers();
    QTest::newRow("middle") << Qt::MiddleButton << Qt::KeyboardModifiers();
}

void tst_DispArea::releaseOfAnyButtonMovesTheLineAndEndsTheDrag()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(Qt::KeyboardModifiers, keys);
    m_lines->add("100");
    press(m_area.get(), {140.0, 170.0});
    drag(m_area.get(), {160.0, 150.0});
    release(m_area.get(), {175.0, 150.0}, button, keys);
    QCOMPARE(m_lines->text(0), "135");
    QVERIFY(!m_lines->set.selected);
    QCOMPARE(m_lines->set.selectedIndex, -1);
    QCOMPARE(m_area->mouse.releaseButton, button);
    QCOMPARE(m_area->mouse.releaseMods, keys);
    QVERIFY(!m_area->mouse.pressed);
}

void tst_DispArea::releaseEmitsMovingThenNewPosThenReleased()
{
    m_lines->add("300");
    m_lines->add("100");
    press(m_area.get(), {140.0, 170.0});
    record();
    release(m_area.get(), {150.0, 170.0});
    QCOMPARE(m_order, (QStringList{"moving 1", "newPos 1", "released -1"}));
    QCOMPARE(m_lines->text(1), "110");
}

void tst_DispArea::releaseWithoutSelectionOnlyEmitsReleased()
{
    m_lines->add("100");
    press(m_area.get(), {300.0, 170.0});
    record();
    release(m_area.get(), {140.0, 170.0});
    QCOMPARE(m_order, QStringList{"released -1"});
    QCOMPARE(m_lines->text(0), "100");
}

void tst_DispArea::releaseWithoutLinesOnlyEmitsReleased()
{
    m_area->markLines = nullptr;
    record();
    release(m_area.get(), {140.0, 170.0}, Qt::MiddleButton, Qt::ShiftModifier);
    QCOMPARE(m_order, QStringList{"released -1"});
    QCOMPARE(m_area->mouse.releasePos, QPoint(140, 170));
}

void tst_DispArea::rightPressKeepsTheDragAndRightReleaseEndsIt()
{
    m_lines->add("100");
    press(m_area.get(), {140.0, 170.0});
    record();
    press(m_area.get(), {150.0, 170.0}, Qt::RightButton);
    QCOMPARE(m_order, QStringList());
    QCOMPARE(m_lines->text(0), "100");
    release(m_area.get(), {160.0, 170.0}, Qt::RightButton);
    QCOMPARE(m_order, (QStringList{"moving 0", "newPos 0", "released -1"}));
    QCOMPARE(m_lines->text(0), "120");
}

void tst_DispArea::lineHeldOnOneSurfaceCanBeReleasedOnAnotherSurface()
{
    const std::unique_ptr<DispArea> other = makeSurface();
    other->markLines = &m_lines->set;
    other->show();
    QVERIFY(QTest::qWaitForWindowExposed(other.get()));
    QTRY_COMPARE(other->cc.areaX0, 40.0);
    m_lines->add("100");
    press(m_area.get(), {140.0, 170.0});
    record();
    release(other.get(), {190.0, 170.0});
    QCOMPARE(m_order, (QStringList{"moving 0", "newPos 0"}));
    QCOMPARE(m_lines->text(0), "150");
    QVERIFY(!m_lines->set.selected);
}

// The value under the mouse is 100 before and after the pan, in x and y.
void tst_DispArea::panMovesTheContentsWithTheMouse()
{
    record();
    press(m_area.get(), {140.0, 170.0}, Qt::LeftButton, Qt::ShiftModifier);
    drag(m_area.get(), {150.0, 150.0}, Qt::ShiftModifier);
    QVERIFY(rangeIs({-10.0, -20.0, 330.0, 235.0}));
    QCOMPARE(m_area->cc.s2rX(150.0), 100.0);
    QCOMPARE(m_area->cc.s2rY(150.0), 100.0);
    release(m_area.get(), {150.0, 150.0}, Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(rangeIs({-10.0, -20.0, 330.0, 235.0}));
    QCOMPARE(m_order, (QStringList{"nowPos -1", "released -1"}));
}

void tst_DispArea::eachPanStepStartsAtThePreviousPosition()
{
    press(m_area.get(), {140.0, 170.0}, Qt::LeftButton, Qt::ShiftModifier);
    drag(m_area.get(), {150.0, 150.0}, Qt::ShiftModifier);
    drag(m_area.get(), {110.0, 150.0}, Qt::ShiftModifier);
    QVERIFY(rangeIs({30.0, -20.0, 370.0, 235.0}));
    drag(m_area.get(), {110.0, 180.0}, Qt::ShiftModifier);
    QVERIFY(rangeIs({30.0, 10.0, 370.0, 265.0}));
}

void tst_DispArea::panRepaintsAndLeavesTheScaleFlagUnchanged_data()
{
    QTest::addColumn<bool>("hasScale");
    QTest::newRow("fixed range") << true;
    QTest::newRow("automatic range") << false;
}

void tst_DispArea::panRepaintsAndLeavesTheScaleFlagUnchanged()
{
    QFETCH(bool, hasScale);
    PaintCounter paints(m_area.get());
    paints.restart();
    m_area->hasScale = hasScale;
    press(m_area.get(), {140.0, 170.0}, Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(paints.within(50), 0);
    drag(m_area.get(), {150.0, 150.0}, Qt::ShiftModifier);
    QVERIFY(rangeIs({-10.0, -20.0, 330.0, 235.0}));
    QCOMPARE(m_area->hasScale, hasScale);
    QCOMPARE(paints.within(50), 1);
    QCOMPARE(m_area->hasScale, hasScale);
    // Without a client that sets a range, the automatic range is 0 to 1 at each paint.
    QVERIFY(rangeIs(hasScale ? QList<double>{-10.0, -20.0, 330.0, 235.0}
                             : QList<double>{0.0, 0.0, 1.0, 1.0}));
}

void tst_DispArea::panReportsThePositionInThePreviousRange()
{
    const QSignalSpy positions(m_area.get(), &DispArea::nowPos);
    press(m_area.get(), {140.0, 170.0}, Qt::LeftButton, Qt::ShiftModifier);
    drag(m_area.get(), {150.0, 150.0}, Qt::ShiftModifier);
    QCOMPARE(positions.size(), 1);
    QCOMPARE(positions.at(0), (QVariantList{110.0, 120.0}));
}

void tst_DispArea::doubleClickOfAnyButtonRestoresAutomaticRange_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::KeyboardModifiers>("keys");
    QTest::newRow("left") << Qt::LeftButton << Qt::KeyboardModifiers();
    QTest::newRow("right") << Qt::RightButton << Qt::KeyboardModifiers();
    QTest::newRow("middle") << Qt::MiddleButton << Qt::KeyboardModifiers();
    QTest::newRow("left with Shift") << Qt::LeftButton << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void tst_DispArea::doubleClickOfAnyButtonRestoresAutomaticRange()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(Qt::KeyboardModifiers, keys);
    PaintCounter paints(m_area.get());
    paints.restart();
    record();
    bool scaleAtSignal = true;
    connect(m_area.get(), &DispArea::mDClicked, this,
            [&](const MouseC*) { scaleAtSignal = m_area->hasScale; });
    doubleClick(m_area.get(), {140.0, 170.0}, button, keys);
    QCOMPARE(m_order, QStringList{"dClicked -1"});
    QVERIFY(!m_area->hasScale);
    QVERIFY(!scaleAtSignal);
    QCOMPARE(m_area->mouse.dClickPos, QPoint(140, 170));
    QCOMPARE(m_area->mouse.dClickButton, button);
    QCOMPARE(m_area->mouse.dClickMods, keys);
    QVERIFY(rangeIs(unitRange)); // unchanged until the paint
    QCOMPARE(paints.within(50), 1);
    QVERIFY(rangeIs({0.0, 0.0, 1.0, 1.0}));
}

void tst_DispArea::doubleClickKeepsRecordedMousePositions()
{
    tests::move(m_area.get(), {50.0, 60.0});
    tests::move(m_area.get(), {70.0, 80.0});
    doubleClick(m_area.get(), {140.0, 170.0});
    QCOMPARE(m_area->mouse.prev, QPoint(50, 60));
    QCOMPARE(m_area->mouse.now, QPoint(70, 80));
    QVERIFY(!m_area->mouse.pressed);
}

// The full event sequence is press, release, double click, release. The release after
// the double click is handled like any other release.
void tst_DispArea::fullDoubleClickSequenceLeavesNoLineHeld()
{
    m_lines->add("100");
    record();
    press(m_area.get(), {140.0, 170.0});
    release(m_area.get(), {140.0, 170.0});
    doubleClick(m_area.get(), {140.0, 170.0});
    drag(m_area.get(), {160.0, 170.0});
    release(m_area.get(), {160.0, 170.0});
    QCOMPARE(m_order, (QStringList{"pressed 0", "moving 0", "newPos 0", "released -1",
                                   "dClicked -1", "nowPos -1", "released -1"}));
    QVERIFY(!m_area->mouse.pressed);
    QCOMPARE(m_lines->text(0), "100");
}

void tst_DispArea::wheelZoomsAroundThePointer_data()
{
    QTest::addColumn<int>("turn");
    QTest::addColumn<QList<double>>("expected");
    // A wheel event zooms by 1.1 around (100, 100). Before it, the lower limits are 100
    // below this point, the upper limits 240 (x) and 155 (y) above it. Zooming out
    // multiplies these distances by 1.1, zooming in divides them by 1.1.
    QTest::newRow("towards the user zooms out")
        << -120 << QList<double>{-10.0, -10.0, 364.0, 270.5};
    QTest::newRow("away from the user zooms in")
        << 120
        << QList<double>{100.0 - 1000.0 / 11.0, 100.0 - 1000.0 / 11.0, 100.0 + 2400.0 / 11.0,
                         100.0 + 1550.0 / 11.0};
}

void tst_DispArea::wheelZoomsAroundThePointer()
{
    QFETCH(int, turn);
    QFETCH(QList<double>, expected);
    tests::move(m_area.get(), {140.0, 170.0});
    turnWheel(m_area.get(), {140.0, 170.0}, {0, turn});
    QVERIFY(rangeIs(expected));
    QVERIFY(std::abs(m_area->cc.s2rX(140.0) - 100.0) <= 1e-9);
    QVERIFY(std::abs(m_area->cc.s2rY(170.0) - 100.0) <= 1e-9);
}

void tst_DispArea::wheelZoomDependsOnlyOnTheSignOfTheAngle_data()
{
    QTest::addColumn<QPoint>("turn");
    QTest::addColumn<double>("width"); // width of the x range after the wheel event; 340 before it
    const double in = 3400.0 / 11.0;
    const double out = 374.0;
    QTest::newRow("smallest step away from the user") << QPoint(0, 1) << in;
    QTest::newRow("one notch away from the user") << QPoint(0, 120) << in;
    QTest::newRow("many notches away from the user") << QPoint(0, 2400) << in;
    QTest::newRow("smallest step towards the user") << QPoint(0, -1) << out;
    QTest::newRow("one notch towards the user") << QPoint(0, -120) << out;
    QTest::newRow("many notches towards the user") << QPoint(0, -2400) << out;
    QTest::newRow("zero angle zooms in") << QPoint(0, 0) << in;
    QTest::newRow("horizontal angle counts as zero") << QPoint(-120, 0) << in;
}

void tst_DispArea::wheelZoomDependsOnlyOnTheSignOfTheAngle()
{
    QFETCH(QPoint, turn);
    QFETCH(double, width);
    tests::move(m_area.get(), {140.0, 170.0});
    turnWheel(m_area.get(), {140.0, 170.0}, turn);
    const double got = m_area->cc.realX1 - m_area->cc.realX0;
    QVERIFY2(std::abs(got - width) <= 1e-9, qPrintable(QString::number(got, 'g', 12)));
}

void tst_DispArea::edgeBandsSelectTheZoomedAxes_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<QList<double>>("expected");
    // Each wheel event zooms out by 1.1 around the mouse position in data values, x =
    // pixel column - 40 and y = 270 - pixel row.
    QTest::newRow("middle: both axes")
        << QPointF(140, 170) << QList<double>{-10.0, -10.0, 364.0, 270.5};
    QTest::newRow("left of the plot: y")
        << QPointF(20, 170) << QList<double>{0.0, -10.0, 340.0, 270.5};
    QTest::newRow("inside the left edge: y")
        << QPointF(50, 170) << QList<double>{0.0, -10.0, 340.0, 270.5};
    QTest::newRow("right of the plot: y")
        << QPointF(390, 170) << QList<double>{0.0, -10.0, 340.0, 270.5};
    QTest::newRow("below the plot: x")
        << QPointF(140, 285) << QList<double>{-10.0, 0.0, 364.0, 255.0};
    QTest::newRow("inside the lower edge: x")
        << QPointF(140, 260) << QList<double>{-10.0, 0.0, 364.0, 255.0};
    QTest::newRow("above the plot: x")
        << QPointF(140, 5) << QList<double>{-10.0, 0.0, 364.0, 255.0};
    // In a corner, both axes zoom out by 1.1: around (-20, -15), (10, 10), (350, 265)
    // and (330, 5) in data values.
    QTest::newRow("lower left corner, outside: both axes")
        << QPointF(20, 285) << QList<double>{2.0, 1.5, 376.0, 282.0};
    QTest::newRow("lower left corner, inside: both axes")
        << QPointF(50, 260) << QList<double>{-1.0, -1.0, 373.0, 279.5};
    QTest::newRow("upper right corner, outside: both axes")
        << QPointF(390, 5) << QList<double>{-35.0, -26.5, 339.0, 254.0};
    QTest::newRow("lower right corner, inside: both axes")
        << QPointF(370, 265) << QList<double>{-33.0, -0.5, 341.0, 280.0};
}

void tst_DispArea::edgeBandsSelectTheZoomedAxes()
{
    QFETCH(QPointF, at);
    QFETCH(QList<double>, expected);
    tests::move(m_area.get(), at);
    turnWheel(m_area.get(), at, {0, -120});
    QVERIFY(rangeIs(expected));
}

void tst_DispArea::edgeBandIsATenthOfThePlotArea_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<bool>("besideY");
    QTest::addColumn<bool>("besideX");
    // The edge bands are a tenth of the plot area, x = 40 to 380 and y = 15 to 270 in
    // pixels: 34 pixels wide and 25.5 pixels high. So their inner limits are x = 74 and
    // 346, y = 40.5 and 244.5; the limits do not belong to the bands.
    QTest::newRow("last column of the left band") << QPointF(73, 170) << true << false;
    QTest::newRow("first column right of the left band") << QPointF(74, 170) << false << false;
    QTest::newRow("last column before the right band") << QPointF(346, 170) << false << false;
    QTest::newRow("first column of the right band") << QPointF(347, 170) << true << false;
    QTest::newRow("last row of the upper band") << QPointF(140, 40) << false << true;
    QTest::newRow("first row below the upper band") << QPointF(140, 41) << false << false;
    QTest::newRow("last row before the lower band") << QPointF(140, 244) << false << false;
    QTest::newRow("first row of the lower band") << QPointF(140, 245) << false << true;
}

void tst_DispArea::edgeBandIsATenthOfThePlotArea()
{
    QFETCH(QPointF, at);
    QFETCH(bool, besideY);
    QFETCH(bool, besideX);
    tests::move(m_area.get(), at);
    turnWheel(m_area.get(), at, {0, -120});
    const bool xChanged = m_area->cc.realX1 - m_area->cc.realX0 > 341.0;
    const bool yChanged = m_area->cc.realY1 - m_area->cc.realY0 > 256.0;
    QCOMPARE(xChanged, !besideY);
    QCOMPARE(yChanged, !besideX);
}

void tst_DispArea::wheelZoomsAroundThePositionOfTheLastMove()
{
    tests::move(m_area.get(), {140.0, 170.0});
    turnWheel(m_area.get(), {20.0, 285.0}, {0, -120});
    QVERIFY(rangeIs({-10.0, -10.0, 364.0, 270.5}));
    QCOMPARE(m_area->mouse.now, QPoint(140, 170));
}

void tst_DispArea::zoomingInAndOutRestoresTheRange()
{
    tests::move(m_area.get(), {200.0, 100.0});
    turnWheel(m_area.get(), {200.0, 100.0}, {0, 120});
    QVERIFY(m_area->cc.realX0 > 1.0);
    turnWheel(m_area.get(), {200.0, 100.0}, {0, -120});
    QVERIFY(rangeIs(unitRange));
}

void tst_DispArea::wheelRepaintsOnceAndKeepsHasScale()
{
    tests::move(m_area.get(), {140.0, 170.0});
    PaintCounter paints(m_area.get());
    paints.restart();
    turnWheel(m_area.get(), {140.0, 170.0}, {0, -120});
    QVERIFY(m_area->hasScale);
    QCOMPARE(paints.within(50), 1);
    QVERIFY(m_area->hasScale);
    QVERIFY(rangeIs({-10.0, -10.0, 364.0, 270.5}));
}

void tst_DispArea::automaticRangeDiscardsWheelStepAtNextPaint()
{
    tests::move(m_area.get(), {140.0, 170.0});
    m_area->hasScale = false;
    turnWheel(m_area.get(), {140.0, 170.0}, {0, -120});
    QVERIFY(!m_area->hasScale);
    QVERIFY(rangeIs({-10.0, -10.0, 364.0, 270.5}));
    m_area->repaint();
    QVERIFY(rangeIs({0.0, 0.0, 1.0, 1.0}));
}

void tst_DispArea::wheelEmitsNoMouseSignal()
{
    m_lines->add("100");
    tests::move(m_area.get(), {140.0, 170.0});
    record();
    turnWheel(m_area.get(), {140.0, 170.0}, {0, -120});
    QCOMPARE(m_order, QStringList());
    QCOMPARE(m_lines->text(0), "100");
}

// The whole widget of 400 by 300 pixels covers 0 to 1 on both axes. Pixel row 75 is a
// quarter of the height below the top, and y values grow upward, so y is 0.75.
void tst_DispArea::positionsBeforeFirstPaintReferToWholeWidget()
{
    DispArea area;
    const QSignalSpy positions(&area, &DispArea::nowPos);
    move(&area, {100.0, 75.0});
    QCOMPARE(positions.size(), 1);
    QCOMPARE(positions.first().at(0).toDouble(), 0.25);
    QCOMPARE(positions.first().at(1).toDouble(), 0.75);
}

void tst_DispArea::signalsAreDeclaredInTheExpectedOrder()
{
    QCOMPARE(memberNames(DispArea::staticMetaObject, QMetaMethod::Signal),
             (QStringList{"nowPos(double,double)", "draw(QStylePainter*)", "mPressed(MouseC*)",
                          "mDragging(MouseC*)", "mReleased(MouseC*)", "mDClicked(MouseC*)"}));
    QCOMPARE(memberNames(DispArea::staticMetaObject, QMetaMethod::Slot), QStringList());
}

QTEST_MAIN(tst_DispArea)
#include "tst_DispArea.moc"
