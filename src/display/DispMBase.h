// The frame of one colour map.
#pragma once

#include "display/DrawingFrame.h"
#include "display/cBar.h"
#include "ui_DispMBase.h"

/// Holds the surface @c DispA of a map, its colour bar with the two limits, a
/// strip with its name, the place of the mouse and the value there, and a
/// button that moves them into a window of their own and back. Clients connect
/// to the frame, never to the surface.
class DispMBase : public display::DrawingFrame<Ui_DispMBase>
{
    Q_OBJECT

public:
    explicit DispMBase(QWidget* parent = nullptr);
    ~DispMBase() override;

    /// Gives the colour bar its value limits and shows them in their edits, as
    /// given; the bar itself holds reversed ones the right way round.
    void setZRange(double lo, double hi);

public Q_SLOTS:
    /// Shows a place (data values) in the strip.
    void receiveNowPos(double rx, double ry);

    /// Has the client draw.
    void receiveDraw(QStylePainter* p);

    /// Moves the drawing into its window, or back.
    void popDock();

    /// The next paint fits the range to the data.
    void clearScale();

    /// Hand the number of a limit's edit to the colour bar, words as 0, and show
    /// the limits that the bar has then: it swaps reversed ones. Nothing happens
    /// while the edit has the text that was shown last: that is rounded, and the
    /// bar would lose the other digits of its limit.
    void newZmax();
    void newZmin();

    /// Repaints the frame, and its drawing wherever that is.
    void update();

Q_SIGNALS:
    void draw(QStylePainter* p);
    void nowPos(double x, double y);
    void mPressed(MouseC* m);
    void mDragging(MouseC* m);
    void mReleased(MouseC* m);
    void mDClicked(MouseC* m);

protected:
    /// Gives the focus to the frame itself.
    void showEvent(QShowEvent* event) override;

private:
    /// The text of a limit's edit as shown last, and the bar's limit at that time.
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
