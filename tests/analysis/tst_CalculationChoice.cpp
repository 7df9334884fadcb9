#include "analysis/CalculationChoice.h"

#include <QTest>

using analysis::Choice;
using analysis::MessageId;
using analysis::MethodRadios;
using analysis::Variant;

Q_DECLARE_METATYPE(analysis::Choice)
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

Choice runs(Variant variant)
{
    return {variant, {}};
}

Choice refused(MessageId id, int selected, int needed)
{
    return {std::nullopt, {id, selected, needed}};
}

bool isSame(const Choice& choice, const Choice& expected)
{
    return choice.variant == expected.variant && choice.refusal == expected.refusal;
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
    QTest::addColumn<Choice>("choice");

    QTest::newRow("three rows") << fourPoints(false, true) << 3 << runs(Variant::ThreePoints);
    QTest::newRow("three rows, exact on")
        << fourPoints(true, false) << 3 << runs(Variant::ThreePoints);
    QTest::newRow("four rows, exact on")
        << fourPoints(true, false) << 4 << runs(Variant::ExactFourPoints);
    QTest::newRow("four rows, exact off")
        << fourPoints(false, true) << 4 << runs(Variant::LeastSquare);
    QTest::newRow("four rows, neither radio on")
        << fourPoints(false, false) << 4 << runs(Variant::LeastSquare);
    QTest::newRow("five rows, least square")
        << fourPoints(false, true) << 5 << runs(Variant::LeastSquare);
    QTest::newRow("eight rows, least square")
        << fourPoints(false, true) << 8 << runs(Variant::LeastSquare);
    QTest::newRow("five rows, exact on is refused with 4")
        << fourPoints(true, false) << 5 << refused(MessageId::WrongCount, 5, 4);
    QTest::newRow("two rows are refused with 4, though three would do")
        << fourPoints(false, true) << 2 << refused(MessageId::WrongCount, 2, 4);
    QTest::newRow("no row") << fourPoints(false, true) << 0 << refused(MessageId::WrongCount, 0, 4);
    QTest::newRow("linear background, four rows")
        << nonEquivalent(true) << 4 << runs(Variant::NonEquivalentLinear);
    QTest::newRow("linear background, three rows are refused with 4")
        << nonEquivalent(true) << 3 << refused(MessageId::WrongCount, 3, 4);
    QTest::newRow("two-term background, five rows")
        << nonEquivalent(false) << 5 << runs(Variant::NonEquivalentVictoreen);
    QTest::newRow("two-term background, four rows are refused with 5")
        << nonEquivalent(false) << 4 << refused(MessageId::WrongCount, 4, 5);
}

void tst_CalculationChoice::targetGoesByRowsAndRadios()
{
    QFETCH(MethodRadios, radios);
    QFETCH(int, selected);
    QFETCH(Choice, choice);
    QVERIFY(isSame(analysis::chooseForTarget(radios, selected), choice));
}

void tst_CalculationChoice::mapGoesByRowsRadiosAndReferences_data()
{
    QTest::addColumn<MethodRadios>("radios");
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("references");
    QTest::addColumn<Choice>("choice");

    QTest::newRow("three rows") << fourPoints(false, true) << 3 << 2 << runs(Variant::ThreePoints);
    QTest::newRow("two rows are refused with 4")
        << fourPoints(false, true) << 2 << 2 << refused(MessageId::WrongCount, 2, 4);
    QTest::newRow("four rows, exact on")
        << fourPoints(true, false) << 4 << 4 << runs(Variant::ExactFourPoints);
    QTest::newRow("four rows, exact off")
        << fourPoints(false, false) << 4 << 2 << runs(Variant::LeastSquare);
    QTest::newRow("five rows, exact on")
        << fourPoints(true, false) << 5 << 2 << refused(MessageId::WrongCount, 5, 4);
    QTest::newRow("six rows, least square")
        << fourPoints(false, true) << 6 << 2 << runs(Variant::LeastSquare);
    QTest::newRow("linear, two references, four rows")
        << nonEquivalent(true) << 4 << 2 << runs(Variant::NonEquivalentLinear);
    QTest::newRow("linear, three references, four rows: less than 5")
        << nonEquivalent(true) << 4 << 3 << refused(MessageId::TooFewRows, 4, 5);
    QTest::newRow("two-term, four references, seven rows")
        << nonEquivalent(false) << 7 << 4 << runs(Variant::NonEquivalentVictoreen);
    QTest::newRow("two-term, two references, four rows: less than 5")
        << nonEquivalent(false) << 4 << 2 << refused(MessageId::TooFewRows, 4, 5);
    QTest::newRow("linear, no row: less than 4")
        << nonEquivalent(true) << 0 << 2 << refused(MessageId::TooFewRows, 0, 4);
}

void tst_CalculationChoice::mapGoesByRowsRadiosAndReferences()
{
    QFETCH(MethodRadios, radios);
    QFETCH(int, selected);
    QFETCH(int, references);
    QFETCH(Choice, choice);
    QVERIFY(isSame(analysis::chooseForMap(radios, selected, references), choice));
}

QTEST_APPLESS_MAIN(tst_CalculationChoice)
#include "tst_CalculationChoice.moc"
