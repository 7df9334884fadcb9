// Histograms: reading the panel's edits, and their file beside the result.
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

/// Bins of width 2 with the edges 0, 2, 4; the counts 1, 2, 3, 4 from below to
/// above.
const QByteArray writtenText = "-2 -1 0  1\n"
                               "0 1 2  2\n"
                               "2 3 4  3\n"
                               "4 5 6  4\n";

/// Goes to a folder and back at the end of the scope.
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

    void limitsAreReadFromTheEdits();
    void textThatIsNoNumberCountsAsZero();
    void numberOfBoxesIsTruncatedAndHeld_data();
    void numberOfBoxesIsTruncatedAndHeld();
    void automaticIsReadAtInit();
    void initZeroesCountsAndReadsAnew();

    void existingFileIsReplaced();
    void fileIsNamedAfterTheResult_data();
    void fileIsNamedAfterTheResult();
    void fileThatIsNotThereIsNotMade();
    void fileMadeByHandGetsWrittenAtTheNextSave();
    void linkedResultLeadsToItsRealFolder();
    void linkedFileIsWrittenWhereItReallyIs();
    void missingResultLeadsToTheWorkingFolder();
    void emptyPathLeadsToTheWorkingFolder();
    void folderOfThatNameIsRefused();
    void pipeOfThatNameIsRefusedAndDoesNotHang();
    void unwritableFileIsRefused();
    void fileThatIsNotWrittenWholeIsNamed();
    void fileThatIsWrittenWholeOrNotThereIsNotNamed();

private:
    /// The path of a file in the folder of this test.
    QString at(const QString& name) const { return m_folder->filePath(name); }

    /// A result file and a histogram file of before; both must not be empty.
    bool makeFiles(const QString& result, const QString& histogram) const
    {
        return !tests::writeFile(*m_folder, result, "result\n").isEmpty() &&
               !tests::writeFile(*m_folder, histogram, earlierText).isEmpty();
    }

    void countToTen();

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
    countToTen();
}

void tst_Histgram::countToTen()
{
    m_from.setText("1");
    m_to.setText("3");
    m_boxes.setText("2");
    m_histogram.init();
    for (const double value : {-9.0, 1.0, 1.0, 3.0, 3.0, 3.0, 9.0, 9.0, 9.0, 9.0}) {
        m_histogram.add(value);
    }
}

// Tolerance: a few units in the last place of 1.
void tst_Histgram::limitsAreReadFromTheEdits()
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

void tst_Histgram::textThatIsNoNumberCountsAsZero()
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

void tst_Histgram::numberOfBoxesIsTruncatedAndHeld_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("boxes");
    QTest::newRow("whole") << "50" << 50;
    QTest::newRow("fraction") << "7.9" << 7;
    QTest::newRow("with exponent") << "1e2" << 100;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("negative") << "-3" << 0;
    QTest::newRow("one") << "1" << 1;
    QTest::newRow("absurd") << "1e18" << 1000000;
    QTest::newRow("infinite") << "inf" << 1000000;
    QTest::newRow("NaN") << "nan" << 0;
}

void tst_Histgram::numberOfBoxesIsTruncatedAndHeld()
{
    QFETCH(QString, text);
    QFETCH(int, boxes);
    m_boxes.setText(text);
    m_histogram.init();
    m_histogram.add(2.0); // must not crash, whatever the limits became
    QCOMPARE(m_histogram.boxes, boxes);
    QCOMPARE(m_histogram.bins.size(), boxes);
}

void tst_Histgram::automaticIsReadAtInit()
{
    QVERIFY(!m_histogram.autoMode);
    m_auto.setChecked(true);
    QVERIFY(!m_histogram.autoMode);
    m_histogram.init();
    QVERIFY(m_histogram.autoMode);
}

