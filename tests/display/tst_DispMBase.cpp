// Tests of DispMBase, the frame of a map: its form, its read-out fields and the limits
// of its colours.

#include "display/DispMBase.h"
#include "rows/FormChecks.h"
#include "support/MemberOrder.h"
#include "support/MouseInput.h"
#include "support/PaintCounter.h"
#include "support/PictureTools.h"

#include <QApplication>
#include <QGridLayout>
#include <QSignalSpy>
#include <QStylePainter>
#include <QTest>

#include <functional>

using namespace tests;

/// An action that changes the colours of the map in a frame.
using Action = std::function<void(DispMBase*)>;

class tst_DispMBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void frameCanBeDestroyedWhileALimitIsEdited();
    void surfaceIsBelowTheStripAndBesideTheColourBar();
    void colourBarIsBetweenItsNarrowLimitFields();
    void limitFieldsInitiallyShowTheDefaultsOfTheColourBar();
    void signalsAndSlotsAreDeclaredInTheExpectedOrder();

    void mousePositionIsForwardedAfterTheReadOutsAreUpdated();
    void mousePositionDoesNotChangeTheValueField();
    void readOutLeavesTheCursorAtTheEnd();
    void readOutShowsSixDigits();

    void limitIsAppliedWhenEditingEnds_data();
    void limitIsAppliedWhenEditingEnds();
    void limitIsNotAppliedWhileTyping();
    void unparsableLimitIsZero_data();
    void unparsableLimitIsZero();
    void reversedLimitsAreSwapped_data();
    void reversedLimitsAreSwapped();
    void limitFieldsShowTheSwappedLimits();
    void limitsSetInTheColourBarAreShownInTheLimitFields();
    void leavingAnUneditedLimitKeepsItsFullPrecision_data();
    void leavingAnUneditedLimitKeepsItsFullPrecision();
    void typedLimitKeepsAutoScale();

    void setZRangeSetsTheColourBarAndTheLimitFields_data();
    void setZRangeSetsTheColourBarAndTheLimitFields();
    void setZRangeShowsSixDigitsWithCursorAtStart();
    void nanRangeIsShownAndCanBeReplaced_data();
    void nanRangeIsShownAndCanBeReplaced();
    void setZRangeKeepsTheView();

    void colourChangeRepaintsTheSurfaceOnce_data();
    void colourChangeRepaintsTheSurfaceOnce();
    void frameAddsNothingToTheClientsDrawing();

private:
    bool show();
    void type(QLineEdit* edit, const QString& text, bool leave);

    std::unique_ptr<DispMBase> m_frame;
};

void tst_DispMBase::init()
{
    m_frame = std::make_unique<DispMBase>();
}

// The frame is destroyed at the end of each test. A limit field that still has the
// focus then emits editingFinished, which the frame must ignore.
void tst_DispMBase::cleanup()
{
    m_frame.reset();
}

// A focused QLineEdit emits editingFinished when its window is destroyed. The frame
// must not react to it then.
void tst_DispMBase::frameCanBeDestroyedWhileALimitIsEdited()
{
    auto frame = std::make_unique<DispMBase>();
    frame->show();
    QVERIFY(QTest::qWaitForWindowActive(frame.get()));
    frame->MaxV->setFocus();
    QTest::keyClicks(frame->MaxV, QStringLiteral("5"));
    QVERIFY(frame->MaxV->hasFocus());
    const QSignalSpy finished(frame->MaxV, &QLineEdit::editingFinished);
    frame.reset();
    QCOMPARE(finished.size(), 1);
}

bool tst_DispMBase::show()
{
    m_frame->show();
    QApplication::setActiveWindow(m_frame.get());
    return QTest::qWaitForWindowActive(m_frame.get());
}

/// Replaces the text of @p edit, then presses Return or, with @p leave, moves the focus
/// to another field.
void tst_DispMBase::type(QLineEdit* edit, const QString& text, bool leave)
{
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    if (leave) {
        m_frame->Val->setFocus();
    } else {
        QTest::keyClick(edit, Qt::Key_Return);
    }
}

