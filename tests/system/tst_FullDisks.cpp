// Tests of a disk that becomes full while a result or a histogram is written. A message must
// name each incomplete file, and the result on the panel must not change. Most of the tests
// limit the file size instead of filling a disk.
#include "support/TestFiles.h"
#include "system/SystemChild.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace tests;

namespace
{

QString cannotOpen(const QString& path)
{
    return QStringLiteral("Can't open the file [%1]").arg(path);
}

} // namespace

class tst_FullDisks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void incompleteResultIsReported_data();
    void incompleteResultIsReported();
    void incompleteResultReplacesTheOlderOne();
    void resultThatJustFitsIsComplete();
    void incompleteHistogramIsReported_data();
    void incompleteHistogramIsReported();
    void histogramWithoutExistingFileIsNotWrittenOrReported();
    void everyIncompleteFileIsReported();
    void fileWrittenAgainWithMoreSpaceIsComplete();
    void fullDiskIsReportedForResultAndHistogram();

private:
    QByteArray path(const char* name) const;
    ChildRun write(const QByteArray& size, const QByteArray& limit, const QByteArray& alphaBins,
                   const QByteArray& thicknessBins) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_FullDisks::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

/// The canonical path of a file in the test folder, as in the messages about histograms.
QByteArray tst_FullDisks::path(const char* name) const
{
    return QFile::encodeName(QFileInfo(m_folder->path()).canonicalFilePath()) + '/' + name;
}

/// Writes a result of @p size by @p size pixels with a limit of @p limit bytes per file; "any"
/// for no limit.
ChildRun tst_FullDisks::write(const QByteArray& size, const QByteArray& limit,
                              const QByteArray& alphaBins, const QByteArray& thicknessBins) const
{
    return systemChild().runSteps({"calculate", size, size, "bins", alphaBins, thicknessBins,
                                   "limitFileSize", limit, "write", path("result.dat")});
}

void tst_FullDisks::incompleteResultIsReported_data()
{
    QTest::addColumn<qint64>("limit");
    QTest::newRow("space for no byte") << qint64{0};
    QTest::newRow("space for part of the title line") << qint64{10};
    QTest::newRow("space for part of the pixels") << qint64{5000};
    QTest::newRow("space for part of a later block") << qint64{130000};
}

void tst_FullDisks::incompleteResultIsReported()
{
    QFETCH(qint64, limit);
    const ChildRun run = write("50", QByteArray::number(limit), "11", "11");
    QCOMPARE(run.trouble, QString());
    QCOMPARE(messagesOf(run.lastStep()), QStringList{cannotOpen(path("result.dat"))});
    QVERIFY(run.lastStep()["isPanelUnchanged"].toBool());
    const QByteArray content = readFile(path("result.dat"));
    QVERIFY(content.size() <= limit);
    QVERIFY(QByteArray("# qelk result map V1.0\n")
                .startsWith(content.first(std::min<qsizetype>(content.size(), 23))));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{"result.dat"});
}

void tst_FullDisks::incompleteResultReplacesTheOlderOne()
{
    writeFile(*m_folder, "result.dat", QByteArray(20000, 'o'));
    const ChildRun run = write("20", "5000", "11", "11");
    QCOMPARE(run.trouble, QString());
    QCOMPARE(messagesOf(run.lastStep()), QStringList{cannotOpen(path("result.dat"))});
    const QByteArray content = readFile(path("result.dat"));
    QVERIFY(content.size() <= 5000);
    QVERIFY(!content.contains('o'));
}

void tst_FullDisks::resultThatJustFitsIsComplete()
{
    QCOMPARE(write("20", "any", "11", "11").trouble, QString());
    const QByteArray whole = readFile(path("result.dat"));
    const QByteArray size = QByteArray::number(whole.size());
    QCOMPARE(messagesOf(write("20", size, "11", "11").lastStep()), QStringList());
    QCOMPARE(readFile(path("result.dat")), whole);
    const QByteArray oneLess = QByteArray::number(whole.size() - 1);
    QCOMPARE(messagesOf(write("20", oneLess, "11", "11").lastStep()),
             QStringList{cannotOpen(path("result.dat"))});
}

void tst_FullDisks::incompleteHistogramIsReported_data()
{
    QTest::addColumn<QByteArray>("alphaBins");
    QTest::addColumn<QByteArray>("thicknessBins");
    QTest::addColumn<QList<QByteArray>>("reported");
    const QByteArray alpha("result_HGAlpha.dat");
    const QByteArray thickness("result_HGThick.dat");
    QTest::newRow("valence histogram") << QByteArray("2000") << QByteArray("11") << QList{alpha};
    QTest::newRow("thickness histogram")
        << QByteArray("11") << QByteArray("2000") << QList{thickness};
    QTest::newRow("both histograms")
        << QByteArray("2000") << QByteArray("2000") << QList{alpha, thickness};
    // This histogram is larger than the write buffer, so the write fails before the file is
    // closed.
    QTest::newRow("large valence histogram")
        << QByteArray("200000") << QByteArray("11") << QList{alpha};
}

