// Reading valid and invalid spectra in both formats from files and devices.
#include "data/AMutE.h"
#include "support/SameDouble.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QBuffer>
#include <QDir>
#include <QRegularExpression>
#include <QTest>
#include <QTextStream>

#include <cmath>
#include <limits>
#include <random>

#include <sys/stat.h>

using Values = QList<double>;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double ln8 = 2.0794415416798357; // ln(800 / 100)

constexpr QFile::Permissions readableByAll = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;

bool same(const Values& a, const Values& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), tests::sameDouble);
}

Values allOf(const AMutE& spectrum, double MutPoint::*field)
{
    Values values;
    for (const MutPoint& point : spectrum.points) {
        values.append(point.*field);
    }
    return values;
}

Values muts(const AMutE& spectrum)
{
    return allOf(spectrum, &MutPoint::mut);
}

Values energies(const AMutE& spectrum)
{
    return allOf(spectrum, &MutPoint::energy);
}

Values angles(const AMutE& spectrum)
{
    return allOf(spectrum, &MutPoint::angle);
}

bool samePoints(const AMutE& a, const AMutE& b)
{
    return same(energies(a), energies(b)) && same(muts(a), muts(b)) && same(angles(a), angles(b));
}

/// A record with a spectrum of two points.
AMutE goodSpectrum()
{
    AMutE spectrum;
    spectrum.valid = true;
    spectrum.filePath = "/former/path";
    spectrum.fileName = "path";
    spectrum.points = {{14.0, 8300.0, 0.5}, {13.9, 8350.0, 1.5}};
    spectrum.minMut = 0.5;
    spectrum.maxMut = 1.5;
    return spectrum;
}

/// Whether @p spectrum has the validity, file names, points and extremes of mut of
/// goodSpectrum().
bool isUnchanged(const AMutE& spectrum)
{
    const AMutE good = goodSpectrum();
    return spectrum.valid && spectrum.filePath == good.filePath &&
           spectrum.fileName == good.fileName && samePoints(spectrum, good) &&
           spectrum.minMut == good.minMut && spectrum.maxMut == good.maxMut;
}

/// A file in the beamline format with this Mode line and these data rows.
QByteArray beamline(const QByteArray& modes, const QByteArray& rows)
{
    return "  9809     BL00\nsample\nCrystal: Si(111) D= 1.0 A\n" + modes +
           "\n Offset 7 8 9 10 11\n" + rows;
}

const QRegularExpression cannotOpen("Can't open a XAFS file.*nowhere");

// Reference implementations of the two readers. They are simple and slow: they simplify every
// line and split it into words with a regular expression.

QStringList plainTokens(const QString& line)
{
    static const QRegularExpression blanks("\\s+");
    return line.simplified().split(blanks, Qt::KeepEmptyParts);
}

bool readPlainReference(const QString& path, AMutE* spectrum)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return false;
    }
    QTextStream stream(&file);
    while (!stream.atEnd()) {
        const QString line = stream.readLine().simplified();
        const QStringList tokens = plainTokens(line);
        if (line.startsWith("#") || tokens.size() < 2) {
            continue;
        }
        const double energy = tokens[0].toDouble();
        const double angle =
            std::asin((12398.424360387684 / energy) / 6.2710632) / 3.1415926535 * 180.0;
        spectrum->points.append({angle, energy, tokens[1].toDouble()});
    }
    return !spectrum->points.isEmpty();
}

bool read9809Reference(const QString& path, AMutE* spectrum)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return false;
    }
    QTextStream stream(&file);
    double d = 3.1355316;
    QList<int> modes;
    int kind = -1;
    int i0Column = -1;
    bool started = false;
    while (!stream.atEnd()) {
        const QStringList tokens = plainTokens(stream.readLine());
        if (started && tokens.size() > 4 && i0Column >= 0 && i0Column < tokens.size()) {
            const double angle = tokens[1].toDouble();
            const double i0 = tokens[i0Column].toDouble();
            double mut = 0.0;
            for (int i = 0; i < modes.size() && i + 3 < tokens.size(); ++i) {
                if (kind == 2 && modes[i] == 2) {
                    mut = std::log(i0 / tokens[i + 3].toDouble());
                    break;
                }
                if (kind == 3 && modes[i] == 3) {
                    mut += tokens[i + 3].toDouble() / i0;
                }
            }
            const double energy =
                (12.398424360387684 / ((d + d) * std::sin((angle / 180.0) * 3.1415926535))) *
                1000.0;
            spectrum->points.append({angle, energy, mut});
        }
        if (tokens.contains("Mode")) {
            modes.clear();
            for (int t = 3; t < tokens.size(); ++t) {
                modes.append(tokens[t].toInt());
                if (modes.back() == 1) {
                    i0Column = t;
                } else if (kind < 0 && modes.back() >= 2) {
                    kind = modes.back();
                }
            }
        }
        started = started || tokens.contains("Offset");
        const auto at = tokens.indexOf("D=");
        if (at >= 0 && at + 1 < tokens.size()) {
            d = tokens[at + 1].toDouble();
        }
    }
    return !spectrum->points.isEmpty();
}

} // namespace

