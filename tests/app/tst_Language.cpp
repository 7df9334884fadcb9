#include "app/Language.h"

#include <QTest>

using app::Language;

class tst_Language : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void argumentsChooseTheLanguage_data();
    void argumentsChooseTheLanguage();
};

void tst_Language::argumentsChooseTheLanguage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("english");
    QTest::newRow("no argument is Japanese") << QStringList{} << false;
    QTest::newRow("-j is Japanese") << QStringList{"-j"} << false;
    QTest::newRow("-e is English") << QStringList{"-e"} << true;
    QTest::newRow("the last option wins: -e -j") << QStringList{"-e", "-j"} << false;
    QTest::newRow("the last option wins: -j -e") << QStringList{"-j", "-e"} << true;
    QTest::newRow("the last of three options wins") << QStringList{"-e", "-j", "-e"} << true;
    QTest::newRow("-E is ignored") << QStringList{"-E"} << false;
    QTest::newRow("-J is ignored") << QStringList{"-J"} << false;
    QTest::newRow("-J does not undo -e") << QStringList{"-e", "-J"} << true;
    QTest::newRow("unknown arguments are ignored") << QStringList{"--help", "file.dat"} << false;
    QTest::newRow("unknown arguments do not undo -e") << QStringList{"-x", "-e", "-x"} << true;
    QTest::newRow("words similar to -e are ignored")
        << QStringList{"-en", "--e", "e", " -e", "-e ", "-e=1", ""} << false;
}

void tst_Language::argumentsChooseTheLanguage()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, english);
    QCOMPARE(app::languageFromArguments(arguments) == Language::English, english);
}

QTEST_APPLESS_MAIN(tst_Language)
#include "tst_Language.moc"
