// Tests of the exact texts of error messages and results.
#include "panel/Wording.h"

#include "analysis/CalculationMessage.h"
#include "analysis/LinearFit.h"
#include "analysis/TargetResult.h"

#include <QTest>

#include <limits>

using analysis::Message;
using analysis::MessageId;
using analysis::Variant;
using panel::Wording;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

} // namespace

class tst_Wording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorMessagesHaveTheExpectedText_data();
    void errorMessagesHaveTheExpectedText();
    void fourPointsResultsHaveSixDigits_data();
    void fourPointsResultsHaveSixDigits();
    void nonEquivalentResultsHaveThreeDecimalsAndSpaceForASign();
    void fitResultsHaveThreeDecimalsAndSpaceForASign();
    void nonFiniteNumbersAreShownAsText();
    void errorMessageNamesTheFileThatCannotBeOpened();
};

void tst_Wording::errorMessagesHaveTheExpectedText_data()
{
    QTest::addColumn<Message>("refusal");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("no V row for the target, with a period")
        << Message{MessageId::NoTargetVPoint} << "V Point is not selected.";
    QTest::newRow("no V row for the maps, without a period")
        << Message{MessageId::NoMapVPoint} << "V Point is not selected";
    QTest::newRow("too few references") << Message{MessageId::FewReferences, 1}
                                        << "Number of valied Ref Files is 1, which is less than 2.";
    QTest::newRow("first reference invalid")
        << Message{MessageId::FirstReferenceInvalid} << "The 1st Ref File is not valid.";
    QTest::newRow("second reference invalid")
        << Message{MessageId::SecondReferenceInvalid} << "The 2nd Ref File is not valid.";
    QTest::newRow("reference with index 0 invalid")
        << Message{MessageId::ReferenceInvalid, 0} << "Ref File 0 is not valid.";
    QTest::newRow("target invalid")
        << Message{MessageId::TargetInvalid} << "Target File1 is not valid.";
    QTest::newRow("wrong number of rows")
        << Message{MessageId::WrongCount, 3, 4} << "Number of selected data sets 3 is not 4.";
    QTest::newRow("fewer rows than unknowns")
        << Message{MessageId::TooFewRows, 4, 5} << "Number of selected data sets 4 is less than 5.";
    QTest::newRow("no fit range")
        << Message{MessageId::NoFitRange}
        << "Energy Range is not selected, which should by selected by CB of TR.";
    QTest::newRow("too few references for the fit, without a period")
        << Message{MessageId::FewFitReferences, 0}
        << "Number of Valid Reference files is 0, which is less than 2";
}

void tst_Wording::errorMessagesHaveTheExpectedText()
{
    QFETCH(Message, refusal);
    QTEST(Wording::of(refusal), "sentence");
}

void tst_Wording::fourPointsResultsHaveSixDigits_data()
{
    QTest::addColumn<Variant>("variant");
    QTest::addColumn<QString>("line");
    QTest::newRow("three points, no thickness")
        << Variant::ThreePoints << "3ps: a = 0.111111, Valence = 2.88889";
    QTest::newRow("exact four points, no label")
        << Variant::ExactFourPoints << "a = 0.111111, Valence = 2.88889, t/ts = 1e+07";
    QTest::newRow("least squares")
        << Variant::LeastSquare << "4ps2: a = 0.111111, Valence = 2.88889, t/ts = 1e+07";
}

void tst_Wording::fourPointsResultsHaveSixDigits()
{
    QFETCH(Variant, variant);
    QTEST(Wording::of({variant, 1.0 / 9.0, 3.0 - 1.0 / 9.0, 1e7, {}}), "line");
}

void tst_Wording::nonEquivalentResultsHaveThreeDecimalsAndSpaceForASign()
{
    analysis::TargetResult result{
        Variant::NonEquivalentLinear, -0.2, 5.6, 40.0, {{0, -0.2, -1.0}, {3, 1.2, 6.0}}};
    const QString line = "Result of NEQ :: -0.200 :  1.200, Valence =  5.600, t =  40.000";
    QCOMPARE(Wording::of(result), line);
    result.variant = Variant::NonEquivalentVictoreen;
    QCOMPARE(Wording::of(result), line);
    result.parts.append({2, 0.25, 0.0});
    result.parts.append({1, 0.0004, 0.0});
    QVERIFY(Wording::of(result).startsWith(
        "Result of NEQ :: -0.200 :  1.200 :  0.250 :  0.000, Valence"));
}

void tst_Wording::fitResultsHaveThreeDecimalsAndSpaceForASign()
{
    QCOMPARE(Wording::of(analysis::LinearFit{{1.25, -0.25}, 1.5, -0.375, {}}),
             "Result of LCF ::  1.250 : -0.250, Valence =  1.500, Base = -0.375");
    QCOMPARE(Wording::of(analysis::LinearFit{{1, 0.5, -2, 1.5}, 2.75, 12.5, {}}),
             "Result of LCF ::  1.000 :  0.500 : -2.000 :  1.500, Valence =  2.750, "
             "Base =  12.500");
}

void tst_Wording::nonFiniteNumbersAreShownAsText()
{
    QCOMPARE(Wording::of({Variant::ThreePoints, notANumber, notANumber, 0.0, {}}),
             "3ps: a = nan, Valence = nan");
    QCOMPARE(Wording::of({Variant::ExactFourPoints, notANumber, notANumber, -infinite, {}}),
             "a = nan, Valence = nan, t/ts = -inf");
    QCOMPARE(Wording::of({Variant::NonEquivalentLinear,
                          notANumber,
                          notANumber,
                          notANumber,
                          {{0, notANumber, 0}, {1, notANumber, 0}}})
                 .count("nan"),
             4);
    QCOMPARE(Wording::of(analysis::LinearFit{{notANumber, notANumber}, notANumber, notANumber, {}})
                 .count("nan"),
             4);
}

void tst_Wording::errorMessageNamesTheFileThatCannotBeOpened()
{
    QCOMPARE(Wording::cannotOpen("/a b/%1.dat"), "Can't open the file [/a b/%1.dat]");
    QCOMPARE(Wording::cannotOpen({}), "Can't open the file []");
}

QTEST_APPLESS_MAIN(tst_Wording)
#include "tst_Wording.moc"