class tst_AMutEFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Opening files with readFile(), and choosing the format
    void readingSetsTheFilePathAndName();
    void unreadablePathLeavesTheSpectrumUnchanged_data();
    void unreadablePathLeavesTheSpectrumUnchanged();
    void fileWithoutReadPermissionLeavesTheSpectrumUnchanged();
    void namedPipeLeavesTheSpectrumUnchanged();
    void failedReadSetsTheNewFileNameAndRemovesThePoints();
    void beamlineFormatStartsWith9809_data();
    void beamlineFormatStartsWith9809();
    void firstLineDecidesTheFileFormat();
    void missingFileKeepsThePointsAndIsLogged();
    void formatIsRecognisedByContentNotByFileName();

    // The plain format
    void plainFileColumnsAreEnergyAndMut_data();
    void plainFileColumnsAreEnergyAndMut();
    void plainFileAnglesUseTheDefaultCrystal();
    void wordsInAPlainFileDoNotChangeTheAngleExtremes();
    void plainFileKeepsPointsWithoutABraggAngle();

    // The beamline format
    void modeLineSelectsTheChannelsForMut_data();
    void modeLineSelectsTheChannelsForMut();
    void valuesOfTheOffsetLineAreNotSubtracted();
    void beamlineEnergyIsCalculatedFromTheAngle();
    void beamlineFileWithoutCrystalSpacingUsesTheDefault();
    void crystalSpacingIsReadFromTheBeamlineFile_data();
    void crystalSpacingIsReadFromTheBeamlineFile();
    void crystalSpacingInADataRowAffectsOnlyLaterRows();
    void beamlineFileWithoutUsableDataRowsIsRefused_data();
    void beamlineFileWithoutUsableDataRowsIsRefused();
    void zeroTransmissionIsKeptAndWidensTheMutExtremes();
    void beamlineFileKeepsDescendingEnergies();
    void successfulReadFitsTheBackgroundLines_data();
    void successfulReadFitsTheBackgroundLines();

    // Hostile files
    void hostileFilesMatchTheReferenceImplementation_data();
    void hostileFilesMatchTheReferenceImplementation();
    void truncatedFileMatchesTheReferenceImplementation_data();
    void truncatedFileMatchesTheReferenceImplementation();
    void randomBytesMatchTheReferenceImplementation();
    void lineOfTwoMegabytesGivesAtMostOnePoint_data();
    void lineOfTwoMegabytesGivesAtMostOnePoint();
    void lineOf16MiBIsRead_data();
    void lineOf16MiBIsRead();
    void lineOver16MiBIsRefused_data() { lineOf16MiBIsRead_data(); }
    void lineOver16MiBIsRefused();
    void deviceIsReadLikeAFile_data();
    void deviceIsReadLikeAFile();
    void deviceIsReadFromTheCurrentPosition();

private:
    QString write(const QByteArray& content);
    bool read(AMutE* spectrum, const QByteArray& content);
    bool readsLikeTheReference(const QByteArray& content);

    QTemporaryDir dir;
};

QString tst_AMutEFiles::write(const QByteArray& content)
{
    return tests::writeFile(dir, "spectrum.txt", content);
}

bool tst_AMutEFiles::read(AMutE* spectrum, const QByteArray& content)
{
    return spectrum->readFile(write(content));
}

/// Whether readFile() and the reference implementation agree on success and on every point.
bool tst_AMutEFiles::readsLikeTheReference(const QByteArray& content)
{
    const QString path = write(content);
    AMutE reference;
    AMutE spectrum = goodSpectrum();
    const bool expected = spectrum.is9809(path) ? read9809Reference(path, &reference)
                                                : readPlainReference(path, &reference);
    return spectrum.readFile(path) == expected && spectrum.valid == expected &&
           samePoints(spectrum, reference);
}

void tst_AMutEFiles::readingSetsTheFilePathAndName()
{
    const QString path = tests::writeFile(dir, "Ni foil.dat", "8300 1\n");
    AMutE spectrum;
    QVERIFY(spectrum.readFile(path));
    QVERIFY(spectrum.valid);
    QCOMPARE(spectrum.filePath, path);
    QCOMPARE(spectrum.fileName, QString("Ni foil.dat"));
}

void tst_AMutEFiles::unreadablePathLeavesTheSpectrumUnchanged_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("empty path") << QString();
    QTest::newRow("missing file") << "/nowhere/file";
    QTest::newRow("folder") << QDir::tempPath();
    QTest::newRow("endless device") << "/dev/zero";
}

void tst_AMutEFiles::unreadablePathLeavesTheSpectrumUnchanged()
{
    QFETCH(QString, path);
    AMutE spectrum = goodSpectrum();
    QVERIFY(!spectrum.readFile(path));
    QVERIFY(isUnchanged(spectrum));
}

void tst_AMutEFiles::fileWithoutReadPermissionLeavesTheSpectrumUnchanged()
{
    const QString readable = tests::writeFile(dir, "readable", "8300 1\n");
    const QString closed = tests::writeFile(dir, "closed", "8300 1\n");
    QVERIFY(QFile::setPermissions(readable, readableByAll));
    QVERIFY(QFile::setPermissions(closed, {}));
    QVERIFY(::chmod(QFile::encodeName(dir.path()).constData(), 0777) == 0);

    const tests::Unprivileged nobody;
    if (!nobody.holds()) {
        QSKIP("root privileges cannot be dropped here");
    }
    AMutE spectrum = goodSpectrum();
    QVERIFY(!spectrum.readFile(closed));
    QVERIFY(isUnchanged(spectrum));
    QVERIFY(spectrum.readFile(readable));
}

