// Tests of the order of the widget groups in the focus chain, without the panel.

#include "panel/FocusOrder.h"
#include "support/UnconnectedWidgets.h"

#include <QTest>

using namespace tests;

class tst_FocusOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void focusChainVisitsTheWidgetGroupsFromTopToBottom();
};

void tst_FocusOrder::focusChainVisitsTheWidgetGroupsFromTopToBottom()
{
    UnconnectedWidgets loose;
    loose.energyList.setParent(loose.form.FourPsFiles);
    panel::orderFocusChain(&loose.frame, loose.list);
    QList<const QWidget*> chain;
    const QWidget* first = loose.reference(0)->UseCB;
    for (const QWidget* widget = first; chain.isEmpty() || widget != first;
         widget = widget->nextInFocusChain()) {
        chain.append(widget);
    }
    const QList<const QWidget*> inOrder{loose.reference(0)->UseCB, loose.reference(3)->Valence,
                                        loose.form.EdgeE,          &loose.energyList,
                                        loose.form.CalcMapB,       loose.form.Message};
    for (int i = 1; i < inOrder.size(); ++i) {
        QVERIFY2(chain.indexOf(inOrder.at(i - 1)) < chain.indexOf(inOrder.at(i)),
                 qPrintable(inOrder.at(i)->objectName()));
    }
    QCOMPARE(chain.count(loose.form.EdgeE), 1);
}

QTEST_MAIN(tst_FocusOrder)
#include "tst_FocusOrder.moc"
