#include "support/ChildProcess.h"

#include <QJsonDocument>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace tests
{
namespace
{

// Shell script: mounts a tmpfs of $1 bytes on the folder $2, then replaces the shell with
// the program (exec).
const QString mountThenExec =
    QStringLiteral("mount -t tmpfs -o size=\"$1\" none \"$2\" || exit 99; shift 2; exec \"$@\"");

QStringList unshareArguments(const QString& script, const QStringList& arguments)
{
    return QStringList{QStringLiteral("-Urm"), QStringLiteral("sh"), QStringLiteral("-c"), script,
                       QStringLiteral("sh")} +
           arguments;
}

void limit(decltype(RLIMIT_AS) resource, const std::optional<qint64>& value)
{
    if (value) {
        const rlimit both{static_cast<rlim_t>(*value), static_cast<rlim_t>(*value)};
        ::setrlimit(resource, &both);
    }
}

/// Replaces standard error with a pipe whose reading end is closed.
void breakStandardError()
{
    int ends[2];
    if (::pipe(ends) == 0) {
        ::close(ends[0]);
        ::dup2(ends[1], STDERR_FILENO);
        ::close(ends[1]);
    }
}

QString troubleOf(const QProcess& process, bool hasEnded)
{
    if (!hasEnded) {
        return process.error() == QProcess::FailedToStart ? QStringLiteral("did not start")
                                                          : QStringLiteral("did not end");
    }
    if (process.exitStatus() == QProcess::CrashExit) {
        return QStringLiteral("ended by signal %1").arg(process.exitCode());
    }
    return process.exitCode() == 0 ? QString()
                                   : QStringLiteral("ended with status %1").arg(process.exitCode());
}

} // namespace

QList<QJsonObject> ChildRun::steps() const
{
    QList<QJsonObject> found;
    const QList<QByteArray> lines = output.split('\n');
    for (const QByteArray& line : lines) {
        const QJsonDocument document = QJsonDocument::fromJson(line);
        if (document.isObject()) {
            found.append(document.object());
        }
    }
    return found;
}

QJsonObject ChildRun::lastStep() const
{
    const QList<QJsonObject> all = steps();
    return all.isEmpty() ? QJsonObject() : all.last();
}

ChildProcess::ChildProcess(const QString& program)
    : m_program(program)
{
}

void ChildProcess::setTimeout(int milliseconds)
{
    m_timeoutMs = milliseconds;
}

void ChildProcess::setWorkingFolder(const QString& folder)
{
    m_folder = folder;
}

void ChildProcess::setVariable(const QString& name, const QString& value)
{
    m_variables.append({name, value});
}

void ChildProcess::limitAddressSpace(qint64 bytes)
{
    m_addressSpace = bytes;
}

void ChildProcess::limitFileSize(qint64 bytes)
{
    m_fileSize = bytes;
}

void ChildProcess::closeStandardErrorReader()
{
    m_hasReaderOfErrors = false;
}

void ChildProcess::mountDisk(const QString& folder, qint64 bytes)
{
    m_diskFolder = folder;
    m_diskSize = bytes;
}

bool ChildProcess::canMountDisks()
{
    const QTemporaryDir folder;
    QProcess process;
    process.start(QStringLiteral("unshare"),
                  unshareArguments(mountThenExec, {QStringLiteral("65536"), folder.path(),
                                                   QStringLiteral("true")}));
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

/// Runs in the child process between fork() and exec(), so it must call only
/// async-signal-safe functions.
void ChildProcess::prepareChild() const
{
    std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGXFSZ, SIG_DFL);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    limit(RLIMIT_AS, m_addressSpace);
    limit(RLIMIT_FSIZE, m_fileSize);
    if (!m_hasReaderOfErrors) {
        breakStandardError();
    }
}

void ChildProcess::start(QProcess& process, const QStringList& arguments) const
{
    process.setChildProcessModifier([this] { prepareChild(); });
    if (m_diskFolder.isEmpty()) {
        process.start(m_program, arguments);
    } else {
        process.start(QStringLiteral("unshare"),
                      unshareArguments(mountThenExec, QStringList{QString::number(m_diskSize),
                                                                  m_diskFolder, m_program} +
                                                          arguments));
    }
}

ChildRun ChildProcess::run(const QStringList& arguments)
{
    const QTemporaryDir runtime; // avoids Qt's warning about a missing directory
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    for (const auto& [name, value] : std::as_const(m_variables)) {
        environment.insert(name, value);
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder);
    start(process, arguments);
    const bool hasEnded = process.waitForFinished(m_timeoutMs);
    ChildRun result;
    result.trouble = troubleOf(process, hasEnded);
    process.kill();
    process.waitForFinished();
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

ChildRun ChildProcess::runSteps(const QList<QByteArray>& arguments)
{
    QStringList encoded;
    for (const QByteArray& argument : arguments) {
        encoded.append(QString::fromLatin1(argument.toPercentEncoding("/")));
    }
    return run(encoded);
}

} // namespace tests