void tst_AMutEFiles::namedPipeLeavesTheSpectrumUnchanged()
{
    const QString path = dir.filePath("pipe");
    QVERIFY(::mkfifo(QFile::encodeName(path).constData(), 0666) == 0);
    AMutE spectrum = goodSpectrum();
    QVERIFY(!spectrum.readFile(path)); // would hang if it opened the pipe
    QVERIFY(!spectrum.is9809(path));
    QVERIFY(!spectrum.readPlain(path));
    QVERIFY(!spectrum.read9809(path));
    QVERIFY(isUnchanged(spectrum));
}

void tst_AMutEFiles::failedReadSetsTheNewFileNameAndRemovesThePoints()
{
    for (const QByteArray& content : {QByteArray(), QByteArray("9809\n1 2 3 4 5\n")}) {
        AMutE spectrum = goodSpectrum();
        const QString path = write(content);
        QVERIFY(!spectrum.readFile(path));
        QVERIFY(!spectrum.valid);
        QVERIFY(spectrum.points.isEmpty());
        QCOMPARE(spectrum.filePath, path);
        QCOMPARE(spectrum.fileName, QString("spectrum.txt"));
    }
}

void tst_AMutEFiles::beamlineFormatStartsWith9809_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("expected");

    QTest::newRow("number alone") << QByteArray("9809") << true;
    QTest::newRow("words after it") << QByteArray("9809 BL12C\n") << true;
    QTest::newRow("blanks before it") << QByteArray(" \t 9809\n") << true;
    QTest::newRow("only four characters count") << QByteArray("98091234\n") << true;
    QTest::newRow("blank inside") << QByteArray("98 09\n") << false;
    QTest::newRow("word before it") << QByteArray("x9809\n") << false;
    QTest::newRow("three characters") << QByteArray("980") << false;
    QTest::newRow("second line") << QByteArray("\n9809\n") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("CRLF") << QByteArray("9809\r\n8300 1\r\n") << true;
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf"
                                                   "9809\n")
                                     << true;
    QTest::newRow("NUL before it") << QByteArray("\0"
                                                 "9809\n",
                                                 6)
                                   << false;
}

void tst_AMutEFiles::beamlineFormatStartsWith9809()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, expected);
    QCOMPARE(AMutE().is9809(write(content)), expected);
}

void tst_AMutEFiles::firstLineDecidesTheFileFormat()
{
    // The file is read in the beamline format and has no data rows, because it has neither a
    // Mode line nor an Offset line. The reader of the plain format would read points from the
    // later lines.
    AMutE spectrum;
    QVERIFY(!read(&spectrum, "9809\n8300 1\n8400 2\n8300 1 2 3 4 5\n"));
    QVERIFY(spectrum.points.isEmpty());
}

void tst_AMutEFiles::missingFileKeepsThePointsAndIsLogged()
{
    AMutE spectrum = goodSpectrum();
    QTest::ignoreMessage(QtDebugMsg, cannotOpen);
    QVERIFY(!spectrum.is9809("/nowhere/file"));
    QTest::ignoreMessage(QtDebugMsg, cannotOpen);
    QVERIFY(!spectrum.readPlain("/nowhere/file"));
    QTest::ignoreMessage(QtDebugMsg, cannotOpen);
    QVERIFY(!spectrum.read9809("/nowhere/file"));
    QVERIFY(isUnchanged(spectrum));
}

void tst_AMutEFiles::formatIsRecognisedByContentNotByFileName()
{
    AMutE spectrum;
    QVERIFY(spectrum.readFile(tests::writeFile(dir, "plain.9809", "8300 1\n")));
    QVERIFY(spectrum.readFile(
        tests::writeFile(dir, "beam.txt", beamline("Mode 0 0 1 2", "0 30 0 800 100\n"))));
    QCOMPARE(muts(spectrum), Values{ln8});
}

