// Tests of the focus: the order in which the Tab key moves it, and the widget that has it when
// a window opens.

#include "app/Body.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "support/PanelTools.h"

#include <QLabel>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace
{

/// Whether @p edit shows a result or a selected file and is not meant for typing. Such fields
/// have their own background colour.
bool isResultField(const QLineEdit* edit)
{
    return edit->styleSheet() == QLatin1String("background-color: rgb(255, 255, 220);");
}

/// The fields of @p window that the Tab key reaches in one full cycle of the focus
/// chain, starting at @p first.
QList<QLineEdit*> fieldsByTab(QWidget* window, QWidget* first)
{
    QList<QLineEdit*> fields;
    first->setFocus();
    do {
        if (auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget())) {
            if (edit->window() == window) {
                fields.append(edit);
            }
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && fields.size() < 500);
    return fields;
}

QString nameOf(const QWidget* widget)
{
    const QPoint at = widget->mapTo(widget->window(), QPoint(0, 0));
    return QStringLiteral("%1 at %2, %3").arg(widget->objectName()).arg(at.x()).arg(at.y());
}

/// The centre of a widget in the coordinates of its window.
QPoint centreOf(const QWidget* widget)
{
    return widget->mapTo(widget->window(), widget->rect().center());
}

/// Whether @p next is after @p before in reading order: it is lower, or in the same line of
/// widgets and farther right.
bool isReadAfter(const QWidget* next, const QWidget* before)
{
    const int lineHeight = before->height() / 2;
    const QPoint a = centreOf(before);
    const QPoint b = centreOf(next);
    return b.y() > a.y() + lineHeight || (b.y() > a.y() - lineHeight && b.x() > a.x());
}

} // namespace

class tst_TabOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void programStartsWithTheFocusOnTheFirstReference();
    void tabVisitsTheFieldsInReadingOrder();
    void tabReachesEveryEditableField();
    void tabVisitsTheConditionsBetweenResultsAndEnergyRows();
    void resultFieldsGetTheFocusOnlyByAClick();
    void tabReachesTheSaveName();
    void mapWindowOpensWithoutAFocusedField();
    void poppedOutMapOpensWithoutAFocusedField();
    void reopeningAMapWindowClearsTheFocusOfItsFields();
    void clickOnThePopOutButtonDoesNotFocusIt();
    void typingInANewMapWindowChangesNoField();
    void graphWindowOpensWithoutAFocusedButton();
    void tabMovesFromTheUpperToTheLowerLimit();

private:
    QList<QLineEdit*> typedFields() const;

    std::unique_ptr<Body> m_body;
    FourPs* m_panel = nullptr;
};

void tst_TabOrder::init()
{
    m_body = std::make_unique<Body>();
    m_panel = m_body->findChild<FourPs*>();
    m_body->show();
    m_body->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_body.get()));
}

void tst_TabOrder::cleanup()
{
    for (QWidget* window :
         std::initializer_list<QWidget*>{m_panel->Disps, m_panel->MapDisp, m_panel->DMapDisp}) {
        window->hide();
    }
    m_body.reset();
}

QList<QLineEdit*> tst_TabOrder::typedFields() const
{
    QList<QLineEdit*> fields = m_body->findChildren<QLineEdit*>();
    fields.removeIf(
        [](const QLineEdit* edit) { return isResultField(edit) || !edit->isVisible(); });
    return fields;
}

void tst_TabOrder::programStartsWithTheFocusOnTheFirstReference()
{
    const ARefFile* row = m_panel->Refs.RefRows.first();
    QVERIFY(row->XafsFS->SelectB->hasFocus());
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QVERIFY(row->Valence->hasFocus());
}

void tst_TabOrder::tabVisitsTheFieldsInReadingOrder()
{
    QWidget* first = m_panel->Refs.RefRows.first()->UseCB;
    const QList<QLineEdit*> fields = fieldsByTab(m_body.get(), first);
    QVERIFY(fields.size() > 60);
    for (qsizetype i = 1; i < fields.size(); ++i) {
        QVERIFY2(isReadAfter(fields.at(i), fields.at(i - 1)),
                 qPrintable(nameOf(fields.at(i - 1)) + " goes to " + nameOf(fields.at(i))));
    }
}

void tst_TabOrder::tabReachesEveryEditableField()
{
    const QList<QLineEdit*> reached =
        fieldsByTab(m_body.get(), m_panel->Refs.RefRows.first()->UseCB);
    const QList<QLineEdit*> typed = typedFields();
    QVERIFY(typed.contains(m_panel->EPoints.at(7)->MutT));
    for (QLineEdit* edit : typed) {
        QVERIFY2(reached.count(edit) == 1, qPrintable(nameOf(edit)));
    }
    QCOMPARE(reached.size(), typed.size());
}

