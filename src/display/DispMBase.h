// The frame around one colour map.
#pragma once

#include "display/DrawingFrame.h"
#include "display/cBar.h"
#include "ui_DispMBase.h"

/// Contains the painting surface @c DispA of a map, its colour bar with two edits for
/// the value limits, and a strip with the map's name, the mouse position, the value at
/// the mouse and a button that moves all of this into a separate window and back.
/// Clients connect to the signals of the frame, not to the surface.
class DispMBase : public display::DrawingFrame<Ui_DispMBase>
{
    Q_OBJECT

public:
    explicit DispMBase(QWidget* parent = nullptr);
    ~DispMBase() override;

    /// Sets the value limits of the colour bar and shows them in their edits. If @p lo is
    /// above @p hi, the edits show the limits as @p lo and @p hi, but the bar stores the
    /// smaller number as its lower limit.
    void setZRange(double lo, double hi);

public Q_SLOTS:
    /// Shows the mouse position (data values) in the strip.
    void receiveNowPos(double rx, double ry);

    /// Emits draw() for the client.
    void receiveDraw(QStylePainter* p);

    /// Moves the drawing into its separate window, or back into the frame.
    void popDock();

    /// Discards the range of the view. The next paint with data sets the automatic range.
    void clearScale();

    /// Sets the upper limit of the colour bar to the number in its edit; unparsable
    /// text counts as 0. The bar swaps reversed limits. If a limit of the bar has changed,
    /// both edits are set to the limits of the bar.
    ///
    /// Does nothing if neither the text nor the limit of the bar has changed since the
    /// frame wrote the text: the text is rounded, and reading it would replace the limit
    /// by a less exact number.
    void newZmax();
    /// Sets the lower limit of the colour bar to the number in its edit, by the same rules
    /// as newZmax().
    void newZmin();

    /// Repaints the frame and its drawing, even if the drawing is in the separate
    /// window.
    void update();

Q_SIGNALS:
    void draw(QStylePainter* p);     ///< forwards DispArea::draw()
    void nowPos(double x, double y); ///< forwards DispArea::nowPos()
    void mPressed(MouseC* m);        ///< forwards DispArea::mPressed()
    void mDragging(MouseC* m);       ///< forwards DispArea::mDragging()
    void mReleased(MouseC* m);       ///< forwards DispArea::mReleased()
    void mDClicked(MouseC* m);       ///< forwards DispArea::mDClicked()

protected:
    /// Gives the focus to the frame itself when the window opens, not to one of its line edits.
    void showEvent(QShowEvent* event) override;

private:
    /// The text last shown in the edit of a limit, and the limit of the bar at that
    /// time.
    struct Shown {
        QString text;
        double limit = 0.0;
        bool operator==(const Shown&) const = default;
    };

    void showBarLimits();
    void showLimits(double lo, double hi);

    Shown m_shownMin;
    Shown m_shownMax;
};
