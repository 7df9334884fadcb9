// Which action was under way when the program ended.
#pragma once

#include "random/EndNote.h"

#include <QFile>

#include <unistd.h>

namespace tests
{

/// Keeps the action under way in a file and in the note at the end, for a run that
/// ends by a crash, and ends a run whose action waits for ever.
class ActionLog
{
public:
    /// @param path  of the file; none is kept for an empty one
    ActionLog(const QString& path, unsigned seed)
        : m_file(path)
        , m_seed(seed)
    {
        m_isKept = !path.isEmpty() && m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        printNoteAtEnd();
    }

    /// Notes an action, in one line, and begins to wait for its end.
    void begin(int action, const QString& kind)
    {
        if (m_isKept) {
            m_file.resize(0);
            m_file.seek(0);
            m_file.write(QByteArray::number(action) + ' ' + kind.toUtf8() + '\n');
        }
        setEndNote("seed " + QByteArray::number(m_seed) + ", action " + QByteArray::number(action) +
                   ": " + kind.toUtf8());
        constexpr unsigned longest = 60; // s; the machine may be busy with other things
        ::alarm(longest);
    }

private:
    QFile m_file;
    unsigned m_seed;
    bool m_isKept = false;
};

} // namespace tests