void tst_AMutEFiles::plainFileColumnsAreEnergyAndMut_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<Values>("energy");
    QTest::addColumn<Values>("mut");

    const Values none;
    QTest::newRow("two columns") << QByteArray("8300 0.5\n8400 1.25\n") << Values{8300, 8400}
                                 << Values{0.5, 1.25};
    QTest::newRow("third column is ignored")
        << QByteArray("8300 1 99\n8400 2 x y z\n") << Values{8300, 8400} << Values{1, 2};
    QTest::newRow("no newline at the end") << QByteArray("8300 1") << Values{8300} << Values{1};
    QTest::newRow("tabs and many blanks")
        << QByteArray("\t8300 \t  1\t\n") << Values{8300} << Values{1};
    QTest::newRow("exponents") << QByteArray("8.3e3 -1E-2\n") << Values{8300} << Values{-0.01};
    QTest::newRow("plus sign") << QByteArray("+8300 +1\n") << Values{8300} << Values{1};
    QTest::newRow("no logarithm is applied")
        << QByteArray("1000 800\n") << Values{1000} << Values{800};
    QTest::newRow("comment lines are skipped")
        << QByteArray("# 1 2\n  # 3 4\n#5 6\n8300 1\n") << Values{8300} << Values{1};
    QTest::newRow("# after a number starts no comment")
        << QByteArray("8300 #1\n8400 2 # x\n") << Values{8300, 8400} << Values{0, 2};
    QTest::newRow("lines of one word are skipped")
        << QByteArray("8300\n\n   \n8400 2\n") << Values{8400} << Values{2};
    QTest::newRow("words read as 0")
        << QByteArray("Energy mut\n8300 1\n") << Values{0, 8300} << Values{0, 1};
    QTest::newRow("numbers with trailing characters read as 0")
        << QByteArray("8,300 1e\n8300eV 1.5x\n") << Values{0, 0} << Values{0, 0};
    QTest::newRow("NaN and inf words")
        << QByteArray("inf nan\n-inf NaN\n") << Values{infinity, -infinity}
        << Values{notANumber, notANumber};
    QTest::newRow("overflow") << QByteArray("1e999 -1e999\n") << Values{infinity}
                              << Values{-infinity};
    QTest::newRow("CRLF") << QByteArray("8300 1\r\n8400 2\r\n") << Values{8300, 8400}
                          << Values{1, 2};
    QTest::newRow("order of the file is kept")
        << QByteArray("8400 2\n8300 1\n8400 3\n") << Values{8400, 8300, 8400} << Values{2, 1, 3};
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf"
                                                   "8300 1\n")
                                     << Values{8300} << Values{1};
    QTest::newRow("9809 on a later line is a number")
        << QByteArray("8300 1\n9809 2\n") << Values{8300, 9809} << Values{1, 2};
    QTest::newRow("empty file") << QByteArray() << none << none;
    QTest::newRow("only comments") << QByteArray("# 8300 1\n") << none << none;
    QTest::newRow("only one column") << QByteArray("8300\n8400\n") << none << none;
}

void tst_AMutEFiles::plainFileColumnsAreEnergyAndMut()
{
    QFETCH(QByteArray, content);
    QFETCH(Values, energy);
    QFETCH(Values, mut);
    AMutE spectrum;
    QCOMPARE(read(&spectrum, content), !energy.isEmpty());
    QCOMPARE(spectrum.valid, !energy.isEmpty());
    QVERIFY(same(energies(spectrum), energy));
    QVERIFY(same(muts(spectrum), mut));
}

void tst_AMutEFiles::plainFileAnglesUseTheDefaultCrystal()
{
    // Bragg's law: sin(angle) = h c / (E 2d) with 2d = 6.2710632 angstrom, which is 1/2 at
    // 3954.169800230265 eV. The conversion to degrees uses pi truncated to 3.1415926535, so 30
    // becomes 30 pi / 3.1415926535 = 30.000000000857458. The tolerance 1e-12 is far above the
    // rounding error of numbers near 30 (4e-15) and far below the effect of the truncated pi
    // (9e-10).
    AMutE spectrum;
    QVERIFY(read(&spectrum, "3954.169800230265 1\n8000 1\n"));
    QVERIFY(std::fabs(angles(spectrum)[0] - 30.000000000857458) < 1e-12);
    QVERIFY(std::fabs(angles(spectrum)[1] - 14.308076992282663) < 1e-12);
    QCOMPARE(spectrum.maxAngle, angles(spectrum)[0]);
    QCOMPARE(spectrum.minAngle, angles(spectrum)[1]);
}

void tst_AMutEFiles::wordsInAPlainFileDoNotChangeTheAngleExtremes()
{
    AMutE words;
    QVERIFY(read(&words, "Energy mut\n"));
    QVERIFY(std::isnan(words.points.at(0).angle));
    QCOMPARE(words.minAngle, 1e300);
    QCOMPARE(words.maxAngle, -1e300);
    QCOMPARE(words.minEnergy, 0.0);

    AMutE spectrum;
    QVERIFY(read(&spectrum, "Energy mut\n8000 1\n"));
    QCOMPARE(spectrum.minAngle, spectrum.points.at(1).angle);
    QCOMPARE(spectrum.maxAngle, spectrum.points.at(1).angle);
    QCOMPARE(spectrum.minEnergy, 0.0);
}

void tst_AMutEFiles::plainFileKeepsPointsWithoutABraggAngle()
{
    // The largest possible sine is 1, so the crystal reflects only energies above
    // h c / 2d = 1977.08 eV.
    AMutE spectrum;
    QVERIFY(read(&spectrum, "1977 1\n1978 2\n"));
    QCOMPARE(spectrum.points.size(), 2);
    QVERIFY(std::isnan(spectrum.points.at(0).angle));
    QVERIFY(spectrum.points.at(1).angle > 88.0);
}

