#include "analysis/CalculationChoice.h"

#include <QTest>

using analysis::Choice;
using analysis::MethodRadios;
using analysis::Variant;

Q_DECLARE_METATYPE(analysis::Variant)
Q_DECLARE_METATYPE(analysis::MethodRadios)

namespace
{

MethodRadios fourPoints(bool exact, bool leastSquare)
{
    return {false, exact, leastSquare, true};
}

MethodRadios nonEquivalent(bool linear)
{
    return {true, false, true, linear};
}

} // namespace

class tst_CalculationChoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void targetGoesByRowsAndRadios_data();
    void targetGoesByRowsAndRadios();
    void mapGoesByRowsRadiosAndReferences_data();
    void mapGoesByRowsRadiosAndReferences();
};

void tst_CalculationChoice::targetGoesByRowsAndRadios_data()
{
    QTest::addColumn<MethodRadios>("radios");
    QTest::addColumn<int>("selected");
    QTest::addColumn<Variant>("variant");
    QTest::addColumn<int>("needed");

    QTest::newRow("three rows") << fourPoints(false, true) << 3 << Variant::ThreePoints << 3;
    QTest::newRow("three rows, exact on")
        << fourPoints(true, false) << 3 << Variant::ThreePoints << 3;
    QTest::newRow("four rows, exact on")
        << fourPoints(true, false) << 4 << Variant::ExactFourPoints << 4;
    QTest::newRow("four rows, exact off")
        << fourPoints(false, true) << 4 << Variant::LeastSquare << 4;
    QTest::newRow("four rows, neither radio on")
        << fourPoints(false, false) << 4 << Variant::LeastSquare << 4;
    QTest::newRow("five rows, least square")
        << fourPoints(false, true) << 5 << Variant::LeastSquare << 4;
    QTest::newRow("eight rows, least square")
        << fourPoints(false, true) << 8 << Variant::LeastSquare << 4;
    QTest::newRow("five rows, exact on is refused with 4")
        << fourPoints(true, false) << 5 << Variant::WrongCount << 4;
    QTest::newRow("two rows are refused with 4, though three would do")
        << fourPoints(false, true) << 2 << Variant::WrongCount << 4;
    QTest::newRow("no row") << fourPoints(false, true) << 0 << Variant::WrongCount << 4;
    QTest::newRow("linear background, four rows")
        << nonEquivalent(true) << 4 << Variant::NonEquivalentLinear << 4;
    QTest::newRow("linear background, three rows are refused with 4")
        << nonEquivalent(true) << 3 << Variant::WrongCount << 4;
    QTest::newRow("two-term background, five rows")
        << nonEquivalent(false) << 5 << Variant::NonEquivalentVictoreen << 5;
    QTest::newRow("two-term background, four rows are refused with 5")
        << nonEquivalent(false) << 4 << Variant::WrongCount << 5;
}

void tst_CalculationChoice::targetGoesByRowsAndRadios()
{
    QFETCH(MethodRadios, radios);
    QFETCH(int, selected);
    const Choice choice = analysis::chooseForTarget(radios, selected);
    QTEST(choice.variant, "variant");
    QTEST(choice.needed, "needed");
}

void tst_CalculationChoice::mapGoesByRowsRadiosAndReferences_data()
{
    QTest::addColumn<MethodRadios>("radios");
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("references");
    QTest::addColumn<Variant>("variant");
    QTest::addColumn<int>("needed");

    QTest::newRow("three rows") << fourPoints(false, true) << 3 << 2 << Variant::ThreePoints << 3;
    QTest::newRow("two rows are refused with 4")
        << fourPoints(false, true) << 2 << 2 << Variant::WrongCount << 4;
    QTest::newRow("four rows, exact on")
        << fourPoints(true, false) << 4 << 4 << Variant::ExactFourPoints << 4;
    QTest::newRow("four rows, exact off")
        << fourPoints(false, false) << 4 << 2 << Variant::LeastSquare << 4;
    QTest::newRow("five rows, exact on")
        << fourPoints(true, false) << 5 << 2 << Variant::WrongCount << 4;
    QTest::newRow("six rows, least square")
        << fourPoints(false, true) << 6 << 2 << Variant::LeastSquare << 4;
    QTest::newRow("linear, two references, four rows")
        << nonEquivalent(true) << 4 << 2 << Variant::NonEquivalentLinear << 4;
    QTest::newRow("linear, three references, four rows: less than 5")
        << nonEquivalent(true) << 4 << 3 << Variant::TooFew << 5;
    QTest::newRow("two-term, four references, seven rows")
        << nonEquivalent(false) << 7 << 4 << Variant::NonEquivalentVictoreen << 7;
    QTest::newRow("two-term, two references, four rows: less than 5")
        << nonEquivalent(false) << 4 << 2 << Variant::TooFew << 5;
    QTest::newRow("linear, no row: less than 4")
        << nonEquivalent(true) << 0 << 2 << Variant::TooFew << 4;
}

void tst_CalculationChoice::mapGoesByRowsRadiosAndReferences()
{
    QFETCH(MethodRadios, radios);
    QFETCH(int, selected);
    QFETCH(int, references);
    const Choice choice = analysis::chooseForMap(radios, selected, references);
    QTEST(choice.variant, "variant");
    QTEST(choice.needed, "needed");
}

QTEST_APPLESS_MAIN(tst_CalculationChoice)
#include "tst_CalculationChoice.moc"
