// data::openForReading and data::openForWriting with regular files, folders, pipes and
// devices.
#include "data/FileAccess.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

namespace
{
constexpr QFile::Permissions readableByAll = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
}

class tst_FileAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void regularFileIsReadCompletely();
    void linkToARegularFileIsRead();
    void filesAreReadInBinaryMode();
    void openedFileHasASizeAndCanBeMemoryMapped();
    void readingRefusesPathsThatAreNotRegularFiles_data();
    void readingRefusesPathsThatAreNotRegularFiles();
    void readingRefusesAPipe();
    void readingRefusesAPipeThatHasAWriter();
    void readingRefusesAFileWithoutReadPermission();
    void missingFileCanBeOpenedAfterItIsCreated();

    void writingCreatesTheFile();
    void writingReplacesTheContents();
    void filesAreWrittenInTextMode();
    void writingRefusesUnusablePaths_data();
    void writingRefusesUnusablePaths();
    void writingRefusesAPipe();
    void writingRefusesAPipeThatHasAReader();
    void fileWithoutWritePermissionKeepsItsContents();
    void writingToAFullDeviceFails();

private:
    QString pipePath();

    std::unique_ptr<QTemporaryDir> dir;
};

void tst_FileAccess::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
    // All users can enter the folder, so only the permissions of the files matter.
    QVERIFY(::chmod(QFile::encodeName(dir->path()).constData(), 0777) == 0);
}

QString tst_FileAccess::pipePath()
{
    const QString path = dir->filePath("pipe");
    return ::mkfifo(QFile::encodeName(path).constData(), 0666) == 0 ? path : QString();
}

void tst_FileAccess::regularFileIsReadCompletely()
{
    QFile file(tests::writeFile(*dir, "a b.txt", "one\ntwo"));
    QVERIFY(data::openForReading(file));
    QCOMPARE(file.openMode() & QIODevice::ReadWrite, QIODevice::ReadOnly);
    QCOMPARE(file.readAll(), QByteArray("one\ntwo"));
}

void tst_FileAccess::linkToARegularFileIsRead()
{
    const QString target = tests::writeFile(*dir, "target", "x");
    const QString link = dir->filePath("link");
    QVERIFY(QFile::link(target, link));
    QFile file(link);
    QVERIFY(data::openForReading(file));
    QCOMPARE(file.readAll(), QByteArray("x"));
}

void tst_FileAccess::filesAreReadInBinaryMode()
{
    QFile file(tests::writeFile(*dir, "crlf", "a\r\nb"));
    QVERIFY(data::openForReading(file));
    QVERIFY(!file.isTextModeEnabled());
    QCOMPARE(file.readAll(), QByteArray("a\r\nb"));
}

void tst_FileAccess::openedFileHasASizeAndCanBeMemoryMapped()
{
    QFile file(tests::writeFile(*dir, "map", "0123456789"));
    QVERIFY(data::openForReading(file));
    QCOMPARE(file.size(), 10);
    QVERIFY(file.seek(4));
    QCOMPARE(file.read(2), QByteArray("45"));
    const uchar* bytes = file.map(0, file.size());
    QVERIFY(bytes);
    QCOMPARE(bytes[9], '9');
}

void tst_FileAccess::readingRefusesPathsThatAreNotRegularFiles_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("no name") << QString();
    QTest::newRow("missing file") << "/nowhere/file";
    QTest::newRow("folder") << QStringLiteral("/");
    QTest::newRow("name with an unpaired surrogate")
        << "/nowhere/" + QString(QChar(0xd800)) + "file";
    QTest::newRow("endless device") << "/dev/zero";
    QTest::newRow("empty device") << "/dev/null";
}

void tst_FileAccess::readingRefusesPathsThatAreNotRegularFiles()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(!data::openForReading(file));
    QVERIFY(!file.isOpen());
}

void tst_FileAccess::readingRefusesAPipe()
{
    QFile file(pipePath());
    QVERIFY(!file.fileName().isEmpty());
    QVERIFY(!data::openForReading(file)); // would hang if it opened the pipe
    QVERIFY(!file.isOpen());
}

void tst_FileAccess::readingRefusesAPipeThatHasAWriter()
{
    QFile file(pipePath());
    const int writer = ::open(QFile::encodeName(file.fileName()).constData(), O_RDWR);
    QVERIFY(writer != -1);
    QVERIFY(!data::openForReading(file));
    ::close(writer);
}

