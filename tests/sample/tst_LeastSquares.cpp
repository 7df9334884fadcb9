// Tests of the least-squares solver on systems with known solutions.
#include "LeastSquares.h"

#include <QTest>

#include <cmath>

using nickel::LeastSquares;

class TestLeastSquares : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineIsFittedThroughScatteredPoints()
    {
        // The points (0, 1), (1, 2), (2, 2): the line has slope 1/2 and passes through
        // the centroid (1, 5/3).
        const LeastSquares line({{1, 1, 1}, {0, 1, 2}});
        const std::vector<double> found = line.coefficients({1, 2, 2});
        QVERIFY(std::abs(found.at(0) - 7.0 / 6.0) < 1e-14);
        QVERIFY(std::abs(found.at(1) - 0.5) < 1e-14);
    }

    void squareSystemIsSolvedExactly()
    {
        // The values are 3 - 2 t + t^2 at t = 1, 2, 4.
        const LeastSquares parabola({{1, 1, 1}, {1, 2, 4}, {1, 4, 16}});
        const std::vector<double> found = parabola.coefficients({2, 3, 11});
        QVERIFY(std::abs(found.at(0) - 3.0) < 1e-12);
        QVERIFY(std::abs(found.at(1) + 2.0) < 1e-12);
        QVERIFY(std::abs(found.at(2) - 1.0) < 1e-12);
    }

    void nearlyParallelColumnsAreFittedAccurately()
    {
        std::vector<std::vector<double>> columns(3);
        std::vector<double> values;
        for (int i = 0; i < 50; ++i) {
            const double t = 1.0 + 1e-3 * i;
            columns[0].push_back(1.0);
            columns[1].push_back(t * t * t);
            columns[2].push_back(t * t * t * t);
            values.push_back(0.25 - 2.0 * t * t * t + 0.5 * t * t * t * t);
        }
        const std::vector<double> found = LeastSquares(columns).coefficients(values);
        QVERIFY(std::abs(found.at(0) - 0.25) < 1e-7);
        QVERIFY(std::abs(found.at(1) + 2.0) < 1e-7);
        QVERIFY(std::abs(found.at(2) - 0.5) < 1e-7);
    }
};

QTEST_APPLESS_MAIN(TestLeastSquares)
#include "tst_LeastSquares.moc"
