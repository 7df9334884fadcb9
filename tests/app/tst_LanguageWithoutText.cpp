// Tests of the language selection in a program into which the Japanese texts are not linked.

#include "app/Body.h"
#include "app/Language.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

namespace
{

QStringList messages;

void recordMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    messages.append(text);
}

} // namespace

class tst_LanguageWithoutText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void japaneseTextIsNotLinked();
    void bothLanguagesShowEnglishAndLogNothing_data();
    void bothLanguagesShowEnglishAndLogNothing();
};

void tst_LanguageWithoutText::japaneseTextIsNotLinked()
{
    QVERIFY(!QFile::exists(QStringLiteral(":/qelk_ja_JP.qm")));
    QVERIFY(!QFile::exists(QStringLiteral(":/qelk_ja_JP")));
}

void tst_LanguageWithoutText::bothLanguagesShowEnglishAndLogNothing_data()
{
    QTest::addColumn<app::Language>("language");
    QTest::newRow("Japanese") << app::Language::Japanese;
    QTest::newRow("English") << app::Language::English;
}

void tst_LanguageWithoutText::bothLanguagesShowEnglishAndLogNothing()
{
    QFETCH(app::Language, language);
    messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(recordMessage);
    QTranslator translator;
    app::installLanguage(language, translator);
    qInstallMessageHandler(before);
    QCOMPARE(messages, QStringList());
    QVERIFY(translator.isEmpty());
    QCOMPARE(QCoreApplication::translate("FourPs", "Valence"), QString("Valence"));

    const Body body;
    QCOMPARE(body.windowTitle(), QString("aelk"));
    QCOMPARE(body.findChild<QPushButton*>("CalcTargetB")->text(), QString("Calc."));
    QCOMPARE(body.findChild<QLabel*>("label_22")->text(), QString("XAFS spectra"));
}

QTEST_MAIN(tst_LanguageWithoutText)
#include "tst_LanguageWithoutText.moc"
