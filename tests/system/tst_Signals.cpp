// Tests that SIGPIPE (a pipe without a reader) and SIGXFSZ (a file beyond the size limit) do
// not end the program. Only the write fails.
#include "support/TestFiles.h"
#include "system/SystemChild.h"

#include <QTest>

using namespace tests;

namespace
{

/// A child process for the program itself, in which the inspector plugin runs @p steps.
ChildProcess program(const QByteArray& steps)
{
    ChildProcess child{QStringLiteral(AELK_PROGRAM)};
    child.setVariable(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("aelkinspector"));
    child.setVariable(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(AELK_PLUGINS));
    child.setVariable(QStringLiteral("AELK_INSPECTOR_STEPS"), QString::fromUtf8(steps));
    return child;
}

const QStringList english{QStringLiteral("-e")};

} // namespace

class tst_Signals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void programKeepsRunningIfItsErrorPipeIsClosed();
    void writingBeyondTheFileSizeLimitIsReported();
    void childProcessKeepsRunningIfItsErrorPipeIsClosed();
};

void tst_Signals::programKeepsRunningIfItsErrorPipeIsClosed()
{
    // A click on an energy row's Clear button makes the row read an empty path, and the failure
    // is logged.
    const QByteArray steps(
        "click FileSelect.ClearB; click FileSelect.ClearB; print WriteB; exit 0");
    const ChildRun read = program(steps).run(english);
    QCOMPARE(read.trouble, QString());
    QVERIFY(read.errors.contains("can't open"));
    ChildProcess unread = program(steps);
    unread.closeStandardErrorReader();
    const ChildRun run = unread.run(english);
    QCOMPARE(run.trouble, QString());
    QCOMPARE(run.output, QByteArray("Write\n"));
}

void tst_Signals::writingBeyondTheFileSizeLimitIsReported()
{
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "result.dat", "an older result\n"));
    ChildProcess child =
        program("type SaveFSelect.FileName " + path + "; click WriteB; print Message; exit 0");
    child.limitFileSize(8);
    const ChildRun run = child.run(english);
    QCOMPARE(run.trouble, QString());
    QVERIFY(run.output.endsWith("Can't open the file [" + path + "]\n"));
    QCOMPARE(readFile(QFile::decodeName(path)), QByteArray("# qelk r"));
}

void tst_Signals::childProcessKeepsRunningIfItsErrorPipeIsClosed()
{
    ChildProcess child = systemChild();
    child.closeStandardErrorReader();
    const ChildRun run = child.runSteps({"logText", "one", "logText", "two", "map", "/nowhere"});
    QCOMPARE(run.trouble, QString());
    QCOMPARE(run.steps().size(), 3);
    QCOMPARE(logOf(run.steps().at(1)), QStringList{"two"});
}

QTEST_GUILESS_MAIN(tst_Signals)
#include "tst_Signals.moc"