void tst_Histgram::initZeroesCountsAndReadsAnew()
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
    QVERIFY(m_histogram.write(at("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(at("map_HGAlpha.dat")), writtenText);
    QCOMPARE(tests::readFile(at("map.dat")), QByteArray("result\n"));
}

void tst_Histgram::fileIsNamedAfterTheResult_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("file");
    tests::addTexts("two points", {"a.b.dat", "a.b_HGThick.dat"});
    tests::addTexts("no suffix ends in a point", {"map", "map_HGThick."});
    tests::addTexts("hidden", {".map", "_HGThick.map"});
    tests::addTexts("point at the end", {"map.", "map_HGThick."});
    QTest::newRow("blanks and letters")
        << QString::fromUtf8("μ t.tx t") << QString::fromUtf8("μ t_HGThick.tx t");
}

void tst_Histgram::fileIsNamedAfterTheResult()
{
    QFETCH(QString, result);
    QFETCH(QString, file);
    QVERIFY(makeFiles(result, file));
    QVERIFY(m_histogram.write(at(result), "HGThick"));
    QCOMPARE(tests::readFile(at(file)), writtenText);
}

void tst_Histgram::fileThatIsNotThereIsNotMade()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(!m_histogram.write(at("map.dat"), "HGAlpha"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{"map.dat"});
}

void tst_Histgram::fileMadeByHandGetsWrittenAtTheNextSave()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(!m_histogram.write(at("map.dat"), "HGAlpha"));
    QFile byHand(at("map_HGAlpha.dat"));
    QVERIFY(byHand.open(QIODevice::WriteOnly));
    byHand.close();
    QVERIFY(m_histogram.write(at("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(byHand.fileName()), writtenText);
}

// The name is that of the link, the folder that of the file behind it.
void tst_Histgram::linkedResultLeadsToItsRealFolder()
{
    QVERIFY(QDir(m_folder->path()).mkdir("real"));
    QVERIFY(makeFiles("real/far.txt", "real/near_HGAlpha.dat"));
    QVERIFY(QFile::link(at("real/far.txt"), at("near.dat")));
    QVERIFY(m_histogram.write(at("near.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(at("real/near_HGAlpha.dat")), writtenText);
}

void tst_Histgram::linkedFileIsWrittenWhereItReallyIs()
{
    QVERIFY(makeFiles("map.dat", "elsewhere.txt"));
    QVERIFY(QFile::link(at("elsewhere.txt"), at("map_HGAlpha.dat")));
    QVERIFY(m_histogram.write(at("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(at("elsewhere.txt")), writtenText);
    QVERIFY(QFileInfo(at("map_HGAlpha.dat")).isSymLink());
}

// So the file beside the missing result stays, and one in the working folder
// does not.
void tst_Histgram::missingResultLeadsToTheWorkingFolder()
{
    QVERIFY(QDir(m_folder->path()).mkdir("work"));
    QVERIFY(makeFiles("other.dat", "map_HGAlpha.dat"));
    const WorkingFolder work(at("work"));
    QVERIFY(!m_histogram.write(at("map.dat"), "HGAlpha"));
    QVERIFY(!tests::writeFile(*m_folder, "work/map_HGAlpha.dat", earlierText).isEmpty());
    QVERIFY(m_histogram.write(at("map.dat"), "HGAlpha"));
    QCOMPARE(tests::readFile(at("map_HGAlpha.dat")), earlierText);
    QCOMPARE(tests::readFile(at("work/map_HGAlpha.dat")), writtenText);
}

void tst_Histgram::emptyPathLeadsToTheWorkingFolder()
{
    const WorkingFolder work(m_folder->path());
    QVERIFY(!m_histogram.write(QString(), "HGAlpha"));
    QVERIFY(!tests::writeFile(*m_folder, "_HGAlpha.", earlierText).isEmpty());
    QVERIFY(m_histogram.write(QString(), "HGAlpha"));
    QCOMPARE(tests::readFile(at("_HGAlpha.")), writtenText);
}

void tst_Histgram::folderOfThatNameIsRefused()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(QDir(m_folder->path()).mkdir("map_HGAlpha.dat"));
    QVERIFY(!m_histogram.write(at("map.dat"), "HGAlpha"));
}

void tst_Histgram::pipeOfThatNameIsRefusedAndDoesNotHang()
{
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QCOMPARE(::mkfifo(QFile::encodeName(at("map_HGAlpha.dat")).constData(), 0600), 0);
    QVERIFY(!m_histogram.write(at("map.dat"), "HGAlpha"));
}

void tst_Histgram::unwritableFileIsRefused()
{
    QVERIFY(makeFiles("map.dat", "map_HGAlpha.dat"));
    QVERIFY(QFile::setPermissions(at("map_HGAlpha.dat"), QFile::ReadOwner | QFile::ReadOther));
    const auto forAll = QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::permissions(m_folder->path()) | forAll));
    {
        const tests::Unprivileged nobody;
        if (!nobody.holds()) {
            QSKIP("root without the right to become somebody else");
        }
        QVERIFY(!m_histogram.write(at("map.dat"), "HGAlpha"));
    }
    QCOMPARE(tests::readFile(at("map_HGAlpha.dat")), earlierText);
}

void tst_Histgram::fileThatIsNotWrittenWholeIsNamed()
{
    if (!QFile::exists("/dev/full")) {
        QSKIP("this system has no /dev/full");
    }
    QVERIFY(!tests::writeFile(*m_folder, "map.dat", "result\n").isEmpty());
    QVERIFY(QFile::link("/dev/full", at("map_HGAlpha.dat")));
    QString cutShort;
    QVERIFY(m_histogram.write(at("map.dat"), "HGAlpha", &cutShort));
    QCOMPARE(cutShort, QString("/dev/full"));
}

void tst_Histgram::fileThatIsWrittenWholeOrNotThereIsNotNamed()
{
    QVERIFY(makeFiles("map.dat", "map_HGAlpha.dat"));
    QString cutShort = "as before";
    QVERIFY(m_histogram.write(at("map.dat"), "HGAlpha", &cutShort));
    QVERIFY(!m_histogram.write(at("map.dat"), "HGThick", &cutShort));
    QCOMPARE(cutShort, QString("as before"));
}

QTEST_MAIN(tst_Histgram)
#include "tst_Histgram.moc"
