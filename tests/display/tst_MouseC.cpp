// Tests of MouseC, the mouse state: which event sets which fields.

#include "display/MouseC.h"

#include <QMouseEvent>
#include <QTest>

namespace
{

constexpr QPoint origin(0, 0);

QMouseEvent eventAt(const QPointF& at, Qt::MouseButton button = Qt::NoButton,
                    Qt::KeyboardModifiers keys = {})
{
    return {QEvent::MouseMove, at, at, button, button, keys};
}

void move(MouseC& mouse, const QPointF& at)
{
    const QMouseEvent event = eventAt(at);
    mouse.moved(&event);
}

} // namespace

class tst_MouseC : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allFieldsAreInitiallyZero();
    void moveRecordsPositionButtonAndKeys();
    void doubleClickChangesOnlyItsOwnFields();
    void eachEventRecordsItsButtonKeysAndPosition();
    void movePressAndReleaseStoreThePreviousPosition();
    void pressedIsTrueUntilAnyButtonIsReleased();
    void halfPixelPositionsAreRoundedAwayFromZero_data();
    void halfPixelPositionsAreRoundedAwayFromZero();
    void mouseStateHasNeitherSignalsNorSlots();
};

void tst_MouseC::allFieldsAreInitiallyZero()
{
    const MouseC mouse;
    for (const QPoint& position :
         {mouse.prev, mouse.now, mouse.pressPos, mouse.releasePos, mouse.dClickPos}) {
        QCOMPARE(position, origin);
    }
    QVERIFY(!mouse.pressed);
    for (const int button :
         {mouse.moveButton, mouse.pressButton, mouse.releaseButton, mouse.dClickButton}) {
        QCOMPARE(button, 0);
    }
    for (const Qt::KeyboardModifiers keys :
         {mouse.moveMods, mouse.pressMods, mouse.releaseMods, mouse.dClickMods}) {
        QCOMPARE(keys, Qt::KeyboardModifiers());
    }
}

// The recorded button is the button that caused the event, not a button that is held.
// For a move it is usually Qt::NoButton.
void tst_MouseC::moveRecordsPositionButtonAndKeys()
{
    MouseC mouse;
    const QMouseEvent event(QEvent::MouseMove, QPointF(12.0, 34.0), QPointF(12.0, 34.0),
                            Qt::BackButton, Qt::LeftButton, Qt::ShiftModifier | Qt::MetaModifier);
    mouse.moved(&event);
    QCOMPARE(mouse.now, QPoint(12, 34));
    QCOMPARE(mouse.prev, origin);
    QCOMPARE(mouse.moveButton, Qt::BackButton);
    QCOMPARE(mouse.moveMods, Qt::ShiftModifier | Qt::MetaModifier);
    QVERIFY(!mouse.pressed);
}

void tst_MouseC::doubleClickChangesOnlyItsOwnFields()
{
    MouseC mouse;
    move(mouse, {1.0, 2.0});
    move(mouse, {3.0, 4.0});
    const QMouseEvent event = eventAt({12.0, 34.0}, Qt::RightButton, Qt::ShiftModifier);
    mouse.dClicked(&event);
    QCOMPARE(mouse.dClickPos, QPoint(12, 34));
    QCOMPARE(mouse.dClickButton, Qt::RightButton);
    QCOMPARE(mouse.dClickMods, Qt::ShiftModifier);
    QCOMPARE(mouse.prev, QPoint(1, 2));
    QCOMPARE(mouse.now, QPoint(3, 4));
    QVERIFY(!mouse.pressed);
    mouse.pressed = true;
    mouse.dClicked(&event);
    QVERIFY(mouse.pressed);
}

void tst_MouseC::eachEventRecordsItsButtonKeysAndPosition()
{
    MouseC mouse;
    const QMouseEvent pressing = eventAt({1.0, 1.0}, Qt::LeftButton, Qt::ShiftModifier);
    const QMouseEvent moving = eventAt({2.0, 2.0}, Qt::NoButton, Qt::ControlModifier);
    const QMouseEvent releasing = eventAt({3.0, 3.0}, Qt::RightButton, Qt::AltModifier);
    const QMouseEvent clicking = eventAt({4.0, 4.0}, Qt::MiddleButton, Qt::MetaModifier);
    mouse.recordPressed(&pressing);
    mouse.moved(&moving);
    mouse.released(&releasing);
    mouse.dClicked(&clicking);
    QCOMPARE(mouse.pressPos, QPoint(1, 1));
    QCOMPARE(mouse.pressButton, Qt::LeftButton);
    QCOMPARE(mouse.pressMods, Qt::ShiftModifier);
    QCOMPARE(mouse.moveButton, Qt::NoButton);
    QCOMPARE(mouse.moveMods, Qt::ControlModifier);
    QCOMPARE(mouse.now, QPoint(3, 3));
    QCOMPARE(mouse.releasePos, QPoint(3, 3));
    QCOMPARE(mouse.releaseButton, Qt::RightButton);
    QCOMPARE(mouse.releaseMods, Qt::AltModifier);
    QCOMPARE(mouse.dClickPos, QPoint(4, 4));
    QCOMPARE(mouse.dClickButton, Qt::MiddleButton);
    QCOMPARE(mouse.dClickMods, Qt::MetaModifier);
}

