// The committed files of the sample, read as the program reads them.
#include "NickelTruth.h"

#include "data/A2DData.h"
#include "data/AMutE.h"
#include "data/MapTextReader.h"
#include "data/TDData0.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace nickel;

namespace
{

QString pathOf(const char* name)
{
    return QStringLiteral(SAMPLE_FOLDER "/") + QLatin1String(name);
}

bool readMap(double energyEv, A2DData& map, QStringList& energies)
{
    QFile file(pathOf(mapFileName(energyEv).c_str()));
    return file.open(QIODevice::ReadOnly) &&
           data::readMapText(file, map, [&energies](const QString& text) { energies << text; });
}

} // namespace

class TestNickelFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void spectraLieOnTheirTruthWithinNoise()
    {
        for (const Compound& compound : compounds()) {
            AMutE spectrum;
            QVERIFY(spectrum.readFile(pathOf(compound.fileName)));
            QVERIFY(spectrum.points.size() > 500);
            for (const MutPoint& point : spectrum.points) {
                const double mut = referenceMut(compound, point.energy);
                // six standard deviations and the last printed digit
                const double allowed =
                    6.0 * std::sqrt((1.0 + std::exp(mut)) / spectrumPhotons) + 1e-6;
                QVERIFY(std::abs(point.mut - mut) < allowed);
            }
        }
    }

    void beamlineFormGivesTheSameSpectrumAsThePlainOne()
    {
        AMutE plain;
        AMutE beamline;
        QVERIFY(plain.readFile(pathOf("ref_ni2.dat")));
        QVERIFY(beamline.is9809(pathOf("ref_ni2_9809.dat")));
        QVERIFY(beamline.readFile(pathOf("ref_ni2_9809.dat")));
        QCOMPARE(beamline.points.size(), plain.points.size());
        for (qsizetype i = 0; i < plain.points.size(); ++i) {
            // an angle of 8 decimals fixes 8900 eV to 4e-6 eV
            QVERIFY(std::abs(beamline.points.at(i).energy - plain.points.at(i).energy) < 1e-4);
            QVERIFY(std::abs(beamline.points.at(i).mut - plain.points.at(i).mut) < 6e-7);
        }
    }

    void textMapsHaveTheirSizeEnergyAndTruth()
    {
        for (const double energyEv : mapEnergiesEv) {
            A2DData map;
            QStringList energies;
            QVERIFY(readMap(energyEv, map, energies));
            QCOMPARE(energies, QStringList{QString::number(energyEv)});
            QCOMPARE(map.xNum, mapWidth);
            QCOMPARE(map.yNum, mapHeight);
            QCOMPARE(map.rows.size(), mapWidth * mapHeight);
            QVERIFY(pixelsAreNearTheirTruth(map, energyEv));
        }
    }

    void binaryMapHoldsTheSameValuesAsTheTextMap()
    {
        A2DData map;
        QStringList energies;
        QVERIFY(readMap(mapEnergiesEv[vPoint], map, energies));
        TDData0 binary(0, 0);
        QVERIFY(TDData0::isTDData0File(pathOf("map_8345ev.2dp")));
        QVERIFY(binary.load(pathOf("map_8345ev.2dp")));
        QCOMPARE(binary.width, mapWidth);
        QCOMPARE(binary.height, mapHeight);
        QVERIFY(std::all_of(binary.validFlags.begin(), binary.validFlags.end(),
                            [](bool valid) { return valid; }));
        for (qsizetype i = 0; i < binary.data.size(); ++i) {
            const A2DRow& row = map.rows.at(i);
            // six decimals are kept
            QVERIFY(std::abs(binary.data.at(i) - std::log(row.i0 / row.intensity)) < 6e-7);
        }
    }

private:
    static bool pixelsAreNearTheirTruth(const A2DData& map, double energyEv)
    {
        for (int y = 0; y < mapHeight; ++y) {
            for (int x = 0; x < mapWidth; ++x) {
                const double mut = nickel::pixelMut(x, y, energyEv);
                const double sigma = std::sqrt((1.0 + std::exp(mut)) / pixelPhotons);
                if (!(std::abs(data::pixelMut(map, x, y) - mut) < 6.0 * sigma)) {
                    return false;
                }
            }
        }
        return true;
    }
};

QTEST_APPLESS_MAIN(TestNickelFiles)
#include "tst_NickelFiles.moc"
