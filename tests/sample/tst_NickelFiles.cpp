// Tests of the committed sample files, which are read with the program's readers.
#include "NickelTruth.h"

#include "data/A2DData.h"
#include "data/AMutE.h"
#include "data/MapTextReader.h"
#include "data/TDData0.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace nickel;

namespace
{

QString pathOf(const char* name)
{
    return QStringLiteral(SAMPLE_FOLDER "/") + QLatin1String(name);
}

bool readMap(const Image& image, double energyEv, A2DData& map, QStringList& energies)
{
    QFile file(pathOf(image.fileName(energyEv).c_str()));
    return file.open(QIODevice::ReadOnly) &&
           data::readMapText(file, map, [&energies](const QString& text) { energies << text; });
}

} // namespace

class TestNickelFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void spectraMatchTheTrueValuesWithinNoise()
    {
        for (const Compound& compound : compounds()) {
            QVERIFY(isNearTruth(compound.fileName, [&compound](double energyEv) {
                return referenceMut(compound, energyEv);
            }));
        }
        for (const Target* target : {&targetOfTwo(), &targetOfFour()}) {
            QVERIFY(isNearTruth(target->fileName, [target](double energyEv) {
                return targetMut(*target, energyEv);
            }));
        }
    }

    void beamlineAndPlainFormatContainTheSameSpectrum()
    {
        AMutE plain;
        AMutE beamline;
        QVERIFY(plain.readFile(pathOf("ref_ni2.dat")));
        QVERIFY(beamline.is9809(pathOf("ref_ni2_9809.dat")));
        QVERIFY(beamline.readFile(pathOf("ref_ni2_9809.dat")));
        QCOMPARE(beamline.points.size(), plain.points.size());
        for (qsizetype i = 0; i < plain.points.size(); ++i) {
            // The angles are rounded to 8 decimals of a degree, so the energies differ by up
            // to 4e-6 eV. The tolerance 1e-4 eV is well above this.
            QVERIFY(std::abs(beamline.points.at(i).energy - plain.points.at(i).energy) < 1e-4);
            QVERIFY(std::abs(beamline.points.at(i).mut - plain.points.at(i).mut) < 6e-7);
        }
    }

    void textMapsHaveSizeEnergyAndTrueValues()
    {
        for (const Image* image : {&imageOfTwo(), &imageOfFour()}) {
            for (const double energyEv : image->energiesEv) {
                A2DData map;
                QStringList energies;
                QVERIFY(readMap(*image, energyEv, map, energies));
                QCOMPARE(energies, QStringList{QString::number(energyEv)});
                QCOMPARE(map.xNum, image->width);
                QCOMPARE(map.yNum, image->height);
                QCOMPARE(map.rows.size(), image->width * image->height);
                QVERIFY(pixelsAreNearTheirTruth(*image, map, energyEv));
            }
        }
    }

    void binaryMapHasTheSameValuesAsTheTextMap()
    {
        A2DData map;
        QStringList energies;
        QVERIFY(readMap(imageOfTwo(), mapEnergiesEv[vPoint], map, energies));
        TDData0 binary(0, 0);
        QVERIFY(TDData0::isTDData0File(pathOf("map_8345ev.2dp")));
        QVERIFY(binary.load(pathOf("map_8345ev.2dp")));
        QCOMPARE(binary.width, mapWidth);
        QCOMPARE(binary.height, mapHeight);
        QVERIFY(std::all_of(binary.validFlags.begin(), binary.validFlags.end(),
                            [](bool valid) { return valid; }));
        for (qsizetype i = 0; i < binary.data.size(); ++i) {
            const A2DRow& row = map.rows.at(i);
            // The values in the binary file are rounded to six decimals, so they differ by up
            // to 5e-7.
            QVERIFY(std::abs(binary.data.at(i) - std::log(row.i0 / row.intensity)) < 6e-7);
        }
    }

private:
    static bool isNearTruth(const char* fileName, const std::function<double(double)>& mutAt)
    {
        AMutE spectrum;
        return spectrum.readFile(pathOf(fileName)) && spectrum.points.size() > 500 &&
               std::all_of(spectrum.points.begin(), spectrum.points.end(),
                           [&mutAt](const MutPoint& point) {
                               const double mut = mutAt(point.energy);
                               // six standard deviations plus one unit of the sixth decimal
                               const double allowed =
                                   6.0 * std::sqrt((1.0 + std::exp(mut)) / spectrumPhotons) + 1e-6;
                               return std::abs(point.mut - mut) < allowed;
                           });
    }

    static bool pixelsAreNearTheirTruth(const Image& image, const A2DData& map, double energyEv)
    {
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const double mut = image.mutAt(x, y, energyEv);
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