void tst_DispMBase::surfaceIsBelowTheStripAndBesideTheColourBar()
{
    const auto* grid = qobject_cast<QGridLayout*>(m_frame->DispABFrame->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), "gridLayout_3");
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(grid->count(), 3);
    for (const int column : {0, 1, 2, 3}) {
        QVERIFY(grid->itemAtPosition(0, column));
        QCOMPARE(grid->itemAtPosition(0, column)->widget(), m_frame->frame);
    }
    QVERIFY(!grid->itemAtPosition(0, 4));
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), m_frame->DispA);
    QVERIFY(!grid->itemAtPosition(1, 1));
    QCOMPARE(grid->itemAtPosition(1, 2)->widget(), m_frame->frame_2);
    QCOMPARE(m_frame->frame->objectName(), "frame");
    QCOMPARE(m_frame->frame->frameShape(), QFrame::NoFrame);
    QCOMPARE(m_frame->frame->frameShadow(), QFrame::Plain);
    QCOMPARE(m_frame->frame->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(m_frame->DispA->objectName(), "DispA");
    QCOMPARE(m_frame->DispA->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(m_frame->DispA->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
}

void tst_DispMBase::colourBarIsBetweenItsNarrowLimitFields()
{
    QCOMPARE(m_frame->frame_2->objectName(), "frame_2");
    const auto* grid = qobject_cast<QGridLayout*>(m_frame->frame_2->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), "gridLayout_4");
    QCOMPARE(grid->contentsMargins(), QMargins(1, 1, 1, 1));
    QCOMPARE(grid->verticalSpacing(), 3);
    QCOMPARE(grid->count(), 3);
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), m_frame->MaxV);
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), m_frame->CBar);
    QCOMPARE(grid->itemAtPosition(2, 0)->widget(), m_frame->MinV);
    QCOMPARE(m_frame->CBar->objectName(), "CBar");
    QCOMPARE(m_frame->CBar->minimumWidth(), 30);
    for (const QLineEdit* limit : {m_frame->MaxV, m_frame->MinV}) {
        QCOMPARE(limit->maximumWidth(), 60);
        QVERIFY(isRightAligned(limit));
        QVERIFY(!limit->isReadOnly());
    }
}

void tst_DispMBase::limitFieldsInitiallyShowTheDefaultsOfTheColourBar()
{
    QCOMPARE(m_frame->MaxV->text(), "1");
    QCOMPARE(m_frame->MinV->text(), "0");
}

void tst_DispMBase::signalsAndSlotsAreDeclaredInTheExpectedOrder()
{
    const QMetaObject& meta = DispMBase::staticMetaObject;
    QCOMPARE(memberNames(meta, QMetaMethod::Signal),
             (QStringList{"draw(QStylePainter*)", "nowPos(double,double)", "mPressed(MouseC*)",
                          "mDragging(MouseC*)", "mReleased(MouseC*)", "mDClicked(MouseC*)"}));
    QCOMPARE(memberNames(meta, QMetaMethod::Slot).first(6),
             (QStringList{"receiveNowPos(double,double)", "receiveDraw(QStylePainter*)",
                          "popDock()", "clearScale()", "newZmax()", "newZmin()"}));
}

// The read-out fields are already updated when the client receives the signal.
void tst_DispMBase::mousePositionIsForwardedAfterTheReadOutsAreUpdated()
{
    QVERIFY(show());
    m_frame->DispA->cc.setArea(0.0, 200.0, 100.0, 0.0);
    m_frame->DispA->cc.setReal(0.0, 0.0, 1.0, 1.0);
    QStringList shown;
    connect(m_frame.get(), &DispMBase::nowPos, this,
            [&] { shown << m_frame->XPos->text() << m_frame->YPos->text(); });
    const QSignalSpy positions(m_frame.get(), &DispMBase::nowPos);
    tests::move(m_frame->DispA, {75.0, 150.0});
    press(m_frame->DispA, {75.0, 150.0});
    drag(m_frame->DispA, {50.0, 100.0});
    QCOMPARE(positions.size(), 2);
    QCOMPARE(positions.at(0), (QVariantList{0.75, 0.25}));
    QCOMPARE(positions.at(1), (QVariantList{0.5, 0.5}));
    QCOMPARE(shown, (QStringList{"0.75", "0.25", "0.5", "0.5"}));
}

void tst_DispMBase::mousePositionDoesNotChangeTheValueField()
{
    m_frame->Val->setText("client's");
    m_frame->receiveNowPos(1.0, 2.0);
    QCOMPARE(m_frame->Val->text(), "client's");
}

// The read-out fields of a plot differ on purpose: their cursor is at the start of the
// number.
void tst_DispMBase::readOutLeavesTheCursorAtTheEnd()
{
    m_frame->receiveNowPos(8333.2469, -1.5);
    QCOMPARE(m_frame->XPos->cursorPosition(), 7);
    QCOMPARE(m_frame->YPos->cursorPosition(), 4);
}

