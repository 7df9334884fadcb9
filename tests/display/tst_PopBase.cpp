// The window that holds a drawing while it is popped out.

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

/// A frame whose grid holds something at row 1, and the window for it.
struct Home {
    Home() { grid.addWidget(&content, 1, 0); }

    QFrame frame;
    QGridLayout grid{&frame};
    PopBase pop{&frame};
    QFrame content;
    bool docked = true;

    void popDock() { pop.popDock(&content, &grid, &docked); }
};

/// A window on the screen, and how often it said that it was closed.
struct ShownPop {
    ShownPop() { pop.show(); }
    bool isReady() { return QTest::qWaitForWindowExposed(&pop); }

    QWidget owner;
    PopBase pop{&owner};
    QSignalSpy closed{&pop, &PopBase::closed};
};

constexpr int settled = 60; // milliseconds

} // namespace

class tst_PopBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formIsAFrameAroundOneLayout();
    void startsAsAHiddenWindowOfItsOwner();
    void closingTellsItOnce();
    void secondCloseTellsNothing();
    void hidingDoesNotTell();
    void contentMovesInAndBackToRowOne();
    void updateLeavesTheContentAlone();
    void closedIsItsOnlySignal();
};

void tst_PopBase::formIsAFrameAroundOneLayout()
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

void tst_PopBase::closingTellsItOnce()
{
    ShownPop shown;
    QVERIFY(shown.isReady());
    QVERIFY(shown.pop.windowHandle()->close());
    QCOMPARE(shown.closed.size(), 1);
    QVERIFY(!shown.pop.isVisible());
}

// As when a calculation keeps the windows waiting and the user clicks twice.
void tst_PopBase::secondCloseTellsNothing()
{
    ShownPop shown;
    QVERIFY(shown.isReady());
    QWindow* window = shown.pop.windowHandle();
    for (int i = 0; i < 2; ++i) {
        QCloseEvent event;
        QCoreApplication::sendEvent(window, &event);
    }
    QCOMPARE(shown.closed.size(), 1);
}

void tst_PopBase::hidingDoesNotTell()
{
    ShownPop shown;
    QVERIFY(shown.isReady());
    shown.pop.hide();
    QCOMPARE(shown.closed.size(), 0);
}

void tst_PopBase::contentMovesInAndBackToRowOne()
{
    Home home;
    home.frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&home.frame));
    home.popDock();
    QVERIFY(!home.docked);
    QVERIFY(home.pop.isVisible());
    QCOMPARE(home.content.window(), &home.pop);
    QCOMPARE(home.pop.PopBaseLayout->indexOf(&home.content), 0);
    QVERIFY(!home.grid.itemAtPosition(1, 0));
    home.popDock();
    QVERIFY(home.docked);
    QVERIFY(!home.pop.isVisible());
    QCOMPARE(home.content.parentWidget(), &home.frame);
    QCOMPARE(home.pop.PopBaseLayout->count(), 0);
    QVERIFY(home.grid.itemAtPosition(1, 0));
    QCOMPARE(home.grid.itemAtPosition(1, 0)->widget(), &home.content);
}

void tst_PopBase::updateLeavesTheContentAlone()
{
    Home home;
    home.frame.show();
    home.popDock();
    QVERIFY(QTest::qWaitForWindowExposed(&home.pop));
    PaintCounter window(&home.pop);
    PaintCounter content(&home.content);
    window.settle();
    content.settle();
    home.pop.update();
    QCOMPARE(window.within(settled), 1);
    QVERIFY(window.region().contains(home.pop.rect().topLeft()));
    QVERIFY(!window.region().contains(home.content.geometry().center()));
    QCOMPARE(content.count(), 0);
}

void tst_PopBase::closedIsItsOnlySignal()
{
    QCOMPARE(tests::memberNames(PopBase::staticMetaObject, QMetaMethod::Signal),
             QStringList{"closed()"});
}

QTEST_MAIN(tst_PopBase)
#include "tst_PopBase.moc"
