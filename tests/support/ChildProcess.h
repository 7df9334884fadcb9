// A program that a test runs in a process of its own, with less than it may ask for.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <optional>

namespace tests
{

/// What one run of a program left.
struct ChildRun {
    /// Why the program did not end by itself with status 0; empty when it did.
    QString trouble;
    QByteArray output;
    QByteArray errors; ///< with the debug log

    /// The lines of the output that are JSON objects: one for each step of
    /// system_child.
    QList<QJsonObject> steps() const;

    /// The last one of them; empty without any.
    QJsonObject lastStep() const;
};

/// Starts a program off screen, with limits that the system keeps, and waits for
/// its end. A program that does not end in time is killed and counts as hanging.
/// SIGPIPE and SIGXFSZ end the program unless it asks for something else, as
/// they do in a shell.
class ChildProcess
{
public:
    /// @param program  path of the program
    explicit ChildProcess(const QString& program);

    /// Time until the program must have ended; a minute if not set.
    void setTimeout(int milliseconds);

    void setWorkingFolder(const QString& folder);
    void setVariable(const QString& name, const QString& value);

    /// Size (bytes) of all memory that the program may ask for, as "ulimit -v"
    /// does. Means nothing under AddressSanitizer; see isUnderAddressSanitizer().
    void limitAddressSpace(qint64 bytes);

    /// The longest file (bytes) that the program may write, as "ulimit -f" does.
    /// Its output and errors are pipes and have no such limit.
    void limitFileSize(qint64 bytes);

    /// Makes standard error a pipe that nobody reads any more.
    void closeReaderOfErrors();

    /// Gives the program a disk of its own on @p folder, which is there already:
    /// nobody else sees it, and it is gone after the run.
    void mountDisk(const QString& folder, qint64 bytes);

    /// Whether mountDisk() works on this machine.
    static bool canMountDisks();

    ChildRun run(const QStringList& arguments);

    /// Runs with arguments that need not be valid text: each is percent-encoded,
    /// as system_child expects it.
    ChildRun runSteps(const QList<QByteArray>& arguments);

private:
    void start(QProcess& process, const QStringList& arguments) const;
    void prepareChild() const;

    QString m_program;
    QString m_folder;
    QList<std::pair<QString, QString>> m_variables;
    int m_timeoutMs = 60000;
    std::optional<qint64> m_addressSpace;
    std::optional<qint64> m_fileSize;
    bool m_hasReaderOfErrors = true;
    QString m_diskFolder;
    qint64 m_diskSize = 0;
};

/// Whether this build keeps watch over its memory, which takes terabytes of
/// addresses and keeps what was freed.
constexpr bool isUnderAddressSanitizer()
{
#if defined(__SANITIZE_ADDRESS__)
    return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    return true;
#else
    return false;
#endif
#else
    return false;
#endif
}

} // namespace tests