void tst_FileAccess::readingRefusesAFileWithoutReadPermission()
{
    QFile open(tests::writeFile(*dir, "open", "x"));
    QFile closed(tests::writeFile(*dir, "closed", "x"));
    QVERIFY(open.setPermissions(readableByAll));
    QVERIFY(closed.setPermissions({}));

    const tests::Unprivileged nobody;
    if (!nobody.holds()) {
        QSKIP("root privileges cannot be dropped here");
    }
    QVERIFY(data::openForReading(open));
    QVERIFY(!data::openForReading(closed));
}

void tst_FileAccess::missingFileCanBeOpenedAfterItIsCreated()
{
    const QString path = dir->filePath("later");
    QFile file(path);
    QVERIFY(!data::openForReading(file));
    QCOMPARE(tests::writeFile(*dir, "later", "x"), path);
    QVERIFY(data::openForReading(file));
}

void tst_FileAccess::writingCreatesTheFile()
{
    QFile file(dir->filePath("new"));
    QVERIFY(data::openForWriting(file));
    QCOMPARE(file.openMode() & QIODevice::ReadWrite, QIODevice::WriteOnly);
    QCOMPARE(file.write("abc\n"), 4);
    file.close();
    QCOMPARE(file.error(), QFileDevice::NoError);
    QCOMPARE(tests::readFile(file.fileName()), QByteArray("abc\n"));
}

void tst_FileAccess::writingReplacesTheContents()
{
    QFile file(tests::writeFile(*dir, "old", "a long text"));
    QVERIFY(data::openForWriting(file));
    QCOMPARE(file.write("b"), 1);
    file.close();
    QCOMPARE(tests::readFile(file.fileName()), QByteArray("b"));
}

void tst_FileAccess::filesAreWrittenInTextMode()
{
    QFile file(dir->filePath("text"));
    QVERIFY(data::openForWriting(file));
    QVERIFY(file.isTextModeEnabled());
}

void tst_FileAccess::writingRefusesUnusablePaths_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("no name") << QString();
    QTest::newRow("missing folder") << "/nowhere/file";
    QTest::newRow("name with an unpaired surrogate")
        << "/nowhere/" + QString(QChar(0xd800)) + "file";
    QTest::newRow("folder") << QStringLiteral("/");
}

void tst_FileAccess::writingRefusesUnusablePaths()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(!data::openForWriting(file));
    QVERIFY(!file.isOpen());
}

void tst_FileAccess::writingRefusesAPipe()
{
    QFile file(pipePath());
    QVERIFY(!file.fileName().isEmpty());
    QVERIFY(!data::openForWriting(file)); // would hang if it opened the pipe
    QVERIFY(!file.isOpen());
}

void tst_FileAccess::writingRefusesAPipeThatHasAReader()
{
    QFile file(pipePath());
    const int reader =
        ::open(QFile::encodeName(file.fileName()).constData(), O_RDONLY | O_NONBLOCK);
    QVERIFY(reader != -1);
    QVERIFY(!data::openForWriting(file));
    ::close(reader);
}

void tst_FileAccess::fileWithoutWritePermissionKeepsItsContents()
{
    QFile open(tests::writeFile(*dir, "open", "x"));
    QFile closed(tests::writeFile(*dir, "closed", "x"));
    QVERIFY(open.setPermissions(readableByAll | QFile::WriteOwner | QFile::WriteGroup |
                                QFile::WriteOther));
    QVERIFY(closed.setPermissions(readableByAll));

    {
        const tests::Unprivileged nobody;
        if (!nobody.holds()) {
            QSKIP("root privileges cannot be dropped here");
        }
        QVERIFY(data::openForWriting(open));
        QVERIFY(!data::openForWriting(closed));
    }
    QCOMPARE(tests::readFile(closed.fileName()), QByteArray("x"));
}

void tst_FileAccess::writingToAFullDeviceFails()
{
    QFile file("/dev/full");
    if (!file.exists()) {
        QSKIP("no /dev/full here");
    }
    QVERIFY(data::openForWriting(file));
    QCOMPARE(file.write("x"), 1); // the byte is still in the buffer
    QVERIFY(!file.flush());
    QVERIFY(file.error() != QFileDevice::NoError);
}

QTEST_APPLESS_MAIN(tst_FileAccess)
#include "tst_FileAccess.moc"
