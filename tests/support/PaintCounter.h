// How often a widget is painted.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QTest>
#include <QWidget>

namespace tests
{

/// Waits for @p milliseconds, and at least until the paints that are under way have
/// arrived, however busy the machine is: each turn handles all events.
inline void letPaintsArrive(int milliseconds = 20)
{
    constexpr int turn = 5; // ms, as long as the platform gathers updates
    for (int waited = 0; waited < milliseconds; waited += turn) {
        QTest::qWait(turn);
    }
}

/// Counts the paint events of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    /// Lets what is still under way arrive, then counts from 0.
    void settle()
    {
        letPaintsArrive();
        m_count = 0;
        m_region = {};
    }

    /// The paints since settle().
    int count() const { return m_count; }

    /// The same, those of the next @p milliseconds included.
    int within(int milliseconds = 20) const
    {
        letPaintsArrive(milliseconds);
        return m_count;
    }

    /// What they painted, all together.
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
