// What the sample is made of.
#include "NickelTruth.h"

#include <QTest>

#include <cmath>

using namespace nickel;

class TestNickelTruth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void referencesAgreeAtTheEquivalentPointsAndDifferAtTheVPoint()
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

    void edgesMoveUpWithTheValence()
    {
        QVERIFY(compounds()[3].edgeEv < compounds()[0].edgeEv);
        QVERIFY(compounds()[0].edgeEv < compounds()[1].edgeEv);
        QVERIFY(compounds()[1].edgeEv < compounds()[2].edgeEv);
    }

    void valenceIsARingOnARamp()
    {
        QCOMPARE(valenceAt(0, 0), 2.1);
        QCOMPARE(valenceAt(63, 47), 2.6);
        QCOMPARE(valenceAt(31, 6), 2.9); // 17.5 pixels above the middle
        QVERIFY(valenceAt(31, 23) < 2.4);
    }

    void amountSpellsTwoLetters()
    {
        QCOMPARE(amountAt(0, 0), 0.6);
        QCOMPARE(amountAt(5, 3), 1.4);   // upper left of the N
        QCOMPARE(amountAt(20, 3), 0.6);  // between its legs
        QCOMPARE(amountAt(50, 5), 1.4);  // the dot of the i
        QCOMPARE(amountAt(50, 10), 0.6); // the gap under it
        QCOMPARE(amountAt(58, 44), 1.4); // lower right of the i
        QCOMPARE(amountAt(59, 44), 0.6);
        QCOMPARE(amountAt(58, 45), 0.6);
    }

    void mapNamesSortInTheOrderOfTheirEnergies()
    {
        for (std::size_t row = 1; row < mapEnergiesEv.size(); ++row) {
            QVERIFY(mapFileName(mapEnergiesEv.at(row - 1)) < mapFileName(mapEnergiesEv.at(row)));
        }
    }
};

QTEST_APPLESS_MAIN(TestNickelTruth)
#include "tst_NickelTruth.moc"
