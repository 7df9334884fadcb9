// How often a widget is painted.
#pragma once

#include <QEvent>
#include <QObject>
#include <QTest>
#include <QWidget>

namespace tests
{

/// Counts the paint events of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    /// Lets what is still under way arrive, then counts from 0.
    void settle()
    {
        QTest::qWait(60);
        m_count = 0;
    }

    /// The paints since settle().
    int count() const { return m_count; }

    /// The same, those of the next @p milliseconds included.
    int within(int milliseconds) const
    {
        QTest::qWait(milliseconds);
        return m_count;
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace tests
