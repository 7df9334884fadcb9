// Tests of Histgram: reading the panel's widgets, and writing the histogram file.
#include "display/Histgram.h"

#include "support/DataRows.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QTest>

#include <cmath>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

const QByteArray earlierText = "what was there before, and longer than the histogram's text is\n";

/// Bins of width 2 with the edges 0, 2 and 4. The four counts (below the range, two
/// bins, above the range) are 1, 2, 3 and 4.
const QByteArray writtenText = "-2 -1 0  1\n"
                               "0 1 2  2\n"
                               "2 3 4  3\n"
                               "4 5 6  4\n";

/// Sets the working folder and restores the previous one at the end of the scope.
class WorkingFolder
{
public:
    explicit WorkingFolder(const QString& path)
        : m_before(QDir::currentPath())
    {
        QDir::setCurrent(path);
    }
    ~WorkingFolder() { QDir::setCurrent(m_before); }
    Q_DISABLE_COPY_MOVE(WorkingFolder)

private:
    QString m_before;
};

} // namespace

class tst_Histgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void limitsAndNumberOfBinsAreReadFromTheEdits();
    void unparsableTextCountsAsZero();
    void numberOfBinsIsTruncatedAndLimitedToAMillion_data();
    void numberOfBinsIsTruncatedAndLimitedToAMillion();
    void initReadsTheAutomaticMode();
    void initZeroesTheCountsAndRereadsTheLimits();

    void existingFileIsReplaced();
    void fileNameIsDerivedFromTheResultFileName_data();
    void fileNameIsDerivedFromTheResultFileName();
    void missingFileIsNotCreated();
    void fileCreatedByTheUserIsWritten();
    void histogramIsWrittenToTheFolderOfTheLinkedResult();
    void symbolicLinkToHistogramFileIsFollowed();
    void histogramOfAMissingResultFileIsWrittenToTheWorkingFolder();
    void histogramOfEmptyPathIsWrittenToTheWorkingFolder();
    void folderNamedLikeTheHistogramFileIsRefused();
    void pipeNamedLikeTheHistogramFileIsRefusedWithoutBlocking();
    void unwritableFileIsRefused();
    void incompletelyWrittenFileIsReported();
    void completeOrMissingFileIsNotReported();

private:
    /// The path of @p name in the folder of this test.
    QString pathOf(const QString& name) const { return m_folder->filePath(name); }

    /// Creates a result file and an earlier histogram file. Returns whether both were
    /// written.
    bool makeFiles(const QString& result, const QString& histogram) const
    {
        return !tests::writeFile(*m_folder, result, "result\n").isEmpty() &&
               !tests::writeFile(*m_folder, histogram, earlierText).isEmpty();
    }

    void countTenValues();

    QLineEdit m_from;
    QLineEdit m_to;
    QLineEdit m_boxes;
    QCheckBox m_auto;
    Histgram m_histogram{&m_from, &m_to, &m_boxes, &m_auto};
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_Histgram::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_auto.setChecked(false);
    countTenValues();
}

void tst_Histgram::countTenValues()
{
    m_from.setText("1");
    m_to.setText("3");
    m_boxes.setText("2");
    m_histogram.init();
    for (const double value : {-9.0, 1.0, 1.0, 3.0, 3.0, 3.0, 9.0, 9.0, 9.0, 9.0}) {
        m_histogram.add(value);
    }
}

// The tolerance of 1e-15 is about five ulps of 1, the upper limit, and far below any
// visible difference.
void tst_Histgram::limitsAndNumberOfBinsAreReadFromTheEdits()
{
    m_from.setText("0");
    m_to.setText("1");
    m_boxes.setText("11");
    m_histogram.init();
    QCOMPARE(m_histogram.boxes, 11);
    QCOMPARE(m_histogram.bins, QList<int>(11, 0));
    QVERIFY(std::abs(m_histogram.step - 0.1) < 1e-15);
    QVERIFY(std::abs(m_histogram.minV + 0.05) < 1e-15);
    QVERIFY(std::abs(m_histogram.maxV - 1.05) < 1e-15);
}

