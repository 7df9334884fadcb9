// Tests of unusual paths: pipes, devices, folders, very long paths, names that are invalid UTF-8,
// and folders without permissions. A read that fails must keep the data in the row, a write that
// fails must show a message, and no call may block.
#include "support/TestFiles.h"
#include "system/SystemChild.h"

#include <QDir>
#include <QTest>

#include <filesystem>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace tests;

namespace
{

constexpr int timeoutMs = 20000;
constexpr qsizetype longestPath = 4095;

const QByteArray map("# X-NUM 1\n# Y-NUM 1\n1 2 3\n");
const QByteArray spectrum("8000 1\n8100 2\n8200 3\n");

/// A path to @p file of exactly @p size bytes, padded with "./" and "/".
QByteArray paddedPath(const QByteArray& file, qsizetype size)
{
    const qsizetype name = file.lastIndexOf('/') + 1;
    const qsizetype missing = size - file.size();
    return file.first(name) + QByteArray("./").repeated(missing / 2) +
           QByteArray(missing % 2, '/') + file.sliced(name);
}

bool makeSocket(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool isMade =
        ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return isMade;
}

/// Makes a file with open(), because QFile does not support names that are invalid UTF-8.
bool makeFile(const QByteArray& path, const QByteArray& content)
{
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT, 0644);
    const bool isMade = ::write(file, content.constData(),
                                static_cast<std::size_t>(content.size())) == content.size();
    ::close(file);
    return isMade;
}

QString cannotOpen(const QByteArray& path)
{
    return QStringLiteral("Can't open the file [%1]").arg(QFile::decodeName(path));
}

} // namespace

class tst_OddPaths : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void readingAnUnusablePathKeepsTheEarlierData_data();
    void readingAnUnusablePathKeepsTheEarlierData();
    void writingToAnUnusablePathIsReported_data();
    void writingToAnUnusablePathIsReported();
    void writingToAWritableDeviceSucceeds_data();
    void writingToAWritableDeviceSucceeds();
    void pathOfMaximumLengthIsReadAndWritten();
    void folderWithoutPermissionsRefusesReadingAndWriting();
    void fileWithInvalidUtf8NameIsRefused_data();
    void fileWithInvalidUtf8NameIsRefused();
    void writingDoesNotTouchAFileWithInvalidUtf8Name();

private:
    QByteArray inFolder(const QByteArray& name) const;
    QByteArray make(const QByteArray& what) const;
    ChildRun run(const QList<QByteArray>& steps) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_OddPaths::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    // The folder is open to all users, so that only the permissions inside it matter.
    QVERIFY(::chmod(QFile::encodeName(m_folder->path()).constData(), 0777) == 0);
    QVERIFY(!writeFile(*m_folder, "map.dat", map).isEmpty());
    QVERIFY(!writeFile(*m_folder, "spectrum.dat", spectrum).isEmpty());
}

QByteArray tst_OddPaths::inFolder(const QByteArray& name) const
{
    return QFile::encodeName(m_folder->path()) + '/' + name;
}

/// Removes the folder without QTemporaryDir, which cannot remove files whose names are
/// invalid UTF-8.
void tst_OddPaths::cleanup()
{
    std::error_code error;
    std::filesystem::remove_all(QFile::encodeName(m_folder->path()).toStdString(), error);
}

/// Creates what @p what describes, such as "pipe", and returns its path; empty on failure. For
/// "file as a folder" and paths or names that are too long, only returns such a path. An
/// absolute path is returned unchanged.
QByteArray tst_OddPaths::make(const QByteArray& what) const
{
    const QByteArray path = inFolder("odd");
    bool isMade = true;
    if (what.startsWith('/')) {
        return what;
    }
    if (what == "pipe") {
        isMade = ::mkfifo(path.constData(), 0666) == 0;
    } else if (what == "socket") {
        isMade = makeSocket(path);
    } else if (what == "folder") {
        isMade = ::mkdir(path.constData(), 0777) == 0;
    } else if (what == "link to itself") {
        isMade = ::symlink("odd", path.constData()) == 0;
    } else if (what == "link to a folder") {
        isMade = ::symlink(".", path.constData()) == 0;
    } else if (what == "link to a device") {
        isMade = ::symlink("/dev/full", path.constData()) == 0;
    } else if (what == "file as a folder") {
        return inFolder("map.dat/odd");
    } else if (what == "4096 characters") {
        return paddedPath(inFolder("map.dat"), longestPath + 1);
    } else if (what == "name of 300 characters") {
        return inFolder(QByteArray(300, 'n'));
    }
    return isMade ? path : QByteArray();
}