void tst_FullDisks::incompleteHistogramIsReported()
{
    QFETCH(QByteArray, alphaBins);
    QFETCH(QByteArray, thicknessBins);
    QFETCH(QList<QByteArray>, reported);
    writeFile(*m_folder, "result_HGAlpha.dat", "older");
    writeFile(*m_folder, "result_HGThick.dat", "older");
    const ChildRun run = write("2", "3000", alphaBins, thicknessBins);
    QCOMPARE(run.trouble, QString());
    QStringList expected;
    for (const QByteArray& name : std::as_const(reported)) {
        expected += cannotOpen(path(name.constData()));
    }
    QCOMPARE(messagesOf(run.lastStep()), expected);
    QVERIFY(run.lastStep()["isPanelUnchanged"].toBool());
    QVERIFY(readFile(path("result.dat")).endsWith("\n\n")); // the end of a complete result
    for (const char* name : {"result_HGAlpha.dat", "result_HGThick.dat"}) {
        const QByteArray content = readFile(path(name));
        QVERIFY(content.size() <= 3000);
        QVERIFY(!content.startsWith("older"));
        QCOMPARE(content.count('\n') == 13, !reported.contains(QByteArray(name)));
    }
}

void tst_FullDisks::histogramWithoutExistingFileIsNotWrittenOrReported()
{
    const ChildRun run = write("2", "3000", "2000", "2000");
    QCOMPARE(run.trouble, QString());
    QCOMPARE(messagesOf(run.lastStep()), QStringList());
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{"result.dat"});
}

void tst_FullDisks::everyIncompleteFileIsReported()
{
    writeFile(*m_folder, "result_HGAlpha.dat", "older");
    writeFile(*m_folder, "result_HGThick.dat", "older");
    const ChildRun run = write("20", "3000", "2000", "2000");
    QCOMPARE(run.trouble, QString());
    const QStringList expected{cannotOpen(path("result.dat")),
                               cannotOpen(path("result_HGAlpha.dat")),
                               cannotOpen(path("result_HGThick.dat"))};
    QCOMPARE(messagesOf(run.lastStep()), expected);
    QVERIFY(run.lastStep()["isPanelUnchanged"].toBool());
}

void tst_FullDisks::fileWrittenAgainWithMoreSpaceIsComplete()
{
    const QByteArray result = path("result.dat");
    const ChildRun run = systemChild().runSteps(
        {"calculate", "20", "20", "write", result, "file", result, "limitFileSize", "3000", "write",
         result, "limitFileSize", "any", "write", result, "file", result});
    QCOMPARE(run.trouble, QString());
    QCOMPARE(run.steps().size(), 8);
    QCOMPARE(messagesOf(run.steps().at(4)), QStringList{cannotOpen(result)});
    QCOMPARE(messagesOf(run.steps().at(6)), QStringList());
    QCOMPARE(run.steps().at(7)["checksum"], run.steps().at(2)["checksum"]);
}

void tst_FullDisks::fullDiskIsReportedForResultAndHistogram()
{
    if (!ChildProcess::canMountDisks()) {
        QSKIP("mounting a disk for a child process is not possible here");
    }
    const QByteArray result = path("result.dat");
    const QByteArray alpha = path("result_HGAlpha.dat");
    const QByteArray filling = path("filling");
    ChildProcess child = systemChild();
    child.mountDisk(m_folder->path(), 64 * 1024);
    const QList<QByteArray> tooLarge{"calculate", "60", "60", "write", result, "file", result};
    const QList<QByteArray> littleLeft{"calculate", "2",    "2",     "write", result, "make", alpha,
                                       "5",         "make", filling, "40000", "bins", "2000", "11",
                                       "write",     result, "file",  result,  "file", alpha};
    const ChildRun run = child.runSteps(tooLarge + littleLeft);
    QCOMPARE(run.trouble, QString());
    const QList<QJsonObject> steps = run.steps();
    QCOMPARE(steps.size(), 11);
    QCOMPARE(messagesOf(steps.at(1)), QStringList{cannotOpen(result)});
    QVERIFY(steps.at(1)["isPanelUnchanged"].toBool());
    QVERIFY(steps.at(2)["size"].toInt() <= 64 * 1024);
    QCOMPARE(messagesOf(steps.at(4)), QStringList());
    QVERIFY(steps.at(6)["isMade"].toBool());
    QCOMPARE(messagesOf(steps.at(8)), QStringList{cannotOpen(alpha)});
    QVERIFY(steps.at(8)["isPanelUnchanged"].toBool());
    QVERIFY(steps.at(9)["isWholeLines"].toBool());
    QVERIFY(steps.at(10)["size"].toInt() < 64 * 1024 - 40000);
}

QTEST_GUILESS_MAIN(tst_FullDisks)
#include "tst_FullDisks.moc"
