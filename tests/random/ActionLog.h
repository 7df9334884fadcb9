// Which action was under way when the program ended.
#pragma once

#include <QByteArray>
#include <QFile>

#include <csignal>
#include <string_view>
#include <unistd.h>

namespace tests
{

/// Keeps the action under way in a file, for a run that ends by a crash, and ends
/// a run whose action waits for ever.
class ActionLog
{
public:
    /// @param path  of the file; none is kept for an empty one
    explicit ActionLog(const QString& path)
        : m_file(path)
    {
        m_isKept = !path.isEmpty() && m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        std::signal(SIGALRM, [](int) {
            constexpr std::string_view text("random_user: an action never ends\n");
            [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
            ::_exit(3);
        });
    }

    /// Notes an action, in one line, and begins to wait for its end.
    void begin(int action, const QString& kind)
    {
        if (m_isKept) {
            m_file.resize(0);
            m_file.seek(0);
            m_file.write(QByteArray::number(action) + ' ' + kind.toUtf8() + '\n');
        }
        constexpr unsigned longest = 60; // s; the machine may be busy with other things
        ::alarm(longest);
    }

private:
    QFile m_file;
    bool m_isKept = false;
};

} // namespace tests
