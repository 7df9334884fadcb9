// Tests of the results and errors that are expected for the pixels of the sample's maps.
#include "MapErrors.h"

#include <QTest>

#include <cmath>

using namespace nickel;

namespace
{

using MutValues = std::array<double, mapEnergiesEv.size()>;

MutValues mutAt(int x, int y)
{
    MutValues mut;
    for (std::size_t row = 0; row < mut.size(); ++row) {
        mut.at(row) = pixelMut(x, y, mapEnergiesEv.at(row));
    }
    return mut;
}

double sigmaOf(double mut)
{
    return std::sqrt((1.0 + std::exp(mut)) / pixelPhotons);
}

bool near(double value, double wanted, double tolerance)
{
    return std::abs(value - wanted) <= tolerance;
}

} // namespace

class TestMapErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noiseFreePixelHasTheTrueResult_data() { addForms(); }
    void noiseFreePixelHasTheTrueResult()
    {
        QFETCH(int, index);
        const MapForm& form = mapForms().at(static_cast<std::size_t>(index));
        for (const auto& [x, y] : {std::pair{0, 0}, std::pair{8, 12}, std::pair{48, 23}}) {
            const MixtureEstimate estimate = estimateMixture(form, mutAt(x, y));
            // The method assumes that both references have the same shape except at the V
            // point, but the tails of their white lines differ by 8e-13 at 8320 eV. The
            // tolerance 1e-8 is far above the effect of this difference.
            QVERIFY(near(estimate.fraction, fractionAt(x, y), 1e-8));
            QVERIFY(near(estimate.jump, amountAt(x, y), 1e-8));
        }
    }

    void onlyFormsThatFitASlopeTolerateABackgroundSlope()
    {
        MutValues mut = mutAt(0, 0);
        for (std::size_t row = 0; row < mut.size(); ++row) {
            mut.at(row) += 1e-3 * (mapEnergiesEv.at(row) - 8300.0);
        }
        const std::vector<MapForm>& forms = mapForms();
        QVERIFY(!near(estimateMixture(forms.at(0), mut).jump, amountAt(0, 0), 1e-3));
        QVERIFY(near(estimateMixture(forms.at(1), mut).jump, amountAt(0, 0), 1e-8));
        QVERIFY(near(estimateMixture(forms.at(2), mut).jump, amountAt(0, 0), 1e-8));
    }

    void threePointJumpErrorCombinesTheErrorsOfTwoPoints()
    {
        // T and s are the absorbance and the shape at 8320 eV (index 0) and 8385 eV (index
        // 1). jump = (T1 - T0) / (s1 - s0) is linear in T, so the errors of T0 and T1 add in
        // quadrature and there is no bias.
        const Compound& compound = compounds()[niII];
        const double step = shape(compound, 8385) - shape(compound, 8320);
        const double wanted =
            std::hypot(sigmaOf(pixelMut(0, 0, 8385)), sigmaOf(pixelMut(0, 0, 8320))) / step;
        const ExpectedErrors errors = expectedErrors(mapForms().at(0), 0, 0);
        QVERIFY(near(errors.jump.sigma, wanted, 1e-12));
        QVERIFY(near(errors.jump.bias, 0.0, 1e-12));
    }

    void exactFourPointJumpErrorIncludesTheExtrapolation()
    {
        // T and s are the absorbance and the shape at E0 = 8250, E1 = 8320 and E2 = 8385 eV.
        // The line through the points at E0 and E1, below the edge, is extrapolated to E2.
        // With u = (E2 - E1) / (E1 - E0) the edge jump is
        // (T2 - T1 - u (T1 - T0)) / (s2 - s1 - u (s1 - s0)).
        const Compound& compound = compounds()[niII];
        const double u = (8385.0 - 8320.0) / (8320.0 - 8250.0);
        const double divisor =
            shape(compound, 8385) - (1.0 + u) * shape(compound, 8320) + u * shape(compound, 8250);
        const double s0 = sigmaOf(pixelMut(0, 0, 8250));
        const double s1 = sigmaOf(pixelMut(0, 0, 8320));
        const double s2 = sigmaOf(pixelMut(0, 0, 8385));
        const double wanted =
            std::sqrt(s2 * s2 + (1.0 + u) * (1.0 + u) * s1 * s1 + u * u * s0 * s0) / divisor;
        QVERIFY(near(expectedErrors(mapForms().at(1), 0, 0).jump.sigma, wanted, 1e-10));
    }

    void thinPixelsHaveLargerFractionErrors_data() { addForms(); }
    void thinPixelsHaveLargerFractionErrors()
    {
        QFETCH(int, index);
        const MapForm& form = mapForms().at(static_cast<std::size_t>(index));
        // A thin and a thick pixel with the same valence, because they have the same x and
        // are not in the ring.
        QCOMPARE(valenceAt(8, 1), valenceAt(8, 4));
        const double thin = expectedErrors(form, 8, 1).fraction.sigma;
        const double thick = expectedErrors(form, 8, 4).fraction.sigma;
        QVERIFY(thin > 1.5 * thick);
        QVERIFY(thin < 0.05);
    }

private:
    static void addForms()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < 3; ++i) {
            QTest::newRow(mapForms().at(static_cast<std::size_t>(i)).name) << i;
        }
    }
};

QTEST_APPLESS_MAIN(TestMapErrors)
#include "tst_MapErrors.moc"
