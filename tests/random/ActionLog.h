// Records the current action, so that a crash or a hang can be assigned to its action.
#pragma once

#include "random/CrashNote.h"

#include <QFile>

#include <unistd.h>

namespace tests
{

/// Writes the current action to a log file and to the crash note. SIGALRM ends the
/// program one minute after the latest begin().
class ActionLog
{
public:
    /// @param path  path of the log file; empty for no log file
    ActionLog(const QString& path, unsigned seed)
        : m_file(path)
        , m_seed(seed)
    {
        m_isLogging = !path.isEmpty() && m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        installCrashNote();
    }

    /// Records the number and the kind of the action that starts now, and restarts the
    /// alarm.
    void begin(int action, const QString& kind)
    {
        if (m_isLogging) {
            m_file.resize(0);
            m_file.seek(0);
            m_file.write(QByteArray::number(action) + ' ' + kind.toUtf8() + '\n');
        }
        setCrashNote("seed " + QByteArray::number(m_seed) + ", action " +
                     QByteArray::number(action) + ": " + kind.toUtf8());
        constexpr unsigned timeout = 60; // s; generous, because the machine may be busy
        ::alarm(timeout);
    }

private:
    QFile m_file;
    unsigned m_seed;
    bool m_isLogging = false;
};

} // namespace tests