void tst_AMutEFiles::modeLineSelectsTheChannelsForMut_data()
{
    QTest::addColumn<QByteArray>("modes");
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<Values>("mut");

    const QByteArray row = "0 30 0 800 100 400\n"; // I0 is 800, the other counts are 100 and 400
    QTest::newRow("transmission") << QByteArray("Mode 0 0 1 2") << row << Values{ln8};
    QTest::newRow("fluorescence") << QByteArray("Mode 0 0 1 3") << row << Values{0.125};
    QTest::newRow("I0 after the counts")
        << QByteArray("Mode 0 0 2 0 1") << QByteArray("0 30 0 100 7 800\n") << Values{ln8};
    QTest::newRow("second transmission channel is ignored")
        << QByteArray("Mode 0 0 1 2 2") << row << Values{ln8};
    QTest::newRow("first transmission channel after an unused channel")
        << QByteArray("Mode 0 0 1 0 2 2") << QByteArray("0 30 0 800 7 100 9\n") << Values{ln8};
    QTest::newRow("fluorescence channels are added")
        << QByteArray("Mode 0 0 1 3 3") << row << Values{0.625};
    QTest::newRow("later I0 channel wins")
        << QByteArray("Mode 0 0 1 2 1") << row << Values{std::log(4.0)};
    QTest::newRow("fluorescence before transmission")
        << QByteArray("Mode 0 0 3 2 1") << QByteArray("0 30 0 400 100 800\n") << Values{0.5};
    QTest::newRow("transmission before fluorescence")
        << QByteArray("Mode 0 0 2 3 1") << QByteArray("0 30 0 100 400 800\n") << Values{ln8};
    QTest::newRow("mode 4 first gives 0") << QByteArray("Mode 0 0 4 2 1") << row << Values{0};
    QTest::newRow("no mode of 2 or more gives 0")
        << QByteArray("Mode 0 0 1 0 0") << row << Values{0};
    QTest::newRow("words and numbers beyond int are mode 0")
        << QByteArray("Mode 0 0 1 x 2.0 4294967298 0x2 2") << QByteArray("0 30 0 800 1 2 3 4 100\n")
        << Values{ln8};
    QTest::newRow("negative modes are ignored")
        << QByteArray("Mode 0 0 1 -2 2") << QByteArray("0 30 0 800 7 100\n") << Values{ln8};
    QTest::newRow("the word Mode can be anywhere")
        << QByteArray("a b c 1 2 Mode") << row << Values{ln8};
    QTest::newRow("the word Mode itself is a channel of mode 0")
        << QByteArray("a b c Mode 1 2") << QByteArray("0 30 0 7 800 100\n") << Values{ln8};
    QTest::newRow("Mode is matched as a whole word, case-sensitive")
        << QByteArray("Mode 0 0 1 2\nmode 0 0 2 1\nModes 0 0 2 1") << row << Values{ln8};

    QTest::newRow("row of 4 tokens is skipped")
        << QByteArray("Mode 0 0 1 2") << QByteArray("0 30 0 800\n") + row << Values{ln8};
    QTest::newRow("row of 5 tokens is read")
        << QByteArray("Mode 0 0 1 2") << QByteArray("0 30 0 800 100\n") << Values{ln8};
    QTest::newRow("counts without a mode are ignored")
        << QByteArray("Mode 0 0 1 3") << QByteArray("0 30 0 800 100 999 999\n") << Values{0.125};
    QTest::newRow("modes without a count are ignored")
        << QByteArray("Mode 0 0 1 3 3 3") << QByteArray("0 30 0 800 100\n") << Values{0.125};
    QTest::newRow("transmission channel beyond the row gives 0")
        << QByteArray("Mode 0 0 1 0 2") << QByteArray("0 30 0 800 100\n") << Values{0};
    QTest::newRow("row too short for the I0 column is skipped")
        << QByteArray("Mode 0 0 2 0 1") << QByteArray("0 30 0 100 7\n0 30 0 100 7 800\n")
        << Values{ln8};
    QTest::newRow("words in a row read as 0")
        << QByteArray("Mode 0 0 1 3") << QByteArray("x 30 x 800 x\n") << Values{0};

    QTest::newRow("second Mode line keeps the measurement kind")
        << QByteArray("Mode 0 0 1 2\nMode 0 0 1 3 2") << QByteArray("0 30 0 800 7 100\n")
        << Values{ln8};
    QTest::newRow("second Mode line keeps the I0 column")
        << QByteArray("Mode 0 0 1 2\nMode 0 0 0 2") << row << Values{ln8};
    QTest::newRow("second Mode line moves the I0 column")
        << QByteArray("Mode 0 0 1 2\nMode 0 0 2 1") << QByteArray("0 30 0 100 800\n")
        << Values{ln8};
    QTest::newRow("second Mode line replaces the channel list")
        << QByteArray("Mode 0 0 1 3 3\nMode 0 0 0 3") << row << Values{0.125};
    QTest::newRow("second Mode line without channels empties the channel list")
        << QByteArray("Mode 0 0 1 3\nMode 0") << row << Values{0};
    QTest::newRow("Mode line among the rows is a row and a Mode line")
        << QByteArray("Mode 0 0 1 2") << row + "Mode 30 0 1 4 2\n0 30 0 800 7 100\n"
        << Values{ln8, std::log(1.0 / 4.0), ln8};
    QTest::newRow("rows before the first I0 channel are skipped")
        << QByteArray() << row + "Mode 0 0 1 2\n" + row << Values{ln8};
    QTest::newRow("Offset line among the rows is a row")
        << QByteArray("Mode 0 0 1 2") << QByteArray("Offset 30 0 800 100\n") << Values{ln8};
}

void tst_AMutEFiles::modeLineSelectsTheChannelsForMut()
{
    QFETCH(QByteArray, modes);
    QFETCH(QByteArray, rows);
    QFETCH(Values, mut);
    AMutE spectrum;
    QVERIFY(read(&spectrum, beamline(modes, rows)));
    QVERIFY(same(muts(spectrum), mut));
}

