#include "app/Body.h"
#include "support/MarkingTranslator.h"

#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>

class tst_Body : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void titleIsTheProgramName();
    void titleIsNotTranslated();
    void windowGrowsToTheSizeOfItsPanel();
    void panelIsTheOnlyContent();
    void menuBarAndStatusBarExistAndAreEmpty();
    void menuBarHasTheGeometryFromTheForm();
};

void tst_Body::titleIsTheProgramName()
{
    const Body body;
    QCOMPARE(body.objectName(), QString("Body"));
    QCOMPARE(body.windowTitle(), QString("aelk"));
}

void tst_Body::titleIsNotTranslated()
{
    tests::MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const Body body;
    QCOMPARE(body.windowTitle(), QString("aelk"));
}

void tst_Body::windowGrowsToTheSizeOfItsPanel()
{
    Body body;
    QCOMPARE(body.size(), QSize(869, 121));
    body.show();
    QVERIFY(body.width() > 869);
    QVERIFY(body.height() > 121);
    const auto* panel = body.findChild<QFrame*>("FourPs");
    QVERIFY(panel);
    QVERIFY(panel->width() >= panel->minimumSizeHint().width());
    QVERIFY(panel->height() >= panel->minimumSizeHint().height());
}

void tst_Body::panelIsTheOnlyContent()
{
    const Body body;
    QCOMPARE(body.centralWidget()->objectName(), QString("centralwidget"));
    QCOMPARE(body.centralWidget()->layout()->objectName(), QString("gridLayout_2"));
    QLayoutItem* item = body.centralWidget()->layout()->itemAt(0);
    QCOMPARE(body.centralWidget()->layout()->count(), 1);
    QVERIFY(item->layout());
    QCOMPARE(item->layout()->objectName(), QString("bodyLayout"));
    QCOMPARE(item->layout()->count(), 1);
    QCOMPARE(item->layout()->itemAt(0)->widget()->objectName(), QString("FourPs"));
}

void tst_Body::menuBarAndStatusBarExistAndAreEmpty()
{
    const Body body;
    const auto* menuBar = body.findChild<QMenuBar*>("menubar");
    QVERIFY(menuBar);
    QVERIFY(menuBar->actions().isEmpty());
    const auto* statusBar = body.findChild<QStatusBar*>("statusbar");
    QVERIFY(statusBar);
    QCOMPARE(statusBar->currentMessage(), QString());
    QVERIFY(statusBar->findChildren<QLabel*>().isEmpty());
}

void tst_Body::menuBarHasTheGeometryFromTheForm()
{
    const Body body;
    QCOMPARE(body.findChild<QMenuBar*>("menubar")->geometry(), QRect(0, 0, 869, 17));
}

QTEST_MAIN(tst_Body)
#include "tst_Body.moc"
