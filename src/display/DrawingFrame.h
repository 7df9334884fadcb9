// What the frame of a plot and that of a map have in common.
#pragma once

#include "display/DispArea.h"
#include "display/PopBase.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace display
{

/// A frame whose form @p Form has the surface @c DispA, a strip with the label
/// @c Title and the button @c PopDockB, both in @c DispABFrame at row 1, column 0 of
/// @c gridLayout, and that moves these into a window of their own and back.
///
/// It has no signals and slots: a frame declares them itself, in the order in which
/// its meta-object tells them.
template <class Form>
class DrawingFrame : public QFrame, public Form
{
public:
    /// Sets the automatic range, in data values. Does nothing while the surface
    /// has a range; so it may be called on every draw, and the first call after
    /// a reset counts.
    void setRealCoord(double x0, double y0, double x1, double y1)
    {
        this->DispA->fitTo(x0, y0, x1, y1);
    }

    /// Repaints the drawing if it is in its own window, which an update of the
    /// windows around the frame does not reach.
    void updatePoppedOut()
    {
        if (!docked) {
            this->DispA->update();
        }
    }

    PopBase* pop = nullptr;           ///< the window for the drawing
    QVBoxLayout* popLayout = nullptr; ///< inside @c pop
    bool docked = true;               ///< the drawing sits in the frame

protected:
    explicit DrawingFrame(QWidget* parent)
        : QFrame(parent)
    {
    }

    /// Makes the window for the drawing and the connections of both kinds of frame.
    /// @pre the form is set up
    template <class Frame>
    void connectDrawing(Frame* owner)
    {
        pop = new PopBase(owner);
        popLayout = pop->PopBaseLayout;
        connect(this->DispA, &DispArea::nowPos, owner, &Frame::receiveNowPos);
        connect(this->DispA, &DispArea::draw, owner, &Frame::receiveDraw);
        connect(owner, &Frame::draw, pop, &PopBase::update);
        connect(this->PopDockB, &QPushButton::clicked, owner, &Frame::popDock);
        connect(pop, &PopBase::closed, owner, &Frame::popDock);
        connect(this->DispA, &DispArea::mPressed, owner, &Frame::mPressed);
        connect(this->DispA, &DispArea::mDragging, owner, &Frame::mDragging);
        connect(this->DispA, &DispArea::mReleased, owner, &Frame::mReleased);
        connect(this->DispA, &DispArea::mDClicked, owner, &Frame::mDClicked);
    }

    void popOrDock()
    {
        pop->setWindowTitle(this->Title->text());
        pop->popDock(this->DispABFrame, this->gridLayout, &docked);
    }

    void forgetRange() { this->DispA->hasScale = false; }

    void updateAll()
    {
        QFrame::update();
        updatePoppedOut();
    }
};

} // namespace display
