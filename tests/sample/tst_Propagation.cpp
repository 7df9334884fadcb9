// Tests of error propagation with calculations whose errors are known exactly.
#include "Propagation.h"

#include <QTest>

#include <cmath>

using namespace nickel;

class TestPropagation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linearErrorsAddInQuadratureWithoutBias()
    {
        const auto errors = propagate(
            [](const std::vector<double>& x) {
                return std::vector<double>{3.0 * x[0] - 2.0 * x[1], x[1]};
            },
            {5.0, 7.0}, {0.1, 0.2});
        QCOMPARE(errors.size(), std::size_t{2});
        QVERIFY(std::abs(errors[0].sigma - 0.5) < 1e-12); // sqrt(0.3^2 + 0.4^2)
        QVERIFY(std::abs(errors[0].bias) < 1e-12);
        QVERIFY(std::abs(errors[1].sigma - 0.2) < 1e-12);
    }

    void meanOfASquareIsShiftedByTheVariance()
    {
        // The mean of (x + noise)^2 is x^2 + sigma^2, so the bias is sigma^2.
        const auto errors =
            propagate([](const std::vector<double>& x) { return std::vector<double>{x[0] * x[0]}; },
                      {3.0}, {0.5});
        QVERIFY(std::abs(errors[0].sigma - 3.0) < 1e-12);
        QVERIFY(std::abs(errors[0].bias - 0.25) < 1e-12);
    }

    void countingErrorDependsOnTheTransmittedPhotons()
    {
        QCOMPARE(countingSigma(0.0, 2e4), 0.01); // no absorption: I = I0
        QCOMPARE(countingSigma(std::log(7.0), 8e4),
                 0.01); // I = I0 / 7
        QVERIFY(countingSigma(2.0, 1e5) > countingSigma(1.0, 1e5));
    }
};

QTEST_APPLESS_MAIN(TestPropagation)
#include "tst_Propagation.moc"
