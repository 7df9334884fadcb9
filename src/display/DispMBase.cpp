#include "display/DispMBase.h"

#include "display/LineEditText.h"

#include <QShowEvent>

#include <algorithm>

DispMBase::DispMBase(QWidget* parent)
    : DrawingFrame(parent)
{
    setupUi(this);
    connectDrawing(this);
    connect(DispA, &DispArea::nowPos, this, &DispMBase::nowPos);
    connect(MaxV, &QLineEdit::editingFinished, this, &DispMBase::newZmax);
    connect(MinV, &QLineEdit::editingFinished, this, &DispMBase::newZmin);
    connect(CBar, &cBar::newScale, this, &DispMBase::update);
    connect(CBar, &cBar::newScale, this, &DispMBase::showBarLimits);
    showLimits(CBar->zmin, CBar->zmax);
}

DispMBase::~DispMBase()
{
    // A focused QLineEdit emits editingFinished while being destroyed, which happens after
    // this destructor.
    MaxV->disconnect(this);
    MinV->disconnect(this);
}

void DispMBase::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    // Without this, a line edit would get the focus when the window opens.
    if (!event->spontaneous()) {
        setFocus();
    }
}

void DispMBase::setZRange(double lo, double hi)
{
    const auto [low, high] = std::minmax(lo, hi);
    CBar->newZmin(low);
    CBar->newZmax(high);
    // If the new lower limit was above the old upper limit, the bar has swapped them, and
    // the lower limit must be set again.
    if (CBar->zmin != low) {
        CBar->newZmin(low);
    }
    showLimits(lo, hi);
}

void DispMBase::showBarLimits()
{
    // If the limits of the bar are unchanged, the edits are not updated: they can show
    // reversed limits in the order in which the client passed them.
    if (m_shownMin.limit != CBar->zmin || m_shownMax.limit != CBar->zmax) {
        showLimits(CBar->zmin, CBar->zmax);
    }
}

void DispMBase::showLimits(double lo, double hi)
{
    display::showNumber(MinV, lo);
    display::showNumber(MaxV, hi);
    m_shownMin = {MinV->text(), CBar->zmin};
    m_shownMax = {MaxV->text(), CBar->zmax};
}

void DispMBase::receiveNowPos(double rx, double ry)
{
    XPos->setText(QString::number(rx, 'g', 6));
    YPos->setText(QString::number(ry, 'g', 6));
}

void DispMBase::receiveDraw(QStylePainter* p)
{
    Q_EMIT draw(p);
}

void DispMBase::popDock()
{
    popOrDock();
}

void DispMBase::clearScale()
{
    discardRange();
}

void DispMBase::newZmax()
{
    if (m_shownMax == Shown{MaxV->text(), CBar->zmax}) {
        return;
    }
    CBar->newZmax(display::numberIn(MaxV));
}

void DispMBase::newZmin()
{
    if (m_shownMin == Shown{MinV->text(), CBar->zmin}) {
        return;
    }
    CBar->newZmin(display::numberIn(MinV));
}

void DispMBase::update()
{
    updateAll();
}
