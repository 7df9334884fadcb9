// The frame around one plot.
#pragma once

#include "display/DrawingFrame.h"
#include "ui_DispABase.h"

#include <QString>

/// Contains the painting surface @c DispA of a plot and a strip with the plot's name,
/// the mouse position, optional axis titles, and a button that moves the surface and the
/// strip into a separate window and back. Clients connect to the signals of the frame,
/// not to the surface.
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
    bool xTitleInArea = false; ///< whether the x title is drawn in the plot
    bool yTitleInArea = false; ///< whether the y title is drawn in the plot

public Q_SLOTS:
    /// Shows the mouse position (data values) in the strip. Long numbers are fitted to
    /// their fields, see display::FittedEdit.
    void receiveNowPos(double rx, double ry);

    /// Emits draw() for the client, then calls drawXYTitle() unless the client has
    /// cleared ChCoord::drawn because it has no data.
    void receiveDraw(QStylePainter* p);

    /// Moves the drawing into its separate window, or back into the frame.
    void popDock();

    /// Draws the axis titles for which @c xTitleInArea or @c yTitleInArea is set.
    void drawXYTitle(QStylePainter* p);

    /// Discards the range of the view. The next paint with data sets the automatic range.
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
