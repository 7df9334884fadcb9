// Tests of the expected results of the non-equivalent method and of their errors. The
// expected numbers come from a separate calculation with normal equations and matrix
// error propagation.
#include "ShareErrors.h"

#include "SpectrumErrors.h"
#include "support/NearValues.h"

#include <QTest>

#include <cmath>

using namespace nickel;
using tests::near;

namespace
{

const ShareForm& formAt(int index)
{
    return shareForms().at(static_cast<std::size_t>(index));
}

ShareFit noiseFreeFit(const ShareForm& form)
{
    return {form, noiseFreeSpectra(form.references, nullptr)};
}

std::vector<double> sigmasOf(const std::vector<ExpectedError>& errors)
{
    std::vector<double> sigmas;
    for (const ExpectedError& error : errors) {
        sigmas.push_back(error.sigma);
    }
    return sigmas;
}

} // namespace

class TestShareErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void referencesWithEqualShapesHaveTheTrueShares()
    {
        // 0.974883963 is the edge jump of the fitted lines divided by the true edge jump.
        // Ni(II) and Ni(III) differ in shape only near the edge, where no line is fitted, so the
        // factor is the same for both.
        const ShareFit fit = noiseFreeFit(formAt(0));
        QVERIFY(near(fit.expected({0.35, 0.65, 0.0, 0.0}, 1.2),
                     {0.35, 0.65, 2.65, 1.2 * 0.974883963}, 1e-8));
    }

    void pureCompoundHasShareOneAndItsFittedEdgeJump()
    {
        const ShareFit fit = noiseFreeFit(formAt(2));
        QVERIFY(near(fit.expected({0.0, 0.0, 1.0, 0.0}, 2.0),
                     {0.0, 0.0, 1.0, 0.0, 4.0, 2.0 * 0.999948462}, 1e-8));
        QVERIFY(near(fit.expected({0.0, 0.0, 0.0, 1.0}, 1.0),
                     {0.0, 0.0, 0.0, 1.0, 0.0, 0.996544652}, 1e-8));
    }

    void sharesAreWeightedByTheFittedEdgeJumps()
    {
        // For a mixture with the true fractions f, the method calculates as the share of compound
        // j the number f_j K_j / J_j, divided by the sum of f_k K_k / J_k over all compounds k.
        // J is the true edge jump of a reference and K is the edge jump between its fitted lines.
        // K_j / J_j is 0.974883963 for Ni(II) and Ni(III), 0.999948462 for Ni(IV) and 0.996544652
        // for the metal (see the tests above).
        const ShareFit fit = noiseFreeFit(formAt(2));
        QVERIFY(near(fit.expected({0.4, 0.3, 0.2, 0.1}, 1.2),
                     {0.3970760, 0.2978070, 0.2036424, 0.1014746, 2.5021426, 1.1784755}, 1e-7));
    }

    void noiseFreeTargetHasTheExpectedResult_data() { addForms(); }
    void noiseFreeTargetHasTheExpectedResult()
    {
        QFETCH(int, index);
        const ShareForm& form = formAt(index);
        const auto spectra = noiseFreeSpectra(form.references, &form.target);
        const ShareFit fit(form, spectra);
        QVERIFY(near(fit.valuesForTarget(spectra.back()),
                     fit.expected(form.target.fractions, form.target.jump), 1e-7));
    }

    void noiseFreePixelHasTheExpectedResult_data() { addForms(); }
    void noiseFreePixelHasTheExpectedResult()
    {
        QFETCH(int, index);
        const ShareForm& form = formAt(index);
        const ShareFit fit = noiseFreeFit(form);
        for (const auto& [x, y] : {std::pair{0, 0}, std::pair{8, 12}, std::pair{20, 23}}) {
            std::vector<double> mut;
            for (const double energyEv : form.image.energiesEv) {
                mut.push_back(form.image.mutAt(x, y, energyEv));
            }
            QVERIFY(near(fit.valuesFor(mut),
                         fit.expected(form.image.fractionsAt(x, y), form.image.amountAt(x, y)),
                         1e-7));
        }
    }

    void pixelBackgroundChangesOnlyTheBackgroundTerms_data() { addForms(); }
    void pixelBackgroundChangesOnlyTheBackgroundTerms()
    {
        QFETCH(int, index);
        const ShareForm& form = formAt(index);
        std::vector<double> plain;
        std::vector<double> sloped;
        for (const double energyEv : form.image.energiesEv) {
            const double ratio = 8340.0 / energyEv;
            const double background = form.victoreen
                                          ? 0.3 * std::pow(ratio, 3) - 0.2 * std::pow(ratio, 4)
                                          : 1e-4 * (energyEv - 8000.0);
            plain.push_back(form.image.mutAt(3, 3, energyEv));
            sloped.push_back(plain.back() + background);
        }
        const ShareFit fit = noiseFreeFit(form);
        QVERIFY(near(fit.valuesFor(sloped), fit.valuesFor(plain), 1e-7));
    }

    void pixelErrorsMatchLinearErrorPropagation_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<QList<double>>("wanted");
        QTest::newRow("two, linear")
            << 0 << 0 << 0 << QList<double>{0.029703, 0.029703, 0.029703, 0.009951};
        QTest::newRow("two, Victoreen")
            << 1 << 0 << 0 << QList<double>{0.030771, 0.030771, 0.030771, 0.009839};
        QTest::newRow("four, linear, corner pixel")
            << 2 << 0 << 0
            << QList<double>{0.037753, 0.059419, 0.030210, 0.009631, 0.024209, 0.006369};
        QTest::newRow("four, linear")
            << 2 << 16 << 12
            << QList<double>{0.019809, 0.034881, 0.019060, 0.004437, 0.014743, 0.007689};
        QTest::newRow("four, Victoreen")
            << 3 << 16 << 12
            << QList<double>{0.019997, 0.035493, 0.019151, 0.004574, 0.015418, 0.007670};
    }
    void pixelErrorsMatchLinearErrorPropagation()
    {
        QFETCH(int, index);
        QFETCH(int, x);
        QFETCH(int, y);
        QFETCH(QList<double>, wanted);
        const ShareForm& form = formAt(index);
        // The wanted errors are from linear error propagation, which neglects the non-linear
        // terms that the finite differences in pixelErrors() include. The tolerance 5e-6 is
        // larger than these terms.
        QVERIFY(near(sigmasOf(pixelErrors(form, noiseFreeFit(form), x, y)),
                     {wanted.begin(), wanted.end()}, 5e-6));
    }

    void sharesAndValenceOfTwoReferencesHaveEqualErrors()
    {
        // The two shares sum to 1, so their errors are equal. The valences of the two
        // references differ by 1, so the valence has the same error.
        const std::vector<double> references = referenceErrors(formAt(0));
        const std::vector<double> target = targetErrors(formAt(0));
        for (const std::vector<double>& sigmas : {references, target}) {
            QVERIFY(std::abs(sigmas.at(0) - sigmas.at(1)) < 1e-12);
            QVERIFY(std::abs(sigmas.at(0) - sigmas.at(2)) < 1e-12);
        }
    }

    void targetErrorIncludesTargetAndReferenceNoise_data() { addForms(); }
    void targetErrorIncludesTargetAndReferenceNoise()
    {
        QFETCH(int, index);
        const std::vector<double> references = referenceErrors(formAt(index));
        const std::vector<double> target = targetErrors(formAt(index));
        for (std::size_t k = 0; k < target.size(); ++k) {
            QVERIFY(references.at(k) > 0.0);
            QVERIFY(target.at(k) > references.at(k));
            QVERIFY(target.at(k) < 4.0 * references.at(k));
        }
    }

private:
    static void addForms()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < 4; ++i) {
            QTest::newRow(formAt(i).name) << i;
        }
    }
};

QTEST_APPLESS_MAIN(TestShareErrors)
#include "tst_ShareErrors.moc"