void tst_DispMBase::readOutShowsSixDigits()
{
    m_frame->receiveNowPos(8333.2469, 1234567.0);
    QCOMPARE(m_frame->XPos->text(), "8333.25");
    QCOMPARE(m_frame->YPos->text(), "1.23457e+06");
}

void tst_DispMBase::limitIsAppliedWhenEditingEnds_data()
{
    QTest::addColumn<bool>("leave");
    QTest::newRow("Return") << false;
    QTest::newRow("focus leaves the field") << true;
}

void tst_DispMBase::limitIsAppliedWhenEditingEnds()
{
    QFETCH(bool, leave);
    QVERIFY(show());
    type(m_frame->MaxV, "2.5", leave);
    QCOMPARE(m_frame->CBar->zmax, 2.5);
    QCOMPARE(m_frame->CBar->zmin, 0.0);
    type(m_frame->MinV, "-1e-2", leave);
    QCOMPARE(m_frame->CBar->zmin, -0.01);
    QCOMPARE(m_frame->CBar->zmax, 2.5);
}

void tst_DispMBase::limitIsNotAppliedWhileTyping()
{
    QVERIFY(show());
    const QSignalSpy scales(m_frame->CBar, &cBar::newScale);
    m_frame->MaxV->setFocus();
    QTest::keyClicks(m_frame->MaxV, "25");
    QCOMPARE(m_frame->CBar->zmax, 1.0);
    QCOMPARE(scales.size(), 0);
    m_frame->MinV->setText("-7"); // set by a client, not typed
    QCOMPARE(m_frame->CBar->zmin, 0.0);
}

void tst_DispMBase::unparsableLimitIsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("letters") << "high";
    QTest::newRow("comma") << "2,5";
    QTest::newRow("number with a unit") << "2.5um";
    QTest::newRow("space") << " ";
}

void tst_DispMBase::unparsableLimitIsZero()
{
    QFETCH(QString, text);
    QVERIFY(show());
    m_frame->CBar->zmin = -2.0;
    type(m_frame->MaxV, text, false);
    QCOMPARE(m_frame->CBar->zmax, 0.0);
    QCOMPARE(m_frame->CBar->zmin, -2.0);
    type(m_frame->MinV, text, false);
    QCOMPARE(m_frame->CBar->zmin, 0.0);
    QCOMPARE(m_frame->CBar->zmax, 0.0);
}

void tst_DispMBase::reversedLimitsAreSwapped_data()
{
    // True to change the upper limit of the range 1 to 3, false to change the lower limit.
    QTest::addColumn<bool>("upper");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("zmin");
    QTest::addColumn<double>("zmax");
    QTest::newRow("upper limit below the lower limit") << true << "-5" << -5.0 << 1.0;
    QTest::newRow("unparsable upper limit") << true << "high" << 0.0 << 1.0;
    QTest::newRow("upper limit equal to the lower limit") << true << "1" << 1.0 << 1.0;
    QTest::newRow("lower limit above the upper limit") << false << "7" << 3.0 << 7.0;
    QTest::newRow("lower limit equal to the upper limit") << false << "3" << 3.0 << 3.0;
}

void tst_DispMBase::reversedLimitsAreSwapped()
{
    QFETCH(bool, upper);
    QFETCH(QString, text);
    m_frame->CBar->zmin = 1.0;
    m_frame->CBar->zmax = 3.0;
    QVERIFY(show());
    type(upper ? m_frame->MaxV : m_frame->MinV, text, false);
    QTEST(m_frame->CBar->zmin, "zmin");
    QTEST(m_frame->CBar->zmax, "zmax");
}

void tst_DispMBase::limitFieldsShowTheSwappedLimits()
{
    m_frame->setZRange(1.5, 3.5);
    QVERIFY(show());
    type(m_frame->MaxV, "1", false);
    QCOMPARE(m_frame->MinV->text(), "1");
    QCOMPARE(m_frame->MaxV->text(), "1.5");
    type(m_frame->MinV, "0.5", false);
    QCOMPARE(m_frame->CBar->zmin, 0.5);
    QCOMPARE(m_frame->CBar->zmax, 1.5);
    QCOMPARE(m_frame->MinV->text(), "0.5");
    QCOMPARE(m_frame->MaxV->text(), "1.5");
}

