// Tests of the sample's true values.
#include "NickelTruth.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace nickel;

class TestNickelTruth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shapesOfNi2AndNi3DifferOnlyAtTheVPoint()
    {
        for (std::size_t row = 0; row < mapEnergiesEv.size(); ++row) {
            const double difference = std::abs(shape(compounds()[niII], mapEnergiesEv.at(row)) -
                                               shape(compounds()[niIII], mapEnergiesEv.at(row)));
            if (row == vPoint) {
                QVERIFY(difference > 0.4);
            } else {
                QVERIFY(difference < 1e-8);
            }
        }
    }

    void shapeIsZeroBelowTheEdgeAndNearOneAboveIt()
    {
        for (const Compound& compound : compounds()) {
            QVERIFY(std::abs(shape(compound, 8100)) < 1e-12);
            QVERIFY(std::abs(shape(compound, 8900) - 1.0) < 0.01);
        }
    }

    void edgeEnergyRisesWithTheValence()
    {
        QVERIFY(compounds()[3].edgeEv < compounds()[0].edgeEv);
        QVERIFY(compounds()[0].edgeEv < compounds()[1].edgeEv);
        QVERIFY(compounds()[1].edgeEv < compounds()[2].edgeEv);
    }

    void valenceIsARampWithARing()
    {
        QCOMPARE(valenceAt(0, 0), 2.1);
        QCOMPARE(valenceAt(63, 47), 2.6);
        QCOMPARE(valenceAt(31, 6), 2.9); // 17.5 pixels from the centre, in the ring
        QVERIFY(valenceAt(31, 23) < 2.4);
    }

    void amountMapShowsTheLettersNi()
    {
        QCOMPARE(amountAt(0, 47), 0.6);
        QCOMPARE(amountAt(5, 44), 1.4);  // top left corner of the N
        QCOMPARE(amountAt(20, 44), 0.6); // between the strokes of the N
        QCOMPARE(amountAt(50, 42), 1.4); // the dot of the i
        QCOMPARE(amountAt(50, 37), 0.6); // gap below the dot
        QCOMPARE(amountAt(58, 3), 1.4);  // bottom right corner of the i
        QCOMPARE(amountAt(59, 3), 0.6);
        QCOMPARE(amountAt(58, 2), 0.6);
    }

    void cornersOfTheFourCompoundImageArePureCompounds()
    {
        const Image& image = imageOfFour();
        QCOMPARE(image.width, 32);
        QCOMPARE(image.height, 24);
        QVERIFY((image.fractionsAt(0, 0) == Fractions{1.0, 0.0, 0.0, 0.0}));
        QVERIFY((image.fractionsAt(31, 0) == Fractions{0.0, 1.0, 0.0, 0.0}));
        QVERIFY((image.fractionsAt(0, 23) == Fractions{0.0, 0.0, 1.0, 0.0}));
        QVERIFY((image.fractionsAt(31, 23) == Fractions{0.0, 0.0, 0.0, 1.0}));
        const Fractions inside = image.fractionsAt(10, 6);
        QCOMPARE(inside.at(0), 21.0 / 31.0 * 17.0 / 23.0);
        QCOMPARE(inside.at(1), 10.0 / 31.0 * 17.0 / 23.0);
        QCOMPARE(inside.at(2), 21.0 / 31.0 * 6.0 / 23.0);
        QCOMPARE(inside.at(3), 10.0 / 31.0 * 6.0 / 23.0);
    }

    void amountOfTheFourCompoundImageIsDoubledInADisk()
    {
        const Image& image = imageOfFour();
        QCOMPARE(image.amountAt(16, 12), 1.4);
        QCOMPARE(image.amountAt(16, 3), 1.4); // 8.5 pixels from the centre, in the disk of radius 9
        QCOMPARE(image.amountAt(16, 2), 0.7);
        QCOMPARE(image.amountAt(0, 0), 0.7);
    }

    void pixelAbsorbanceIsItsMixturePlusTheCommonBackground()
    {
        QCOMPARE(imageOfFour().mutAt(31, 0, 8347.0), 0.05 + 0.7 * shape(compounds()[niIII], 8347));
        // The valence at the left edge is 2.1, so the fractions of the pixel are 0.9 Ni(II)
        // and 0.1 Ni(III).
        QCOMPARE(imageOfTwo().mutAt(0, 0, 8345.0),
                 0.05 + 0.6 * (0.9 * shape(compounds()[niII], 8345) +
                               0.1 * shape(compounds()[niIII], 8345)));
        QCOMPARE(pixelMut(0, 0, 8345.0), imageOfTwo().mutAt(0, 0, 8345.0));
    }

    void targetsHaveTheBackgroundOfTheFirstCompound()
    {
        for (const Target* target : {&targetOfTwo(), &targetOfFour()}) {
            QVERIFY(std::abs(targetMut(*target, 8100) - referenceMut(compounds()[niII], 8100)) <
                    1e-12);
            const double sum = target->fractions[0] + target->fractions[1] + target->fractions[2] +
                               target->fractions[3];
            QVERIFY(std::abs(sum - 1.0) < 1e-15);
        }
        const double pureMetal = mixture({0.0, 0.0, 0.0, 1.0}, 8340.0);
        QCOMPARE(pureMetal, shape(compounds()[3], 8340.0));
    }

    void spectraHaveAPointAtEachMapEnergy()
    {
        const std::vector<double>& scan = scanEnergies();
        for (const Image* image : {&imageOfTwo(), &imageOfFour()}) {
            for (const double energyEv : image->energiesEv) {
                QVERIFY(std::find(scan.begin(), scan.end(), energyEv) != scan.end());
            }
        }
    }

    void alphabeticalOrderOfMapNamesIsTheEnergyOrder()
    {
        const std::vector<double>& four = imageOfFour().energiesEv;
        for (std::size_t row = 1; row < four.size(); ++row) {
            QVERIFY(imageOfFour().fileName(four.at(row - 1)) <
                    imageOfFour().fileName(four.at(row)));
        }
        for (std::size_t row = 1; row < mapEnergiesEv.size(); ++row) {
            QVERIFY(mapFileName(mapEnergiesEv.at(row - 1)) < mapFileName(mapEnergiesEv.at(row)));
        }
    }
};

QTEST_APPLESS_MAIN(TestNickelTruth)
#include "tst_NickelTruth.moc"
