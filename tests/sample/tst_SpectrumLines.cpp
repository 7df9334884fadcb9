// Tests of the pre-edge and post-edge lines of a spectrum and of the values derived from
// them.
#include "NickelTruth.h"
#include "SpectrumErrors.h"

#include <QTest>

#include <cmath>
#include <stdexcept>

using namespace nickel;

namespace
{

double below(double energyEv)
{
    const double wavelength = 12398.424360387684 / energyEv;
    return 0.05 + 0.36 * std::pow(wavelength, 3) - 0.14 * std::pow(wavelength, 4);
}

/// A step at 8340 eV with a different Victoreen line on each side, without white line and
/// oscillations.
std::vector<double> plainStep(double constant, double slope)
{
    std::vector<double> mut;
    for (const double energyEv : scanEnergies()) {
        const double wavelength = 12398.424360387684 / energyEv;
        const double step = energyEv < 8340.0 ? 0.0 : constant + slope * std::pow(wavelength, 3);
        mut.push_back(below(energyEv) + step);
    }
    return mut;
}

bool near(double value, double wanted)
{
    return std::abs(value - wanted) < 1e-9;
}

} // namespace

class TestSpectrumLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAndEdgeJumpOfAPlainStepAreExact()
    {
        const SpectrumLines lines(plainStep(0.9, 0.1));
        const double atEdge = std::pow(12398.424360387684 / 8340.0, 3);
        QVERIFY(near(lines.pre(8500.0), below(8500.0)));
        QVERIFY(near(lines.post(8340.0), below(8340.0) + 0.9 + 0.1 * atEdge));
        QVERIFY(near(lines.edgeJump(), 0.9 + 0.1 * atEdge));
    }

    void preEdgeLineIsSubtractedAndPointsAreNormalised()
    {
        const SpectrumLines lines(plainStep(0.9, 0.1));
        const double at8430 = std::pow(12398.424360387684 / 8430.0, 3);
        QVERIFY(near(lines.abovePre(scanIndex(8320.0)), 0.0));
        QVERIFY(near(lines.abovePre(scanIndex(8430.0)), 0.9 + 0.1 * at8430));
        QVERIFY(near(lines.normalised(scanIndex(8320.0)), 0.0));
        QVERIFY(near(lines.normalised(scanIndex(8430.0)), 1.0));
    }

    void pointsExactlyAtTheLimitsAreExcludedFromBothFits()
    {
        const SpectrumLines plain(plainStep(1.0, 0.0));
        std::vector<double> mut = plainStep(1.0, 0.0);
        mut.at(scanIndex(8290.0)) += 1.0;
        mut.at(scanIndex(8440.0)) += 1.0;
        const SpectrumLines between(mut);
        QCOMPARE(between.pre(8340.0), plain.pre(8340.0));
        QCOMPARE(between.post(8340.0), plain.post(8340.0));
        mut.at(scanIndex(8288.0)) += 1.0;
        mut.at(scanIndex(8442.5)) += 1.0;
        const SpectrumLines inside(mut);
        QVERIFY(!near(inside.pre(8340.0), plain.pre(8340.0)));
        QVERIFY(!near(inside.post(8340.0), plain.post(8340.0)));
    }

    void unmeasuredEnergyIsRejected()
    {
        QCOMPARE(scanEnergies().at(scanIndex(8345.5)), 8345.5);
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, scanIndex(8345.3));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, scanIndex(9000.0));
    }

    void noiseFreeSpectraListReferencesBeforeTheTarget()
    {
        const std::vector<SpectrumLines> spectra = noiseFreeSpectra(3, &targetOfFour());
        QCOMPARE(spectra.size(), std::size_t{4});
        const std::size_t index = scanIndex(8350.0);
        QCOMPARE(spectra.at(2).mut().at(index), referenceMut(compounds()[2], 8350.0));
        QCOMPARE(spectra.at(3).mut().at(index), targetMut(targetOfFour(), 8350.0));
        QCOMPARE(noiseFreeSpectra(2, nullptr).size(), std::size_t{2});
    }

    void noiseOfPointsAddsInQuadrature()
    {
        const std::vector<SpectrumLines> spectra = noiseFreeSpectra(2, nullptr);
        const std::size_t index = scanIndex(8350.0);
        const auto difference = [index](const std::vector<SpectrumLines>& moved) {
            return std::vector<double>{moved[0].mut()[index] - moved[1].mut()[index]};
        };
        const double wanted = std::sqrt((2.0 + std::exp(referenceMut(compounds()[0], 8350.0)) +
                                         std::exp(referenceMut(compounds()[1], 8350.0))) /
                                        spectrumPhotons);
        QVERIFY(std::abs(spectrumErrors(difference, spectra).front() - wanted) < 1e-12);
    }
};

QTEST_APPLESS_MAIN(TestSpectrumLines)
#include "tst_SpectrumLines.moc"