ChildRun tst_OddPaths::run(const QList<QByteArray>& steps) const
{
    ChildProcess child = systemChild();
    child.setTimeout(timeoutMs);
    return child.runSteps(steps);
}

void tst_OddPaths::readingAnUnusablePathKeepsTheEarlierData_data()
{
    QTest::addColumn<QByteArray>("what");
    for (const char* what :
         {"pipe", "socket", "folder", "link to itself", "link to a folder", "link to a device",
          "file as a folder", "4096 characters", "name of 300 characters", "/dev/zero", "/dev/null",
          "/dev/full", "/dev/tty", "/nowhere/map.dat"}) {
        QTest::newRow(what) << QByteArray(what);
    }
}

void tst_OddPaths::readingAnUnusablePathKeepsTheEarlierData()
{
    QFETCH(QByteArray, what);
    const QByteArray odd = make(what);
    QVERIFY(!odd.isEmpty());
    const ChildRun childRun =
        run({"map", inFolder("map.dat"), "spectrum", inFolder("spectrum.dat"), "map", odd,
             "spectrum", odd, "map", inFolder("map.dat"), "spectrum", inFolder("spectrum.dat")});
    QCOMPARE(childRun.trouble, QString());
    QCOMPARE(childRun.steps().size(), 6);
    const QJsonObject oddMap = childRun.steps().at(2);
    QVERIFY(!oddMap["loaded"].toBool());
    QCOMPARE(oddMap["newData"].toInt(), 0);
    QCOMPARE(oddMap["rows"].toInt(), 1); // the earlier map
    QCOMPARE(logOf(oddMap), QStringList{"can't open " + QFile::decodeName(odd)});
    const QJsonObject oddSpectrum = childRun.steps().at(3);
    QCOMPARE(oddSpectrum["newEdges"].toInt(), 0);
    QCOMPARE(oddSpectrum["points"].toInt(), 3);
    QCOMPARE(oddSpectrum["fileName"].toString(), QStringLiteral("spectrum.dat"));
    QVERIFY(childRun.steps().at(4)["loaded"].toBool());
    QCOMPARE(childRun.steps().at(5)["newEdges"].toInt(), 1);
}

void tst_OddPaths::writingToAnUnusablePathIsReported_data()
{
    QTest::addColumn<QByteArray>("what");
    for (const char* what : {"pipe", "socket", "folder", "link to itself", "link to a folder",
                             "link to a device", "file as a folder", "4096 characters",
                             "name of 300 characters", "/dev/full", "/nowhere/result.dat"}) {
        QTest::newRow(what) << QByteArray(what);
    }
}

void tst_OddPaths::writingToAnUnusablePathIsReported()
{
    QFETCH(QByteArray, what);
    const QByteArray odd = make(what);
    QVERIFY(!odd.isEmpty());
    const ChildRun childRun = run({"calculate", "2", "2", "write", odd});
    QCOMPARE(childRun.trouble, QString());
    QCOMPARE(messagesOf(childRun.lastStep()), QStringList{cannotOpen(odd)});
    QVERIFY(childRun.lastStep()["isPanelUnchanged"].toBool());
    QCOMPARE(readFile(m_folder->filePath("map.dat")), map);
}

void tst_OddPaths::writingToAWritableDeviceSucceeds_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::newRow("null") << QByteArray("/dev/null");
    QTest::newRow("zero") << QByteArray("/dev/zero");
}

void tst_OddPaths::writingToAWritableDeviceSucceeds()
{
    QFETCH(QByteArray, device);
    const ChildRun childRun = run({"calculate", "2", "2", "write", device});
    QCOMPARE(childRun.trouble, QString());
    QCOMPARE(messagesOf(childRun.lastStep()), QStringList());
}