void tst_DispMBase::limitsSetInTheColourBarAreShownInTheLimitFields()
{
    m_frame->CBar->newZmax(7.25);
    QCOMPARE(m_frame->MaxV->text(), "7.25");
    m_frame->CBar->newZmin(8.5);
    QCOMPARE(m_frame->MinV->text(), "7.25");
    QCOMPARE(m_frame->MaxV->text(), "8.5");
}

void tst_DispMBase::leavingAnUneditedLimitKeepsItsFullPrecision_data()
{
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");
    QTest::newRow("limits with more digits than are shown") << 1.23456789 << 3.98765432;
    QTest::newRow("reversed limits") << 9.5 << 0.5;
}

void tst_DispMBase::leavingAnUneditedLimitKeepsItsFullPrecision()
{
    QFETCH(double, lo);
    QFETCH(double, hi);
    m_frame->setZRange(lo, hi);
    QVERIFY(show());
    const QSignalSpy scales(m_frame->CBar, &cBar::newScale);
    const QString lower = m_frame->MinV->text();
    const QString upper = m_frame->MaxV->text();
    for (QLineEdit* edit : {m_frame->MaxV, m_frame->MinV, m_frame->MaxV}) {
        QTest::mouseClick(edit, Qt::LeftButton);
        QVERIFY(edit->hasFocus());
        QTest::keyClick(edit, Qt::Key_Return);
        QTest::keyClick(edit, Qt::Key_Tab);
    }
    QCOMPARE(m_frame->CBar->zmin, std::min(lo, hi));
    QCOMPARE(m_frame->CBar->zmax, std::max(lo, hi));
    QCOMPARE(scales.size(), 0);
    Q_EMIT m_frame->CBar->newScale(); // as if its lines were dragged
    QCOMPARE(m_frame->MinV->text(), lower);
    QCOMPARE(m_frame->MaxV->text(), upper);
}

void tst_DispMBase::typedLimitKeepsAutoScale()
{
    QVERIFY(show());
    type(m_frame->MaxV, "-5", false);
    QVERIFY(m_frame->CBar->autoScale);
}

void tst_DispMBase::setZRangeSetsTheColourBarAndTheLimitFields_data()
{
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");
    QTest::addColumn<QStringList>("texts");
    // The old range is 10 to 20.
    QTest::newRow("above the old range") << 30.0 << 40.0 << QStringList{"30", "40"};
    QTest::newRow("overlapping from above") << 15.0 << 40.0 << QStringList{"15", "40"};
    QTest::newRow("starting at the upper limit") << 20.0 << 40.0 << QStringList{"20", "40"};
    QTest::newRow("below the old range") << -40.0 << -30.0 << QStringList{"-40", "-30"};
    QTest::newRow("overlapping from below") << -40.0 << 15.0 << QStringList{"-40", "15"};
    QTest::newRow("ending at the lower limit") << -40.0 << 10.0 << QStringList{"-40", "10"};
    QTest::newRow("within the old range") << 12.0 << 18.0 << QStringList{"12", "18"};
    QTest::newRow("around the old range") << -5.0 << 50.0 << QStringList{"-5", "50"};
    QTest::newRow("unchanged") << 10.0 << 20.0 << QStringList{"10", "20"};
    QTest::newRow("empty, inside") << 15.0 << 15.0 << QStringList{"15", "15"};
    QTest::newRow("empty, above") << 30.0 << 30.0 << QStringList{"30", "30"};
    // Reversed limits are shown as given.
    QTest::newRow("reversed above") << 40.0 << 30.0 << QStringList{"40", "30"};
    QTest::newRow("reversed below") << -30.0 << -40.0 << QStringList{"-30", "-40"};
    QTest::newRow("reversed within") << 18.0 << 12.0 << QStringList{"18", "12"};
    QTest::newRow("reversed around") << 50.0 << -5.0 << QStringList{"50", "-5"};
    QTest::newRow("infinite") << -qInf() << qInf() << QStringList{"-inf", "inf"};
}

void tst_DispMBase::setZRangeSetsTheColourBarAndTheLimitFields()
{
    QFETCH(double, lo);
    QFETCH(double, hi);
    m_frame->CBar->zmin = 10.0;
    m_frame->CBar->zmax = 20.0;
    m_frame->setZRange(lo, hi);
    QCOMPARE(m_frame->CBar->zmin, qMin(lo, hi));
    QCOMPARE(m_frame->CBar->zmax, qMax(lo, hi));
    QTEST((QStringList{m_frame->MinV->text(), m_frame->MaxV->text()}), "texts");
}

