// Base class of the frames around plots and maps.
#pragma once

#include "display/DispArea.h"
#include "display/PopBase.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace display
{

/// A frame around a drawing that can be moved into a separate window and back.
///
/// The form @p Form must have the painting surface @c DispA and a strip with the label
/// @c Title and the button @c PopDockB. Surface and strip must be in @c DispABFrame,
/// which is at row 1, column 0 of @c gridLayout.
///
/// A class template cannot be processed by moc, so it declares no signals or slots.
/// Each derived frame declares them itself and so determines their order in its
/// meta-object.
template <class Form>
class DrawingFrame : public QFrame, public Form
{
public:
    /// Sets the automatic range (data values). Does nothing while the surface has a
    /// range. It can therefore be called on every paint: only the first call after a
    /// reset has an effect.
    void setRealCoord(double x0, double y0, double x1, double y1)
    {
        this->DispA->fitTo(x0, y0, x1, y1);
    }

    /// Repaints the drawing if it is in the separate window, which is not repainted
    /// together with the window of the frame.
    void updatePoppedOut()
    {
        if (!docked) {
            this->DispA->update();
        }
    }

    PopBase* pop = nullptr;           ///< the separate window for the drawing
    QVBoxLayout* popLayout = nullptr; ///< the layout of @c pop
    bool docked = true;               ///< whether the drawing is in the frame

protected:
    explicit DrawingFrame(QWidget* parent)
        : QFrame(parent)
    {
    }

    /// Creates the separate window and makes the connections that plots and maps share.
    /// @pre setupUi() of the form was called
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

    /// Moves the drawing into its separate window, or back into the frame.
    void popOrDock()
    {
        pop->setWindowTitle(this->Title->text());
        pop->popDock(this->DispABFrame, this->gridLayout, &docked);
    }

    /// Discards the range of the view. The next paint with data sets the automatic range.
    void discardRange() { this->DispA->hasScale = false; }

    /// Repaints the frame and its drawing, even if the drawing is in the separate window.
    void updateAll()
    {
        QFrame::update();
        updatePoppedOut();
    }
};

} // namespace display