void tst_OddPaths::pathOfMaximumLengthIsReadAndWritten()
{
    const QByteArray mapPath = paddedPath(inFolder("map.dat"), longestPath);
    const QByteArray spectrumPath = paddedPath(inFolder("spectrum.dat"), longestPath);
    const QByteArray resultPath = paddedPath(inFolder("result.dat"), longestPath);
    const ChildRun childRun =
        run({"map", mapPath, "spectrum", spectrumPath, "calculate", "2", "2", "write", resultPath});
    QCOMPARE(childRun.trouble, QString());
    QVERIFY(childRun.steps().at(0)["loaded"].toBool());
    QVERIFY(childRun.steps().at(1)["valid"].toBool());
    QCOMPARE(messagesOf(childRun.lastStep()), QStringList());
    QVERIFY(readFile(m_folder->filePath("result.dat")).startsWith("# qelk result map V1.0\n"));
}

void tst_OddPaths::folderWithoutPermissionsRefusesReadingAndWriting()
{
    const QByteArray closed = inFolder("closed");
    QVERIFY(::mkdir(closed.constData(), 0777) == 0);
    QVERIFY(!writeFile(*m_folder, "closed/map.dat", map).isEmpty());
    QVERIFY(::chmod(closed.constData(), 0) == 0);
    const QByteArray path = closed + "/map.dat";
    const ChildRun childRun = run({"dropRoot", "map", inFolder("map.dat"), "map", path, "spectrum",
                                   path, "folder", closed, "calculate", "2", "2", "write", path});
    QVERIFY(::chmod(closed.constData(), 0777) == 0); // so that cleanup() can remove it
    QCOMPARE(childRun.trouble, QString());
    if (childRun.steps().at(0)["isRoot"].toBool()) {
        QSKIP("root's permissions cannot be given up here");
    }
    QVERIFY(childRun.steps().at(1)["loaded"].toBool());
    QVERIFY(!childRun.steps().at(2)["loaded"].toBool());
    QCOMPARE(childRun.steps().at(2)["rows"].toInt(), 1);
    QCOMPARE(childRun.steps().at(3)["newEdges"].toInt(), 0);
    QVERIFY(childRun.steps().at(4)["names"].toArray().isEmpty());
    QCOMPARE(messagesOf(childRun.lastStep()), QStringList{cannotOpen(path)});
    QCOMPARE(readFile(m_folder->filePath("closed/map.dat")), map);
}

void tst_OddPaths::fileWithInvalidUtf8NameIsRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("invalid byte") << QByteArray("bad\xff.dat");
    QTest::newRow("truncated sequence") << QByteArray("bad\xe3\x81.dat");
    QTest::newRow("encoded surrogate") << QByteArray("bad\xed\xa0\x80.dat");
}

void tst_OddPaths::fileWithInvalidUtf8NameIsRefused()
{
    QFETCH(QByteArray, name);
    const QByteArray others = inFolder("others");
    QVERIFY(::mkdir(others.constData(), 0777) == 0);
    const QByteArray path = others + '/' + name;
    QVERIFY(makeFile(path, map));
    const QByteArray url = "file://" + others + '/' + name.toPercentEncoding();
    const ChildRun childRun = run({"map", path, "spectrum", path, "folder", others, "drop", url});
    QCOMPARE(childRun.trouble, QString());
    QVERIFY(!childRun.steps().at(0)["loaded"].toBool());
    QCOMPARE(logOf(childRun.steps().at(0)), QStringList{"can't open " + QFile::decodeName(path)});
    QVERIFY(!childRun.steps().at(1)["valid"].toBool());
    QVERIFY(!childRun.steps().at(2)["loaded"].toBool());
    QVERIFY(!childRun.steps().at(2)["valid"].toBool());
    QVERIFY(!childRun.steps().at(3)["loaded"].toBool());
}

void tst_OddPaths::writingDoesNotTouchAFileWithInvalidUtf8Name()
{
    const QByteArray path = inFolder("bad\xff.dat");
    QVERIFY(makeFile(path, "earlier"));
    const ChildRun childRun = run({"calculate", "2", "2", "write", path, "file", path});
    QCOMPARE(childRun.trouble, QString());
    const int file = ::open(path.constData(), O_RDONLY);
    QByteArray content(100, '\0');
    content.resize(::read(file, content.data(), 100));
    ::close(file);
    QCOMPARE(content, QByteArray("earlier"));
}

QTEST_GUILESS_MAIN(tst_OddPaths)
#include "tst_OddPaths.moc"
