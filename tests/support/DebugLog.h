// Captures the messages of qDebug(), qInfo(), qWarning() and qCritical() during a test.
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace tests
{

/// Collects the messages of all levels during its lifetime. They are not printed. Only
/// one instance can exist at a time, because the list is static.
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