void tst_AMutEFiles::valuesOfTheOffsetLineAreNotSubtracted()
{
    // With the offsets 700 and 50 subtracted, mut would be ln(100 / 50). The Offset line
    // itself is not a data row, although it has enough words.
    AMutE spectrum;
    QVERIFY(read(&spectrum, "9809\nMode 0 0 1 2\nOffset 0 0 700 50\n0 30 0 800 100\n"));
    QVERIFY(same(muts(spectrum), Values{ln8}));
}

void tst_AMutEFiles::beamlineEnergyIsCalculatedFromTheAngle()
{
    // E = h c / (2 d sin(30 degrees)) is equal to h c for d = 1 angstrom. The truncated pi
    // changes it to 12398.424360709065 eV. The 20 in the first column is not used.
    AMutE spectrum;
    QVERIFY(read(&spectrum, beamline("Mode 0 0 1 2", "20 30 0 800 100\n")));
    QCOMPARE(spectrum.points.at(0).angle, 30.0);
    QVERIFY(std::fabs(spectrum.points.at(0).energy - 12398.424360709065) < 1e-10);
}

void tst_AMutEFiles::beamlineFileWithoutCrystalSpacingUsesTheDefault()
{
    // The default crystal has d = 3.1355316 angstrom. With the truncated pi,
    // E = h c / (2 * 3.1355316 * sin(14 degrees)) is 8172.4099229207095 eV.
    AMutE spectrum;
    QVERIFY(read(&spectrum, "9809\nMode 0 0 1 2\nOffset\n0 14 0 800 100\n"));
    QVERIFY(std::fabs(spectrum.points.at(0).energy - 8172.4099229207095) < 1e-10);
}

void tst_AMutEFiles::crystalSpacingIsReadFromTheBeamlineFile_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<double>("d");

    QTest::newRow("separate words") << QByteArray("D= 2.0 A") << 2.0;
    QTest::newRow("among words") << QByteArray("Mono: Si(311) D= 1.5 A  Initial angle= 12") << 1.5;
    QTest::newRow("D= joined to the number is not found") << QByteArray("D=2.0 A") << 3.1355316;
    QTest::newRow("blank before the equals sign: not found") << QByteArray("D = 2.0") << 3.1355316;
    QTest::newRow("nothing after D=") << QByteArray("Mono D=") << 3.1355316;
    QTest::newRow("lower case is not found") << QByteArray("d= 2.0") << 3.1355316;
    QTest::newRow("last D= line wins") << QByteArray("D= 2.0\nD= 1.5") << 1.5;
    QTest::newRow("first D= of a line wins") << QByteArray("D= 2.0 D= 1.5") << 2.0;
    QTest::newRow("word reads as 0") << QByteArray("D= x") << 0.0;
}

void tst_AMutEFiles::crystalSpacingIsReadFromTheBeamlineFile()
{
    QFETCH(QByteArray, line);
    QFETCH(double, d);
    AMutE spectrum;
    QVERIFY(read(&spectrum, "9809\n" + line + "\nMode 0 0 1 2\nOffset\n0 30 0 800 100\n"));
    // At 30 degrees, E = h c / d. The truncated pi makes sin(30 degrees) smaller, and so
    // E larger, by a relative 2.6e-11. For d = 0 both energies are infinite.
    const double expected = 12398.424360387684 / d;
    QVERIFY(spectrum.points.at(0).energy == expected ||
            std::fabs(spectrum.points.at(0).energy / expected - 1.0) < 3e-11);
}

void tst_AMutEFiles::crystalSpacingInADataRowAffectsOnlyLaterRows()
{
    AMutE spectrum;
    QVERIFY(read(&spectrum, beamline("Mode 0 0 1 2", "0 30 0 800 100 D= 2\n0 30 0 800 100\n")));
    QCOMPARE(spectrum.points.at(0).energy, 2.0 * spectrum.points.at(1).energy);
}

void tst_AMutEFiles::beamlineFileWithoutUsableDataRowsIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");

    const QByteArray row = "0 30 0 800 100\n";
    QTest::newRow("no Offset") << QByteArray("9809\nMode 0 0 1 2\n" + row);
    QTest::newRow("Offset joined to another word")
        << QByteArray("9809\nMode 0 0 1 2\nOffset: 0\n" + row);
    QTest::newRow("offset in lower case") << QByteArray("9809\nMode 0 0 1 2\noffset\n" + row);
    QTest::newRow("no data row") << beamline("Mode 0 0 1 2", "");
    QTest::newRow("only short rows") << beamline("Mode 0 0 1 2", "0 30 0 800\n1 2\n");
    QTest::newRow("no Mode line") << beamline("", row);
    QTest::newRow("no I0 channel") << beamline("Mode 0 0 2 3", row);
    QTest::newRow("I0 before the channels") << beamline("Mode 1 1", row);
    QTest::newRow("I0 beyond every row") << beamline("Mode 0 0 2 2 1", row);
    QTest::newRow("first line only") << QByteArray("9809");
}

void tst_AMutEFiles::beamlineFileWithoutUsableDataRowsIsRefused()
{
    QFETCH(QByteArray, content);
    AMutE spectrum = goodSpectrum();
    QVERIFY(!read(&spectrum, content));
    QVERIFY(!spectrum.valid);
    QVERIFY(spectrum.points.isEmpty());
}

