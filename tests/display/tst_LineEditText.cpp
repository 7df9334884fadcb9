// Tests of the texts of line edits: formatting and reading numbers, and shortening texts
// to the available width.

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
    void numberIsShownWithUpToSixSignificantDigits_data();
    void numberIsShownWithUpToSixSignificantDigits();
    void textIsReadAsNumberOrAsZeroIfUnparsable_data();
    void textIsReadAsNumberOrAsZeroIfUnparsable();
    void textThatIsTooWideIsShortenedWithAnEllipsis_data();
    void textThatIsTooWideIsShortenedWithAnEllipsis();
};

void tst_LineEditText::numberIsShownWithUpToSixSignificantDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole number") << 8350.0 << "8350";
    QTest::newRow("seventh digit is rounded") << 8333.2469 << "8333.25";
    QTest::newRow("seven digits before the decimal point") << 1234567.0 << "1.23457e+06";
    QTest::newRow("small number") << 0.000012345678 << "1.23457e-05";
    QTest::newRow("negative") << -0.5 << "-0.5";
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN() << "nan";
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << "inf";
}

void tst_LineEditText::numberIsShownWithUpToSixSignificantDigits()
{
    QFETCH(double, value);
    QLineEdit edit(QStringLiteral("before"));
    display::showNumber(&edit, value);
    QTEST(edit.text(), "text");
    QCOMPARE(edit.cursorPosition(), 0); // the start of the number is visible
}

void tst_LineEditText::textIsReadAsNumberOrAsZeroIfUnparsable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("plain") << "8404.5" << 8404.5;
    QTest::newRow("exponent") << "1e3" << 1000.0;
    QTest::newRow("surrounding spaces") << " 2.5 " << 2.5;
    QTest::newRow("empty is 0") << "" << 0.0;
    QTest::newRow("letters are 0") << "Ni foil" << 0.0;
    QTest::newRow("number with a unit is 0") << "8404.5eV" << 0.0;
    QTest::newRow("decimal comma is 0") << "8404,5" << 0.0;
    QTest::newRow("infinity") << "inf" << std::numeric_limits<double>::infinity();
    QTest::newRow("NaN") << "nan" << std::numeric_limits<double>::quiet_NaN();
}

void tst_LineEditText::textIsReadAsNumberOrAsZeroIfUnparsable()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    const QLineEdit edit(text);
    const double read = display::numberIn(&edit);
    QVERIFY2(tests::sameDouble(read, value), qPrintable(QString::number(read)));
}

void tst_LineEditText::textThatIsTooWideIsShortenedWithAnEllipsis_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("widthOf"); // a text that has the available width
    QTest::addColumn<QString>("expected");
    const QString dots(QChar(0x2026));
    tests::addTexts("text that fits", {"-9.60021e-05", "-9.60021e-05", "-9.60021e-05"});
    tests::addTexts("number with an exponent",
                    {"-9.60021e-05", "-9.6" + dots + "e-05", "-9.6" + dots + "e-05"});
    tests::addTexts("exponent that does not fit alone", {"-9.60021e-05", "-9", dots + "e-05"});
    tests::addTexts("number without an exponent", {"83333333.25", "8333" + dots, "8333" + dots});
    tests::addTexts("list separated by spaces",
                    {"7050 7100 7150 7220", "7050 7100 715" + dots, "7050 7100 " + dots});
    tests::addTexts("number of many digits", {"8." + QString(30000, u'8') + "e-05",
                                              "8.8" + dots + "e-05", "8.8" + dots + "e-05"});
    tests::addTexts("list of many numbers",
                    {QString("7050 ").repeated(6000), "7050 7050 7" + dots, "7050 7050 " + dots});
    tests::addTexts("list separated by commas",
                    {"7050,7100,7150,7220", "7050,7100,715" + dots, "7050,7100," + dots});
}

void tst_LineEditText::textThatIsTooWideIsShortenedWithAnEllipsis()
{
    QFETCH(QString, text);
    QFETCH(QString, widthOf);
    const QFontMetricsF metrics{QFont()};
    QTEST(display::shortened(text, metrics, metrics.horizontalAdvance(widthOf)), "expected");
    // A shortened path keeps its start and its end.
    const QString path = QStringLiteral("/data/nickel oxide/2026-11-22/ref_ni2.dat");
    const QString shortPath =
        display::shortened(path, metrics, metrics.horizontalAdvance(path.left(30)));
    QVERIFY2(shortPath.startsWith("/data") && shortPath.endsWith("ni2.dat"), qPrintable(shortPath));
}

QTEST_MAIN(tst_LineEditText)
#include "tst_LineEditText.moc"
