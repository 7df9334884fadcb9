// Search for the points around many energies at once, and the normalised values at many energies.
#include "data/AMutE.h"

#include "support/SameDouble.h"

#include <QTest>

#include <functional>
#include <limits>
#include <random>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Energy = std::function<double(std::mt19937&, int)>;

AMutE spectrum(const QList<double>& energies)
{
    AMutE made;
    for (const double energy : energies) {
        made.points.append({0.0, energy, static_cast<double>(made.points.size() % 7)});
    }
    made.preLine = {0.5, 1, 2};
    made.postLine = {3, 2, 1};
    return made;
}

} // namespace

Q_DECLARE_METATYPE(Energy)

class tst_AMutEBrackets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void energyGetsTheNearestIntervalOfRisingPoints();
    void firstOfOverlappingPairsIsFound();
    void fallingPairIsSkipped();
    void repeatedEnergyIsFoundInTheFirstIntervalThatContainsIt();
    void fewerThanTwoPointsGiveIndexZeroOrMinusOne();
    void manyEnergiesGiveTheSameIndicesAsSingleSearches_data();
    void manyEnergiesGiveTheSameIndicesAsSingleSearches();
    void manyEnergiesGiveTheSameNormalisedValuesAsSingleLookups();
};

void tst_AMutEBrackets::energyGetsTheNearestIntervalOfRisingPoints()
{
    const AMutE a = spectrum({10, 20, 30});
    QCOMPARE(a.indicesBelow({5, 10, 15, 20, 25, 30, 35}), (QList<int>{0, 0, 0, 0, 1, 1, 1}));
}

void tst_AMutEBrackets::firstOfOverlappingPairsIsFound()
{
    const AMutE a = spectrum({10, 30, 20, 40});
    QCOMPARE(a.indicesBelow({25, 35, 25}), (QList<int>{0, 2, 0}));
}

void tst_AMutEBrackets::fallingPairIsSkipped()
{
    // Only the pairs (10, 15) and (12, 40) rise. Energy 14 is inside the pair of points 0 and
    // 1, energy 25 inside the pair of points 2 and 3.
    const AMutE a = spectrum({10, 15, 12, 40});
    QCOMPARE(a.indicesBelow({14, 25}), (QList<int>{0, 2}));
    // The falling pair comes first.
    QCOMPARE(spectrum({20, 10, 30}).indicesBelow({20}), QList<int>{1});
}

void tst_AMutEBrackets::repeatedEnergyIsFoundInTheFirstIntervalThatContainsIt()
{
    const AMutE a = spectrum({10, 20, 20, 20, 30});
    QCOMPARE(a.indicesBelow({20, 21}), (QList<int>{0, 3}));
    const AMutE first = spectrum({20, 20, 30});
    QCOMPARE(first.indicesBelow({20}), QList<int>{0});
}

void tst_AMutEBrackets::fewerThanTwoPointsGiveIndexZeroOrMinusOne()
{
    QCOMPARE(spectrum({}).indicesBelow({5}), QList<int>{0});
    QCOMPARE(spectrum({10}).indicesBelow({5, 10, 15}), (QList<int>{0, 0, -1}));
    QCOMPARE(spectrum({10}).normalisedAt(QList<double>{5, 10}), (QList<double>{0, 0}));
    QCOMPARE(spectrum({10, 20}).indicesBelow({}), QList<int>{});
}

void tst_AMutEBrackets::manyEnergiesGiveTheSameIndicesAsSingleSearches_data()
{
    QTest::addColumn<Energy>("energy");
    QTest::newRow("rising") << Energy([](std::mt19937&, int i) { return 2.0 * i; });
    QTest::newRow("falling") << Energy([](std::mt19937&, int i) { return 60.0 - 2 * i; });
    QTest::newRow("all equal") << Energy([](std::mt19937&, int) { return 20.0; });
    QTest::newRow("runs of four equal energies")
        << Energy([](std::mt19937&, int i) { return 4.0 * (i / 4); });
    QTest::newRow("random") << Energy(
        [](std::mt19937& random, int) { return static_cast<double>(random() % 50); });
    QTest::newRow("with NaN and infinities") << Energy([](std::mt19937& random, int) {
        switch (random() % 12) {
        case 0:
            return notANumber;
        case 1:
            return infinity;
        case 2:
            return -infinity;
        default:
            return static_cast<double>(random() % 50);
        }
    });
}

void tst_AMutEBrackets::manyEnergiesGiveTheSameIndicesAsSingleSearches()
{
    QFETCH(Energy, energy);
    std::mt19937 random(23);
    for (int trial = 0; trial < 2000; ++trial) {
        QList<double> energies;
        const int count = static_cast<int>(random() % 25);
        for (int i = 0; i < count; ++i) {
            energies.append(energy(random, i));
        }
        AMutE made = spectrum(energies);
        made.dE = trial % 3;
        QList<double> searched{notANumber, infinity, -infinity};
        for (int k = 0; k < 30; ++k) {
            searched.append(static_cast<double>(random() % 120) / 2 - 3);
        }
        const QList<int> indices = made.indicesBelow(searched);
        for (qsizetype k = 0; k < searched.size(); ++k) {
            QCOMPARE(indices.at(k), made.indexBelow(searched.at(k)));
        }
    }
}

void tst_AMutEBrackets::manyEnergiesGiveTheSameNormalisedValuesAsSingleLookups()
{
    const AMutE a = spectrum({10, 30, 20, 20, 40});
    const QList<double> energies{5, 15, 20, 25, 35, 45, notANumber};
    const QList<double> values = a.normalisedAt(energies);
    for (qsizetype k = 0; k < energies.size(); ++k) {
        QVERIFY(tests::sameDouble(values.at(k), a.normalisedAt(energies.at(k))));
    }
}

QTEST_APPLESS_MAIN(tst_AMutEBrackets)
#include "tst_AMutEBrackets.moc"