void tst_DispMBase::setZRangeShowsSixDigitsWithCursorAtStart()
{
    m_frame->setZRange(-1.0 / 3.0, 1234567.0);
    QCOMPARE(m_frame->MinV->text(), "-0.333333");
    QCOMPARE(m_frame->MaxV->text(), "1.23457e+06");
    QCOMPARE(m_frame->MinV->cursorPosition(), 0);
    QCOMPARE(m_frame->MaxV->cursorPosition(), 0);
    // The bar stores the limits with all digits.
    QCOMPARE(m_frame->CBar->zmin, -1.0 / 3.0);
    QCOMPARE(m_frame->CBar->zmax, 1234567.0);
}

void tst_DispMBase::nanRangeIsShownAndCanBeReplaced_data()
{
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("lower is NaN") << qQNaN() << 2.0 << QStringList{"nan", "2"};
    QTest::newRow("upper is NaN") << 2.0 << qQNaN() << QStringList{"2", "nan"};
    QTest::newRow("both are NaN") << qQNaN() << qQNaN() << QStringList{"nan", "nan"};
}

void tst_DispMBase::nanRangeIsShownAndCanBeReplaced()
{
    QFETCH(double, lo);
    QFETCH(double, hi);
    m_frame->setZRange(lo, hi);
    QTEST((QStringList{m_frame->MinV->text(), m_frame->MaxV->text()}), "texts");
    // If a limit is NaN, the table index is NaN too, and the first colour is used.
    QCOMPARE(m_frame->CBar->color(2.0), QColor(0, 0, 0));
    m_frame->setZRange(3.0, 4.0);
    QCOMPARE(m_frame->CBar->zmin, 3.0);
    QCOMPARE(m_frame->CBar->zmax, 4.0);
    m_frame->setZRange(lo, hi);
    m_frame->setZRange(-4.0, -3.0);
    QCOMPARE(m_frame->CBar->zmin, -4.0);
    QCOMPARE(m_frame->CBar->zmax, -3.0);
}

void tst_DispMBase::setZRangeKeepsTheView()
{
    m_frame->setRealCoord(1.0, 2.0, 3.0, 4.0);
    m_frame->setZRange(5.0, 6.0);
    QVERIFY(m_frame->DispA->hasScale);
    QCOMPARE(m_frame->DispA->cc.realX0, 1.0);
    QCOMPARE(m_frame->DispA->cc.realY0, 2.0);
    QCOMPARE(m_frame->DispA->cc.realX1, 3.0);
    QCOMPARE(m_frame->DispA->cc.realY1, 4.0);
    QVERIFY(m_frame->CBar->autoScale);
    QCOMPARE(m_frame->CBar->imin, 0.0);
    QCOMPARE(m_frame->CBar->imax, 768.0);
}

void tst_DispMBase::colourChangeRepaintsTheSurfaceOnce_data()
{
    QTest::addColumn<Action>("change");
    QTest::newRow("setZRange") << Action([](DispMBase* frame) { frame->setZRange(5.0, 6.0); });
    QTest::newRow("setAutoScale") << Action(
        [](DispMBase* frame) { frame->CBar->setAutoScale(true); });
    QTest::newRow("limit is typed") << Action([](DispMBase* frame) {
        frame->MaxV->setText(frame->MaxV->text() + "4");
        QTest::keyClick(frame->MaxV, Qt::Key_Return);
    });
}

void tst_DispMBase::colourChangeRepaintsTheSurfaceOnce()
{
    QFETCH(Action, change);
    QVERIFY(show());
    for (const bool out : {false, true}) {
        if (out) {
            m_frame->popDock();
            QVERIFY(QTest::qWaitForWindowExposed(m_frame->pop));
        }
        PaintCounter paints(m_frame->DispA);
        paints.restart();
        change(m_frame.get());
        QCOMPARE(paints.within(), 1);
        QCOMPARE(paints.within(), 1);
    }
}

void tst_DispMBase::frameAddsNothingToTheClientsDrawing()
{
    connect(m_frame.get(), &DispMBase::draw, this, [this](QStylePainter* p) {
        p->fillRect(m_frame->DispA->rect(), Qt::white);
        m_frame->DispA->cc.computeArea();
    });
    QVERIFY(isBlank(m_frame->DispA->grab().toImage()));
}

QTEST_MAIN(tst_DispMBase)
#include "tst_DispMBase.moc"
