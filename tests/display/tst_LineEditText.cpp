// Numbers in line edits: six digits out, unchecked conversion in.

#include "display/LineEditText.h"
#include "support/DataRows.h"
#include "support/SameDouble.h"

#include <QFontMetricsF>
#include <QLineEdit>
#include <QtTest>

#include <limits>

class tst_LineEditText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numberShowsWithSixSignificantDigits_data();
    void numberShowsWithSixSignificantDigits();
    void textReadsAsNumber_data();
    void textReadsAsNumber();
    void shortenedTextCannotBeMisread_data();
    void shortenedTextCannotBeMisread();
};

void tst_LineEditText::numberShowsWithSixSignificantDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole number") << 8350.0 << "8350";
    QTest::newRow("seventh digit is rounded") << 8333.2469 << "8333.25";
    QTest::newRow("seven digits before the point") << 1234567.0 << "1.23457e+06";
    QTest::newRow("small number") << 0.000012345678 << "1.23457e-05";
    QTest::newRow("negative") << -0.5 << "-0.5";
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN() << "nan";
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << "inf";
}

void tst_LineEditText::numberShowsWithSixSignificantDigits()
{
    QFETCH(double, value);
    QLineEdit edit(QStringLiteral("before"));
    display::showNumber(&edit, value);
    QTEST(edit.text(), "text");
    QCOMPARE(edit.cursorPosition(), 0); // its first digit is in view
}

void tst_LineEditText::textReadsAsNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("plain") << "8404.5" << 8404.5;
    QTest::newRow("exponent") << "1e3" << 1000.0;
    QTest::newRow("blanks around it") << " 2.5 " << 2.5;
    QTest::newRow("empty reads as 0") << "" << 0.0;
    QTest::newRow("words read as 0") << "Ni foil" << 0.0;
    QTest::newRow("a tail makes it no number") << "8404.5eV" << 0.0;
    QTest::newRow("decimal comma is no number") << "8404,5" << 0.0;
    QTest::newRow("infinity is a number") << "inf" << std::numeric_limits<double>::infinity();
    QTest::newRow("nan is a number") << "nan" << std::numeric_limits<double>::quiet_NaN();
}

void tst_LineEditText::textReadsAsNumber()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    const QLineEdit edit(text);
    const double read = display::numberIn(&edit);
    QVERIFY2(tests::sameDouble(read, value), qPrintable(QString::number(read)));
}

void tst_LineEditText::shortenedTextCannotBeMisread_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("as"); // the width is that of this text
    QTest::addColumn<QString>("wanted");
    const QString dots(QChar(0x2026));
    tests::addTexts("text that fits", {"-9.60021e-05", "-9.60021e-05", "-9.60021e-05"});
    tests::addTexts("number with an exponent",
                    {"-9.60021e-05", "-9.6" + dots + "e-05", "-9.6" + dots + "e-05"});
    tests::addTexts("exponent that does not fit alone", {"-9.60021e-05", "-9", dots + "e-05"});
    tests::addTexts("number without an exponent", {"83333333.25", "8333" + dots, "8333" + dots});
    tests::addTexts("list by blanks",
                    {"7050 7100 7150 7220", "7050 7100 715" + dots, "7050 7100 " + dots});
    tests::addTexts("number of many digits", {"8." + QString(30000, u'8') + "e-05",
                                              "8.8" + dots + "e-05", "8.8" + dots + "e-05"});
    tests::addTexts("list of many numbers",
                    {QString("7050 ").repeated(6000), "7050 7050 7" + dots, "7050 7050 " + dots});
    tests::addTexts("list by commas",
                    {"7050,7100,7150,7220", "7050,7100,715" + dots, "7050,7100," + dots});
}

void tst_LineEditText::shortenedTextCannotBeMisread()
{
    QFETCH(QString, text);
    QFETCH(QString, as);
    const QFontMetricsF metrics{QFont()};
    QTEST(display::shortened(text, metrics, metrics.horizontalAdvance(as)), "wanted");
    // A path keeps both its ends.
    const QString path = QStringLiteral("/data/nickel oxide/2026-11-22/ref_ni2.dat");
    const QString cut = display::shortened(path, metrics, metrics.horizontalAdvance(path.left(30)));
    QVERIFY2(cut.startsWith("/data") && cut.endsWith("ni2.dat"), qPrintable(cut));
}

QTEST_MAIN(tst_LineEditText)
#include "tst_LineEditText.moc"