void tst_AMutEFiles::zeroTransmissionIsKeptAndWidensTheMutExtremes()
{
    AMutE spectrum;
    QVERIFY(read(&spectrum, beamline("Mode 0 0 1 2", "0 30 0 800 100\n0 29 0 800 0\n"
                                                     "0 28 0 0 0\n0 27 0 0 5\n0 26 0 -8 1\n")));
    QVERIFY(same(muts(spectrum), Values{ln8, infinity, notANumber, -infinity, notANumber}));
    QCOMPARE(spectrum.maxMut, infinity);
    QCOMPARE(spectrum.minMut, -infinity);

    QVERIFY(read(&spectrum, beamline("Mode 0 0 1 2", "0 30 0 800 100\n0 28 0 0 0\n")));
    QCOMPARE(spectrum.maxMut, ln8); // the NaN is ignored
    QCOMPARE(spectrum.minMut, ln8);
}

void tst_AMutEFiles::beamlineFileKeepsDescendingEnergies()
{
    AMutE spectrum;
    QVERIFY(read(&spectrum, beamline("Mode 0 0 1 2", "0 28 0 8 1\n0 29 0 8 2\n0 30 0 8 4\n")));
    QCOMPARE(angles(spectrum), (Values{28, 29, 30}));
    QVERIFY(energies(spectrum)[0] > energies(spectrum)[2]);
    QCOMPARE(spectrum.minAngle, 28.0);
    QCOMPARE(spectrum.maxAngle, 30.0);
    QCOMPARE(spectrum.maxEnergy, energies(spectrum)[0]);
}

void tst_AMutEFiles::successfulReadFitsTheBackgroundLines_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("plain") << QByteArray("8600 1\n8700 1\n8800 1\n8900 1\n");
    // The angles from 12.5 to 13.3 degrees correspond to energies from 9135 to 8594 eV.
    QTest::newRow("beamline") << QByteArray(
        "9809\nMode 0 0 1 3\nOffset\n0 12.5 0 1 1\n0 12.7 0 1 1\n"
        "0 13 0 1 1\n0 13.3 0 1 1\n");
}

void tst_AMutEFiles::successfulReadFitsTheBackgroundLines()
{
    // All mut values above postEdgeStart are 1, and no point is below preEdgeEnd. So the
    // post-edge line is 1 and the pre-edge line is NaN. The condition number of the normal
    // equations is above 1e7, so the tolerance is 1e-6.
    QFETCH(QByteArray, content);
    AMutE spectrum;
    QVERIFY(read(&spectrum, content));
    QVERIFY(std::fabs(spectrum.postValue(8750.0) - 1.0) < 1e-6);
    QVERIFY(std::isnan(spectrum.preLine.c));
}

void tst_AMutEFiles::hostileFilesMatchTheReferenceImplementation_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("lone CR") << QByteArray("8300 1\r8400 2\n8500\r3\n");
    QTest::newRow("CR only") << QByteArray("8300 1\r8400 2\r");
    QTest::newRow("CR CR LF") << QByteArray("8300 1\r\r\n8400 2\r\r\n");
    QTest::newRow("beamline file with lone CR")
        << QByteArray("9809\rMode 0 0 1 2\nMode 0 0 1 2\rOffset\nOffset\n0 30 0 8\r1\n0 1 0 8 1\n");
    QTest::newRow("NUL bytes") << QByteArray("8300\0 1\n83\0 00 2 3\n\0\n", 22);
    QTest::newRow("unusual blanks") << QByteArray("8300\v1\f2\n8400\xc2\xa0"
                                                  "5\n\xe2\x80\x83"
                                                  "8500 "
                                                  "6\n8600\xc2\x85"
                                                  "7\n\x1c"
                                                  "8700 8\n");
    QTest::newRow("broken UTF-8") << QByteArray("8300 1\xff\xfe\n\xc3(8400 2\n8500 3\n");
    QTest::newRow("UTF-16 with a lone surrogate") << QByteArray("\xff\xfe"
                                                                "8\0 \0"
                                                                "1\0\n\0"
                                                                "8\0 \0"
                                                                "2\0 \0\0\xd8 \0"
                                                                "3\0\n\0",
                                                                26);
    QTest::newRow("UTF-32 mark") << QByteArray("\xff\xfe\0\0"
                                               "8\0\0\0 \0\0\0"
                                               "1\0\0\0",
                                               16);
    QTest::newRow("number words") << QByteArray("nan inf\n-nan -inf\n+nan +inf\nnan(1) infinity\n"
                                                "1e400 1e-400\n0x10 1_0\n1,000 1e\n.5 5.\n- +\n"
                                                "1d3 1E+3\n\xd9\xa3 \xef\xbc\x91\n");
    QTest::newRow("only newlines") << QByteArray(1000, '\n');
    QTest::newRow("only blanks") << QByteArray(100000, ' ');
    QTest::newRow("long Mode line")
        << beamline("Mode 0 0 1" + QByteArray(" 3").repeated(50000),
                    "0 30 0 8" + QByteArray(" 1").repeated(60000) + "\n");
}

void tst_AMutEFiles::hostileFilesMatchTheReferenceImplementation()
{
    QFETCH(QByteArray, content);
    QVERIFY(readsLikeTheReference(content));
}

void tst_AMutEFiles::truncatedFileMatchesTheReferenceImplementation_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("plain") << QByteArray("# head\nE mut\n8300 1.5\r\n8400 -2e-1 x\n\n8500 nan\n");
    QTest::newRow("beamline") << beamline("Mode 0 0 1 2 3", "0 30 0 800 100 5\r\n0 29 0 8 1 2\n");
}

