// The frame of one plot.
#pragma once

#include "display/DrawingFrame.h"
#include "ui_DispABase.h"

#include <QString>

/// Holds the surface @c DispA of a plot, a strip with its name and the place
/// of the mouse, and a button that moves them into a window of their own and
/// back. Clients connect to the frame, never to the surface.
class DispABase : public display::DrawingFrame<Ui_DispABase>
{
    Q_OBJECT

public:
    explicit DispABase(QWidget* parent = nullptr);

    /// The titles of the axes. The strip shows those that are not drawn in the
    /// plot.
    void setXYTitle(const QString& x, const QString& y);

    QString xTitle;
    QString yTitle;
    bool xTitleInArea = false; ///< draw the title in the plot
    bool yTitleInArea = false;

public Q_SLOTS:
    /// Shows a place (data values) in the strip, the first digits in view.
    void receiveNowPos(double rx, double ry);

    /// Has the client draw, and then the titles if it had something to show.
    void receiveDraw(QStylePainter* p);

    /// Moves the drawing into its window, or back.
    void popDock();

    /// Draws the titles that belong into the plot.
    void drawXYTitle(QStylePainter* p);

    /// The next paint fits the range to the data.
    void clearScale();

    /// Repaints the frame, and its drawing wherever that is.
    void update();

Q_SIGNALS:
    void draw(QStylePainter* p);
    void mPressed(MouseC* m);
    void mDragging(MouseC* m);
    void mReleased(MouseC* m);
    void mDClicked(MouseC* m);
};