void tst_Histgram::unparsableTextCountsAsZero()
{
    m_from.setText("low");
    m_to.setText("1,5");
    m_boxes.setText("3");
    m_histogram.init();
    QCOMPARE(m_histogram.minV, 0.0);
    QCOMPARE(m_histogram.maxV, 0.0);
    m_boxes.setText("many");
    m_histogram.init();
    QCOMPARE(m_histogram.boxes, 0);
}

void tst_Histgram::numberOfBinsIsTruncatedAndLimitedToAMillion_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("boxes");
    QTest::newRow("whole number") << "50" << 50;
    QTest::newRow("fraction") << "7.9" << 7;
    QTest::newRow("with exponent") << "1e2" << 100;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("negative") << "-3" << 0;
    QTest::newRow("one") << "1" << 1;
    QTest::newRow("huge") << "1e18" << 1000000;
    QTest::newRow("infinite") << "inf" << 1000000;
    QTest::newRow("NaN") << "nan" << 0;
}

void tst_Histgram::numberOfBinsIsTruncatedAndLimitedToAMillion()
{
    QFETCH(QString, text);
    QFETCH(int, boxes);
    m_boxes.setText(text);
    m_histogram.init();
    m_histogram.add(2.0); // must not crash, even without valid bins
    QCOMPARE(m_histogram.boxes, boxes);
    QCOMPARE(m_histogram.bins.size(), boxes);
}

void tst_Histgram::initReadsTheAutomaticMode()
{
    QVERIFY(!m_histogram.autoMode);
    m_auto.setChecked(true);
    QVERIFY(!m_histogram.autoMode);
    m_histogram.init();
    QVERIFY(m_histogram.autoMode);
}

void tst_Histgram::initZeroesTheCountsAndRereadsTheLimits()
{
    QCOMPARE(m_histogram.bins, (QList<int>{2, 3}));
    QCOMPARE(m_histogram.total, 3);
    m_to.setText("5");
    QCOMPARE(m_histogram.step, 2.0);
    m_histogram.init();
    QCOMPARE(m_histogram.step, 4.0);
    QCOMPARE(m_histogram.bins, (QList<int>{0, 0}));
    QCOMPARE(m_histogram.under, 0);
    QCOMPARE(m_histogram.over, 0);
    QCOMPARE(m_histogram.total, 0);
}

void tst_Histgram::existingFileIsReplaced()
{
    QVERIFY(makeFiles("map.dat", "map_HGAlpha.dat"));
    QVERIFY(m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(pathOf("map_HGAlpha.dat")), writtenText);
    QCOMPARE(tests::readFile(pathOf("map.dat")), QByteArray("result\n"));
}

void tst_Histgram::fileNameIsDerivedFromTheResultFileName_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("file");
    tests::addTexts("two dots", {"a.b.dat", "a.b_HGThick.dat"});
    tests::addTexts("no suffix: name ends in a dot", {"map", "map_HGThick."});
    tests::addTexts("hidden file", {".map", "_HGThick.map"});
    tests::addTexts("trailing dot", {"map.", "map_HGThick."});
    QTest::newRow("spaces and non-ASCII letters")
        << QString::fromUtf8("μ t.tx t") << QString::fromUtf8("μ t_HGThick.tx t");
}

void tst_Histgram::fileNameIsDerivedFromTheResultFileName()
{
    QFETCH(QString, result);
    QFETCH(QString, file);
    QVERIFY(makeFiles(result, file));
    QVERIFY(m_histogram.write(pathOf(result), "HGThick"));
    QCOMPARE(tests::readFile(pathOf(file)), writtenText);
}

void tst_Histgram::missingFileIsNotCreated()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(!m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{"map.dat"});
}

void tst_Histgram::fileCreatedByTheUserIsWritten()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(!m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    QFile byHand(pathOf("map_HGAlpha.dat"));
    QVERIFY(byHand.open(QIODevice::WriteOnly));
    byHand.close();
    QVERIFY(m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(byHand.fileName()), writtenText);
}

