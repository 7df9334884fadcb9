// The widget on which every graph and map is drawn.
#pragma once

#include "display/ChCoord.h"
#include "display/DrawText.h"
#include "display/MouseC.h"

#include <QFrame>
#include <QStylePainter>

class MarkLine;
class MarkLines;

/// A painting surface. It draws nothing of its own: each paint prepares a
/// painter and the coordinates and asks, by draw(), whoever is connected.
///
/// It keeps the view, that is the real range of @c cc, which the wheel zooms
/// and Shift drags; it records the mouse, and lets the user drag the lines of
/// a MarkLines set with the left button.
class DispArea : public QFrame
{
    Q_OBJECT

public:
    explicit DispArea(QWidget* parent = nullptr);

    /// Sets the real range for a client that fits it to its data. Does nothing
    /// while there is one.
    void fitTo(double x0, double y0, double x1, double y1);

    /// Draws the outline of the plot area and the four labels of its range, the
    /// numbers cut to their first 5 (y) or 6 (x) characters: a rough reminder.
    /// With @p maskMargins the margins are filled white first, which covers
    /// data that overhang the plot area. Call it after the data.
    void drawFrame(QStylePainter* p, bool maskMargins);

    MouseC mouse;                   ///< lent by the mouse signals
    ChCoord cc;                     ///< screen, plot area and real range
    bool hasScale = false;          ///< a client has set the real range
    DrawText dt;                    ///< for the range labels
    MarkLines* markLines = nullptr; ///< may be dragged here; not owned

Q_SIGNALS:
    /// The mouse moved to this place, in data values.
    void nowPos(double rx, double ry);
    /// Draw now. Everything the user sees is painted inside this emission.
    void draw(QStylePainter* p);
    /// A plain left press: no Shift, Control or Alt.
    void mPressed(MouseC* m);
    /// A move after a plain left press.
    void mDragging(MouseC* m);
    /// Any release.
    void mReleased(MouseC* m);
    /// Any double click; the view goes back to the automatic range.
    void mDClicked(MouseC* m);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void takeWholeWidget();
    void takeWholeWidgetUntilPainted();
    void selectMarkLine();
    void dragMarkLine();
    void endMarkDrag();
    double distanceTo(int line) const;
    void pan();
    void zoom(double factor);
    void fillMargins(QStylePainter* p) const;
    void drawRangeLabels(QStylePainter* p);

    bool m_painted = false;
};
