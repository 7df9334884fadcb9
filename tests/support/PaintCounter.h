// Counts the paint events of a widget and records the painted region.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QTest>
#include <QWidget>

namespace tests
{

/// Waits for @p milliseconds in short steps. Each step processes all events, so pending
/// paint events are delivered even on a busy machine.
inline void waitForPaints(int milliseconds = 20)
{
    constexpr int turn = 5; // ms; the platform plugin collects updates for this time
    for (int waited = 0; waited < milliseconds; waited += turn) {
        QTest::qWait(turn);
    }
}

/// Counts the paint events of a widget and records the painted region.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    /// Processes pending paint events, then resets the count and the region.
    void restart()
    {
        waitForPaints();
        m_count = 0;
        m_region = {};
    }

    /// The number of paint events since restart().
    int count() const { return m_count; }

    /// Waits for @p milliseconds and returns the number of paint events since restart().
    int within(int milliseconds = 20) const
    {
        waitForPaints(milliseconds);
        return m_count;
    }

    /// The union of the regions painted since restart().
    const QRegion& region() const { return m_region; }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++m_count;
            m_region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

private:
    int m_count = 0;
    QRegion m_region;
};

} // namespace tests