// The name of the histogram file is derived from the name of the link. Its folder is
// the folder of the file to which the link points.
void tst_Histgram::histogramIsWrittenToTheFolderOfTheLinkedResult()
{
    QVERIFY(QDir(m_folder->path()).mkdir("real"));
    QVERIFY(makeFiles("real/far.txt", "real/near_HGAlpha.dat"));
    QVERIFY(QFile::link(pathOf("real/far.txt"), pathOf("near.dat")));
    QVERIFY(m_histogram.write(pathOf("near.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(pathOf("real/near_HGAlpha.dat")), writtenText);
}

void tst_Histgram::symbolicLinkToHistogramFileIsFollowed()
{
    QVERIFY(makeFiles("map.dat", "elsewhere.txt"));
    QVERIFY(QFile::link(pathOf("elsewhere.txt"), pathOf("map_HGAlpha.dat")));
    QVERIFY(m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(pathOf("elsewhere.txt")), writtenText);
    QVERIFY(QFileInfo(pathOf("map_HGAlpha.dat")).isSymLink());
}

// The histogram file in the folder of the missing result is not changed; the file
// in the working folder is written.
void tst_Histgram::histogramOfAMissingResultFileIsWrittenToTheWorkingFolder()
{
    QVERIFY(QDir(m_folder->path()).mkdir("work"));
    QVERIFY(makeFiles("other.dat", "map_HGAlpha.dat"));
    const WorkingFolder work(pathOf("work"));
    QVERIFY(!m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    QVERIFY(!tests::writeFile(*m_folder, "work/map_HGAlpha.dat", earlierText).isEmpty());
    QVERIFY(m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(pathOf("map_HGAlpha.dat")), earlierText);
    QCOMPARE(tests::readFile(pathOf("work/map_HGAlpha.dat")), writtenText);
}

void tst_Histgram::histogramOfEmptyPathIsWrittenToTheWorkingFolder()
{
    const WorkingFolder work(m_folder->path());
    QVERIFY(!m_histogram.write(QString(), "HGAlpha"));
    QVERIFY(!tests::writeFile(*m_folder, "_HGAlpha.", earlierText).isEmpty());
    QVERIFY(m_histogram.write(QString(), "HGAlpha"));
    QCOMPARE(tests::readFile(pathOf("_HGAlpha.")), writtenText);
}

void tst_Histgram::folderNamedLikeTheHistogramFileIsRefused()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(QDir(m_folder->path()).mkdir("map_HGAlpha.dat"));
    QVERIFY(!m_histogram.write(pathOf("map.dat"), "HGAlpha"));
}

void tst_Histgram::pipeNamedLikeTheHistogramFileIsRefusedWithoutBlocking()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QCOMPARE(::mkfifo(QFile::encodeName(pathOf("map_HGAlpha.dat")).constData(), 0600), 0);
    QVERIFY(!m_histogram.write(pathOf("map.dat"), "HGAlpha"));
}

void tst_Histgram::unwritableFileIsRefused()
{
    QVERIFY(makeFiles("map.dat", "map_HGAlpha.dat"));
    QVERIFY(QFile::setPermissions(pathOf("map_HGAlpha.dat"), QFile::ReadOwner | QFile::ReadOther));
    const auto forAll = QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::permissions(m_folder->path()) | forAll));
    {
        const tests::Unprivileged nobody;
        if (!nobody.holds()) {
            QSKIP("root without the right to change its user id");
        }
        QVERIFY(!m_histogram.write(pathOf("map.dat"), "HGAlpha"));
    }
    QCOMPARE(tests::readFile(pathOf("map_HGAlpha.dat")), earlierText);
}

void tst_Histgram::incompletelyWrittenFileIsReported()
{
    if (!QFile::exists("/dev/full")) {
        QSKIP("this system has no /dev/full");
    }
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(QFile::link("/dev/full", pathOf("map_HGAlpha.dat")));
    QString cutShort;
    QVERIFY(m_histogram.write(pathOf("map.dat"), "HGAlpha", &cutShort));
    QCOMPARE(cutShort, QString("/dev/full"));
}

void tst_Histgram::completeOrMissingFileIsNotReported()
{
    QVERIFY(makeFiles("map.dat", "map_HGAlpha.dat"));
    QString cutShort = "as before";
    QVERIFY(m_histogram.write(pathOf("map.dat"), "HGAlpha", &cutShort));
    QVERIFY(!m_histogram.write(pathOf("map.dat"), "HGThick", &cutShort));
    QCOMPARE(cutShort, QString("as before"));
}

QTEST_MAIN(tst_Histgram)
#include "tst_Histgram.moc"