void tst_AMutEFiles::truncatedFileMatchesTheReferenceImplementation()
{
    QFETCH(QByteArray, content);
    for (qsizetype length = 0; length <= content.size(); ++length) {
        QVERIFY2(readsLikeTheReference(content.first(length)), QByteArray::number(length));
    }
}

void tst_AMutEFiles::randomBytesMatchTheReferenceImplementation()
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> byte(0, 255);
    const auto noise = [&](qsizetype size) {
        QByteArray bytes(size, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(byte(random)); });
        return bytes;
    };
    for (int trial = 0; trial < 100; ++trial) {
        QVERIFY(readsLikeTheReference(noise(3000)));
        QVERIFY(readsLikeTheReference(beamline("Mode 0 0 1 2 3", noise(3000))));
    }
}

void tst_AMutEFiles::lineOfTwoMegabytesGivesAtMostOnePoint_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<qsizetype>("points");

    constexpr qsizetype size = 2'000'000;
    const QByteArray numbers = QByteArray("1 ").repeated(size / 2);
    QTest::newRow("one word") << QByteArray(size, '1') << qsizetype(0);
    QTest::newRow("blanks") << QByteArray(size, ' ') << qsizetype(0);
    QTest::newRow("numbers") << numbers << qsizetype(1);
    QTest::newRow("beamline, first line") << "9809 " + numbers << qsizetype(0);
    QTest::newRow("beamline, one data row") << beamline("Mode 0 0 1 2", numbers) << qsizetype(1);
    QTest::newRow("beamline, Mode line") << beamline("Mode 0 0 " + numbers, "0 30 0 1 1\n")
                                         << qsizetype(0); // the row has no I0 column
}

void tst_AMutEFiles::lineOfTwoMegabytesGivesAtMostOnePoint()
{
    QFETCH(QByteArray, content);
    QFETCH(qsizetype, points);
    AMutE spectrum;
    QCOMPARE(read(&spectrum, content), points > 0);
    QCOMPARE(spectrum.points.size(), points);
}

// A line of 16 MiB, with or without a line feed at its end.
void tst_AMutEFiles::lineOf16MiBIsRead_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("end");
    const QByteArray header = "9809\nMode 0 0 1 2\n";
    QTest::newRow("plain") << QByteArray() << QByteArray("\n1 2\n");
    QTest::newRow("plain, last line") << QByteArray("1 2\n") << QByteArray();
    QTest::newRow("beamline") << header << QByteArray("\nOffset\n0 30 0 800 100\n");
    QTest::newRow("beamline, last line") << header + "Offset\n0 30 0 800 100\n" << QByteArray();
}

void tst_AMutEFiles::lineOf16MiBIsRead()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("takes minutes with AddressSanitizer's realloc()");
#endif
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, end);
    AMutE spectrum;
    QVERIFY(read(&spectrum, start + QByteArray(16777216, 'x') + end));
    QCOMPARE(spectrum.points.size(), 1);
}

void tst_AMutEFiles::lineOver16MiBIsRefused()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("takes minutes with AddressSanitizer's realloc()");
#endif
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, end);
    AMutE spectrum;
    QVERIFY(read(&spectrum, "1 2\n3 4\n"));
    QTest::ignoreMessage(QtDebugMsg, "the file is refused: a line is longer than a line may be");
    QVERIFY(!read(&spectrum, start + QByteArray(16777217, 'x') + end));
    QVERIFY(!spectrum.valid);
    QCOMPARE(spectrum.points.capacity(), 0);
    QCOMPARE(spectrum.minEnergy, 1e300);
    QCOMPARE(spectrum.maxEnergy, -1e300);
}

void tst_AMutEFiles::deviceIsReadLikeAFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("plain") << QByteArray("# Ni\r\n8300 0.5\r\n8400 1.5\r\n");
    QTest::newRow("beamline") << beamline("Mode 0 0 1 2", "0 30 0 800 100\n");
    QTest::newRow("words") << QByteArray("no number\n");
    QTest::newRow("empty") << QByteArray();
}

void tst_AMutEFiles::deviceIsReadLikeAFile()
{
    QFETCH(QByteArray, content);
    AMutE ofFile;
    const bool isRead = read(&ofFile, content);
    QBuffer device(&content);
    QVERIFY(device.open(QIODevice::ReadOnly));
    AMutE ofDevice;
    ofDevice.fileName = "kept";
    QCOMPARE(ofDevice.readDevice(device), isRead);
    QVERIFY(samePoints(ofDevice, ofFile));
    QCOMPARE(ofDevice.valid, ofFile.valid);
    QCOMPARE(ofDevice.fileName, QString("kept"));
    QVERIFY(!device.isTextModeEnabled());
}

void tst_AMutEFiles::deviceIsReadFromTheCurrentPosition()
{
    QByteArray content = "9809\n8300 0.5\n";
    QBuffer device(&content);
    QVERIFY(device.open(QIODevice::ReadOnly) && device.seek(5));
    AMutE spectrum;
    QVERIFY(spectrum.readDevice(device));
    QCOMPARE(energies(spectrum), Values{8300.0});
}

QTEST_APPLESS_MAIN(tst_AMutEFiles)
#include "tst_AMutEFiles.moc"