void tst_MouseC::movePressAndReleaseStoreThePreviousPosition()
{
    MouseC mouse;
    const QMouseEvent pressing = eventAt({20.0, 2.0}, Qt::LeftButton);
    const QMouseEvent releasing = eventAt({40.0, 4.0}, Qt::LeftButton);
    move(mouse, {10.0, 1.0});
    QCOMPARE(mouse.prev, origin);
    mouse.recordPressed(&pressing);
    QCOMPARE(mouse.prev, QPoint(10, 1));
    QCOMPARE(mouse.now, QPoint(20, 2));
    move(mouse, {30.0, 3.0});
    QCOMPARE(mouse.prev, QPoint(20, 2));
    mouse.released(&releasing);
    QCOMPARE(mouse.prev, QPoint(30, 3));
    move(mouse, {50.0, 5.0});
    QCOMPARE(mouse.prev, QPoint(40, 4));
    QCOMPARE(mouse.now, QPoint(50, 5));
}

void tst_MouseC::pressedIsTrueUntilAnyButtonIsReleased()
{
    MouseC mouse;
    const QMouseEvent left = eventAt({1.0, 1.0}, Qt::LeftButton);
    const QMouseEvent right = eventAt({2.0, 2.0}, Qt::RightButton);
    mouse.recordPressed(&right);
    QVERIFY(mouse.pressed);
    mouse.recordPressed(&left);
    move(mouse, {3.0, 3.0});
    QVERIFY(mouse.pressed);
    QCOMPARE(mouse.pressButton, Qt::LeftButton);
    mouse.released(&right); // the left button is still pressed
    QVERIFY(!mouse.pressed);
}

void tst_MouseC::halfPixelPositionsAreRoundedAwayFromZero_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<QPoint>("pixel");
    QTest::newRow("integers") << QPointF(7.0, -7.0) << QPoint(7, -7);
    QTest::newRow("zero") << QPointF(0.0, -0.0) << QPoint(0, 0);
    QTest::newRow("below half") << QPointF(7.25, 7.4375) << QPoint(7, 7);
    QTest::newRow("half") << QPointF(7.5, 8.5) << QPoint(8, 9);
    QTest::newRow("above half") << QPointF(7.75, 0.5625) << QPoint(8, 1);
    QTest::newRow("halves next to zero") << QPointF(0.5, -0.5) << QPoint(1, -1);
    QTest::newRow("negative below half") << QPointF(-0.25, -3.4375) << QPoint(0, -3);
    QTest::newRow("negative half") << QPointF(-1.5, -2.5) << QPoint(-2, -3);
    QTest::newRow("negative above half") << QPointF(-0.75, -2.5625) << QPoint(-1, -3);
    QTest::newRow("coordinates are rounded independently") << QPointF(2.5, -2.5) << QPoint(3, -3);
}

void tst_MouseC::halfPixelPositionsAreRoundedAwayFromZero()
{
    QFETCH(QPointF, at);
    QFETCH(QPoint, pixel);
    MouseC mouse;
    const QMouseEvent event = eventAt(at, Qt::LeftButton);
    mouse.moved(&event);
    QCOMPARE(mouse.now, pixel);
    mouse.recordPressed(&event);
    QCOMPARE(mouse.pressPos, pixel);
    mouse.released(&event);
    QCOMPARE(mouse.releasePos, pixel);
    mouse.dClicked(&event);
    QCOMPARE(mouse.dClickPos, pixel);
}

void tst_MouseC::mouseStateHasNeitherSignalsNorSlots()
{
    QCOMPARE(MouseC::staticMetaObject.methodCount(), QObject::staticMetaObject.methodCount());
}

QTEST_GUILESS_MAIN(tst_MouseC)
#include "tst_MouseC.moc"
