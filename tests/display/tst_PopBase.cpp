// Tests of PopBase, the window of a popped-out plot or map.

#include "display/PopBase.h"
#include "support/MemberOrder.h"
#include "support/PaintCounter.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

using tests::PaintCounter;

namespace
{

/// A frame with its content in row 1 of its grid layout, and the pop-out window.
struct DockingFrame {
    DockingFrame() { grid.addWidget(&content, 1, 0); }

    QFrame frame;
    QGridLayout grid{&frame};
    PopBase pop{&frame};
    QFrame content;
    bool docked = true;

    void popDock() { pop.popDock(&content, &grid, &docked); }
};

/// A visible window, and a counter of its closed() signals.
struct ShownWindow {
    ShownWindow() { pop.show(); }
    bool isReady() { return QTest::qWaitForWindowExposed(&pop); }

    QWidget owner;
    PopBase pop{&owner};
    QSignalSpy closed{&pop, &PopBase::closed};
};

constexpr int settleTime = 60; // milliseconds

} // namespace

class tst_PopBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formIsAFrameWithAnEmptyInnerLayout();
    void startsAsAHiddenWindowOfItsOwner();
    void closingEmitsClosedOnce();
    void secondCloseEmitsNothing();
    void hidingEmitsNothing();
    void popDockMovesTheContentIntoTheWindowAndBack();
    void updateDoesNotRepaintTheContent();
    void closedIsTheOnlySignal();
};

void tst_PopBase::formIsAFrameWithAnEmptyInnerLayout()
{
    QWidget owner;
    const PopBase pop(&owner);
    QCOMPARE(pop.objectName(), "PopBase");
    QCOMPARE(pop.windowTitle(), "Frame");
    QCOMPARE(pop.frameShape(), QFrame::StyledPanel);
    QCOMPARE(pop.frameShadow(), QFrame::Raised);
    const auto* grid = qobject_cast<QGridLayout*>(pop.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), "gridLayout_2");
    QCOMPARE(grid->horizontalSpacing(), 0);
    QCOMPARE(grid->verticalSpacing(), 0);
    QCOMPARE(grid->count(), 1);
    QCOMPARE(grid->itemAt(0)->layout(), pop.PopBaseLayout);
    QCOMPARE(pop.PopBaseLayout->objectName(), "PopBaseLayout");
    QCOMPARE(pop.PopBaseLayout->count(), 0);
}

void tst_PopBase::startsAsAHiddenWindowOfItsOwner()
{
    QWidget owner;
    const PopBase pop(&owner);
    QCOMPARE(pop.parentWidget(), &owner);
    QVERIFY(pop.isWindow());
    QCOMPARE(pop.windowType(), Qt::Window);
    QCOMPARE(pop.size(), QSize(800, 600));
    owner.show();
    QVERIFY(QTest::qWaitForWindowExposed(&owner));
    QVERIFY(!pop.isVisible());
}

void tst_PopBase::closingEmitsClosedOnce()
{
    ShownWindow shown;
    QVERIFY(shown.isReady());
    QVERIFY(shown.pop.windowHandle()->close());
    QCOMPARE(shown.closed.size(), 1);
    QVERIFY(!shown.pop.isVisible());
}

// During a long calculation the user can click the close button twice, so that two
// close events are queued.
void tst_PopBase::secondCloseEmitsNothing()
{
    ShownWindow shown;
    QVERIFY(shown.isReady());
    QWindow* window = shown.pop.windowHandle();
    for (int i = 0; i < 2; ++i) {
        QCloseEvent event;
        QCoreApplication::sendEvent(window, &event);
    }
    QCOMPARE(shown.closed.size(), 1);
}

void tst_PopBase::hidingEmitsNothing()
{
    ShownWindow shown;
    QVERIFY(shown.isReady());
    shown.pop.hide();
    QCOMPARE(shown.closed.size(), 0);
}

void tst_PopBase::popDockMovesTheContentIntoTheWindowAndBack()
{
    DockingFrame docking;
    docking.frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&docking.frame));
    docking.popDock();
    QVERIFY(!docking.docked);
    QVERIFY(docking.pop.isVisible());
    QCOMPARE(docking.content.window(), &docking.pop);
    QCOMPARE(docking.pop.PopBaseLayout->indexOf(&docking.content), 0);
    QVERIFY(!docking.grid.itemAtPosition(1, 0));
    docking.popDock();
    QVERIFY(docking.docked);
    QVERIFY(!docking.pop.isVisible());
    QCOMPARE(docking.content.parentWidget(), &docking.frame);
    QCOMPARE(docking.pop.PopBaseLayout->count(), 0);
    QVERIFY(docking.grid.itemAtPosition(1, 0));
    QCOMPARE(docking.grid.itemAtPosition(1, 0)->widget(), &docking.content);
}

void tst_PopBase::updateDoesNotRepaintTheContent()
{
    DockingFrame docking;
    docking.frame.show();
    docking.popDock();
    QVERIFY(QTest::qWaitForWindowExposed(&docking.pop));
    PaintCounter window(&docking.pop);
    PaintCounter content(&docking.content);
    window.restart();
    content.restart();
    docking.pop.update();
    QCOMPARE(window.within(settleTime), 1);
    QVERIFY(window.region().contains(docking.pop.rect().topLeft()));
    QVERIFY(!window.region().contains(docking.content.geometry().center()));
    QCOMPARE(content.count(), 0);
}

void tst_PopBase::closedIsTheOnlySignal()
{
    QCOMPARE(tests::memberNames(PopBase::staticMetaObject, QMetaMethod::Signal),
             QStringList{"closed()"});
}

QTEST_MAIN(tst_PopBase)
#include "tst_PopBase.moc"