void tst_TabOrder::tabVisitsTheConditionsBetweenResultsAndEnergyRows()
{
    m_panel->ui.DispCondsB->click();
    QList<QWidget*> visited;
    QWidget* widget = m_panel->ui.LCFB;
    widget->setFocus();
    while (widget != m_panel->EPoints.first()->UseCB && visited.size() < 20) {
        QTest::keyClick(widget, Qt::Key_Tab);
        widget = QApplication::focusWidget();
        visited.append(widget);
    }
    QVERIFY(visited.contains(m_panel->ui.SubPreEforRef));
    QVERIFY(visited.contains(m_panel->ui.NonEquivBGLinear));
    QCOMPARE(visited.last(), m_panel->EPoints.first()->UseCB);
}

void tst_TabOrder::resultFieldsGetTheFocusOnlyByAClick()
{
    const ARefFile* row = m_panel->Refs.RefRows.first();
    for (QLineEdit* edit :
         QList<QLineEdit*>{row->RatioDisp, row->AmountDisp, row->XafsFS->FileName,
                           m_panel->ui.CalcRes, m_panel->ui.LCFRes, m_panel->ui.TargetDMut}) {
        QCOMPARE(edit->focusPolicy(), Qt::ClickFocus);
        QTest::mouseClick(edit, Qt::LeftButton);
        QVERIFY2(edit->hasFocus(), qPrintable(nameOf(edit)));
    }
}

void tst_TabOrder::tabReachesTheSaveName()
{
    m_panel->ui.SaveFSelect->SelectB->setFocus();
    QTest::keyClick(m_panel->ui.SaveFSelect->SelectB, Qt::Key_Tab);
    QVERIFY(m_panel->ui.SaveFSelect->FileName->hasFocus());
}

void tst_TabOrder::mapWindowOpensWithoutAFocusedField()
{
    for (DispMBase* window : {m_panel->MapDisp, m_panel->DMapDisp}) {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QVERIFY(!qobject_cast<QLineEdit*>(QApplication::focusWidget()));
    }
}

void tst_TabOrder::poppedOutMapOpensWithoutAFocusedField()
{
    m_panel->MapDisp->show();
    m_panel->MapDisp->popDock();
    m_panel->MapDisp->pop->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_panel->MapDisp->pop));
    QVERIFY(!qobject_cast<QLineEdit*>(QApplication::focusWidget()));
    m_panel->MapDisp->popDock();
}

void tst_TabOrder::reopeningAMapWindowClearsTheFocusOfItsFields()
{
    DispMBase* window = m_panel->MapDisp;
    for (int opening = 0; opening < 2; ++opening) {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QVERIFY(!qobject_cast<QLineEdit*>(QApplication::focusWidget()));
        window->MaxV->setFocus();
        window->hide();
    }
    for (int opening = 0; opening < 2; ++opening) {
        window->popDock();
        window->pop->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window->pop));
        QVERIFY(!qobject_cast<QLineEdit*>(QApplication::focusWidget()));
        QVERIFY(!qobject_cast<QAbstractButton*>(QApplication::focusWidget()));
        window->MinV->setFocus();
        window->popDock();
    }
}

void tst_TabOrder::clickOnThePopOutButtonDoesNotFocusIt()
{
    m_panel->Disps->show();
    m_panel->Disps->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_panel->Disps));
    DispABase* plot = m_panel->Disps->frame(Displays::DRef1);
    QTest::mouseClick(plot->PopDockB, Qt::LeftButton);
    QVERIFY(!plot->docked);
    QTest::mouseClick(plot->PopDockB, Qt::LeftButton);
    QVERIFY(plot->docked);
    QVERIFY(!plot->PopDockB->hasFocus());
}

void tst_TabOrder::typingInANewMapWindowChangesNoField()
{
    DispMBase* window = m_panel->MapDisp;
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QVERIFY(QApplication::focusWidget());
    const QString upper = window->MaxV->text();
    QTest::keyClicks(QApplication::focusWidget(), "result 1");
    QCOMPARE(window->XPos->text(), QString());
    QCOMPARE(window->Val->text(), QString());
    QCOMPARE(window->MaxV->text(), upper);
    QVERIFY(window->docked);
}

void tst_TabOrder::graphWindowOpensWithoutAFocusedButton()
{
    m_panel->Disps->show();
    m_panel->Disps->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_panel->Disps));
    QVERIFY(!qobject_cast<QAbstractButton*>(QApplication::focusWidget()));
    QVERIFY(!qobject_cast<QLineEdit*>(QApplication::focusWidget()));
}

void tst_TabOrder::tabMovesFromTheUpperToTheLowerLimit()
{
    DispMBase* window = m_panel->MapDisp;
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    window->MaxV->setFocus();
    QTest::keyClick(window->MaxV, Qt::Key_Tab);
    QVERIFY(window->MinV->hasFocus());
}

QTEST_MAIN(tst_TabOrder)
#include "tst_TabOrder.moc"
