// What goes to the debug log during a test.
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace tests
{

/// Collects the messages of its lifetime, of every kind, in place of printing
/// them. One at a time.
class DebugLog
{
public:
    DebugLog()
    {
        collected().clear();
        m_previous = qInstallMessageHandler(collect);
    }
    ~DebugLog() { qInstallMessageHandler(m_previous); }
    DebugLog(const DebugLog&) = delete;
    DebugLog& operator=(const DebugLog&) = delete;

    const QStringList& lines() const { return collected(); }

private:
    static QStringList& collected()
    {
        static QStringList lines;
        return lines;
    }

    static void collect(QtMsgType, const QMessageLogContext&, const QString& message)
    {
        collected().append(message);
    }

    QtMessageHandler m_previous = nullptr;
};

} // namespace tests
