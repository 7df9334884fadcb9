// Tests of the expected results of the linear combination fit and of their errors.
#include "CombinationErrors.h"

#include "SpectrumErrors.h"
#include "support/NearValues.h"

#include <QTest>

#include <cmath>

using namespace nickel;
using tests::near;

class TestCombinationErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equallyNormalisedReferencesKeepTheTrueFractions()
    {
        QVERIFY(near(expectedCombination(combinationForms().at(0)), {0.35, 0.65, 2.65, 0.0}, 1e-8));
    }

    void differentlyNormalisedReferencesShiftTheFractions()
    {
        // The expected numbers are from a separate calculation, by normal equations for the
        // same points.
        QVERIFY(near(expectedCombination(combinationForms().at(1)),
                     {0.3967273, 0.2987123, 0.2030649, 0.1014955, 2.5019257, 4.64e-06}, 1e-7));
    }

    void targetEqualToAReferenceHasFractionOne()
    {
        for (const CombinationForm& form : combinationForms()) {
            std::vector<SpectrumLines> spectra = noiseFreeSpectra(form.references, nullptr);
            spectra.push_back(spectra.at(1));
            std::vector<double> wanted(form.references + 2, 0.0);
            wanted.at(1) = 1.0;
            wanted.at(form.references) = 3.0;
            QVERIFY(near(combination(form, spectra), wanted, 1e-9));
        }
    }

    void manyPointsReduceTheNoiseOfTheFractions()
    {
        // A normalised point has a standard deviation of about 2.5e-4. On the rising edge the
        // references differ by about 0.5, so a single point would determine the fraction to
        // 2.5e-4 / 0.5 = 5e-4. About 12 points are on the edge, which reduces the error by a
        // factor of about sqrt(12). So the error must be below 5e-4, but above 5e-4 / 12.
        const std::vector<double> sigmas = combinationErrors(combinationForms().at(0));
        QVERIFY(std::abs(sigmas.at(0) - sigmas.at(1)) < 1e-12);
        QVERIFY(sigmas.at(0) > 5e-4 / 12.0);
        QVERIFY(sigmas.at(0) < 5e-4);
        QCOMPARE(sigmas.size(), std::size_t{4});
    }
};

QTEST_APPLESS_MAIN(TestCombinationErrors)
#include "tst_CombinationErrors.moc"
