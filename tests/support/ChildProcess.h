// Runs a program in its own process, optionally with limited memory, file size or disk.
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

/// Result of one run of a program.
struct ChildRun {
    /// Why the run failed: not started, not ended in time, a signal, or an exit status
    /// other than 0. Empty after success.
    QString trouble;
    QByteArray output;
    QByteArray errors; ///< standard error, including the debug log

    /// The output lines that are JSON objects; system_child prints one per step.
    QList<QJsonObject> steps() const;

    /// The last object in steps(); an empty object if steps() is empty.
    QJsonObject lastStep() const;
};

/// Starts a program on the offscreen platform, with limits enforced by the kernel, and
/// waits for it to exit. A program that does not exit in time is killed, and the trouble of
/// its ChildRun is "did not end". SIGPIPE and SIGXFSZ have their default actions, as under a shell:
/// they end the program unless the program changes the actions.
class ChildProcess
{
public:
    /// @param program  path of the executable file
    explicit ChildProcess(const QString& program);

    /// Maximum running time; the default is one minute.
    void setTimeout(int milliseconds);

    void setWorkingFolder(const QString& folder);
    void setVariable(const QString& name, const QString& value);

    /// Limits the address space of the program to @p bytes, like "ulimit -v". Do not use
    /// it with AddressSanitizer; see isUnderAddressSanitizer().
    void limitAddressSpace(qint64 bytes);

    /// Limits each file that the program writes to @p bytes, like "ulimit -f". The limit
    /// does not affect standard output and standard error, which are pipes.
    void limitFileSize(qint64 bytes);

    /// Replaces standard error with a pipe without a reader, so every write to standard
    /// error raises SIGPIPE.
    void closeStandardErrorReader();

    /// Mounts a tmpfs of @p bytes on the existing @p folder in the program's own mount
    /// namespace. It is not visible to other processes, and it is removed after the run.
    void mountDisk(const QString& folder, qint64 bytes);

    /// Whether mountDisk() works on this machine. It needs the permission to
    /// create user namespaces.
    static bool canMountDisks();

    ChildRun run(const QStringList& arguments);

    /// Runs the program with arguments that need not be valid text. Each argument is
    /// percent-encoded; system_child decodes it.
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

/// Whether this build uses AddressSanitizer. Memory limits cannot be tested in such a build,
/// because AddressSanitizer reserves terabytes of address space and delays the reuse of
/// freed memory.
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
