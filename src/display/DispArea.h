// The widget on which graphs and maps are drawn.
#pragma once

#include "display/ChCoord.h"
#include "display/DrawText.h"
#include "display/MouseC.h"

#include <QFrame>
#include <QStylePainter>

class MarkLine;
class MarkLines;

/// A painting surface. Each paint sets up a painter and the coordinates and emits
/// draw(), in which the connected client draws.
///
/// The surface stores the view, that is the range of data values in @c cc. The mouse wheel
/// zooms the view, and dragging with Shift and the left button pans it. The surface
/// also records the mouse state and lets the user drag the lines of a MarkLines set
/// with the left button.
class DispArea : public QFrame
{
    Q_OBJECT

public:
    explicit DispArea(QWidget* parent = nullptr);

    /// Sets the view (data values) to the automatic range of the client and sets
    /// @c hasScale. Does nothing while @c hasScale is set, so that zooming and panning
    /// persist.
    void fitTo(double x0, double y0, double x1, double y1);

    /// Draws the outline of the plot area and four labels with its range. The numbers are
    /// cut after 5 (y) or 6 (x) characters, so an exponent can be lost. With @p maskMargins the
    /// margins are filled with white first, which covers data outside the plot area. Call this
    /// after the data are drawn.
    void drawFrame(QStylePainter* p, bool maskMargins);

    MouseC mouse;                   ///< mouse state; the signals pass a pointer to it
    ChCoord cc;                     ///< widget rectangle, plot area and view
    bool hasScale = false;          ///< whether a client has set the view, see fitTo()
    DrawText dt;                    ///< draws the range labels
    MarkLines* markLines = nullptr; ///< lines that the user can drag; not owned

Q_SIGNALS:
    /// The mouse moved to the position (@p rx, @p ry) (data values).
    void nowPos(double rx, double ry);
    /// Emitted in each paint. The connected client draws with the painter @p p, which is
    /// valid only during the emission.
    void draw(QStylePainter* p);
    /// The left button was pressed without Shift, Control or Alt.
    void mPressed(MouseC* m);
    /// The mouse moved with the left button down. Not emitted if Shift, Control or Alt
    /// was down at the press.
    void mDragging(MouseC* m);
    /// A mouse button was released. Emitted for all buttons.
    void mReleased(MouseC* m);
    /// A mouse button was double-clicked; the view returns to the automatic range. Emitted for
    /// all buttons.
    void mDClicked(MouseC* m);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void useWholeWidget();
    void useWholeWidgetBeforeFirstPaint();
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
