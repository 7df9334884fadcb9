// The frame around one plot.
#pragma once

#include "display/DrawingFrame.h"
#include "ui_DispABase.h"

#include <QString>

/// Contains the painting surface @c DispA of a plot and a strip with its name, the
/// mouse position and a button that moves surface and strip into a separate window
/// and back. Clients connect to the signals of the frame, not to the surface.
class DispABase : public display::DrawingFrame<Ui_DispABase>
{
    Q_OBJECT

public:
    explicit DispABase(QWidget* parent = nullptr);

    /// Sets the titles of the axes. A title that is not drawn in the plot is shown
    /// in the strip.
    void setXYTitle(const QString& x, const QString& y);

    QString xTitle;
    QString yTitle;
    bool xTitleInArea = false; ///< draw the x title in the plot
    bool yTitleInArea = false; ///< draw the y title in the plot

public Q_SLOTS:
    /// Shows a position (data values) in the strip. A number that is too long for
    /// its field shows its first digits.
    void receiveNowPos(double rx, double ry);

    /// Emits draw() for the client, then draws the titles unless the client had
    /// nothing to draw.
    void receiveDraw(QStylePainter* p);

    /// Moves the drawing into its separate window, or back into the frame.
    void popDock();

    /// Draws the titles that are shown in the plot.
    void drawXYTitle(QStylePainter* p);

    /// Discards the range of the view. The next paint fits it to the data again.
    void clearScale();

    /// Repaints the frame and its drawing, even if the drawing is in the separate
    /// window.
    void update();

Q_SIGNALS:
    void draw(QStylePainter* p); ///< forwards DispArea::draw()
    void mPressed(MouseC* m);    ///< forwards DispArea::mPressed()
    void mDragging(MouseC* m);   ///< forwards DispArea::mDragging()
    void mReleased(MouseC* m);   ///< forwards DispArea::mReleased()
    void mDClicked(MouseC* m);   ///< forwards DispArea::mDClicked()
};
