#include "display/Displays.h"

#include <QShowEvent>

Displays::Displays(QWidget* parent)
    : QFrame(parent)
{
    setupUi(this);
    const auto make = [this](const char* name, DispId id, const QString& title, int col, int row,
                             int colSpan) {
        auto* d = new DispABase;
        d->setObjectName(QLatin1String(name));
        addDisp(d, title, id, col, row, colSpan, 1);
    };
    make("DRef1", DRef1, tr("Ref1"), 0, 0, 1);
    make("DRef2", DRef2, tr("Ref2"), 1, 0, 1);
    make("DRef3", DRef3, tr("Ref3"), 2, 0, 1);
    make("DRef4", DRef4, tr("Ref4"), 3, 0, 1);
    make("DTarget", DTarget, tr("Target"), 0, 1, 1);
    make("DMuts", DMuts, tr("Muts"), 1, 1, 2);
    make("DLCFvs4PS", DLCFvs4PS, tr("LCF vs MPS"), 3, 1, 1);
    make("DHistA", DHistA, tr("Histgram of a"), 0, 2, 1);
    make("DHistDMut", DHistDMut, tr("Histgram of dMut"), 1, 2, 1);
    make("DDMutVsA", DDMutVsA, tr("dMut/v or a"), 2, 2, 1);
    // Not in the grid on purpose: the user cannot open this plot. Tests and tools/pictures
    // paint it.
    make("DM2M3", DM2M3, tr("M2/M3"), -1, -1, 1);
}

Displays::~Displays()
{
    for (const DispABase* d : std::as_const(disps)) {
        if (!d->parent()) {
            delete d;
        }
    }
}

void Displays::addDisp(DispABase* d, const QString& title, DispId id, int col, int row, int colSpan,
                       int rowSpan)
{
    d->xTitleInArea = true;
    d->yTitleInArea = true;
    // Hides the title labels of the strip already before the first paint, because the axis
    // titles are drawn in the plot.
    d->setXYTitle(d->xTitle, d->yTitle);
    d->Title->setText(title);
    if (col >= 0 && row >= 0) {
        DispL->addWidget(d, row, col, rowSpan, colSpan);
    }
    disps.append(d);
    ids.append(id);
    connect(d, &DispABase::draw, this, &Displays::receiveDraw);
    connect(d, &DispABase::mPressed, this, &Displays::receiveMPressed);
    connect(d, &DispABase::mDragging, this, &Displays::receiveMDragging);
    connect(d, &DispABase::mReleased, this, &Displays::receiveMReleased);
}

DispABase* Displays::frame(DispId id) const
{
    const qsizetype i = ids.indexOf(id);
    return i < 0 ? nullptr : disps.at(i);
}

DispABase* Displays::senderFrame() const
{
    return qobject_cast<DispABase*>(sender());
}

void Displays::receiveDraw(QStylePainter* p)
{
    DispABase* from = senderFrame();
    for (qsizetype i = 0; i < disps.size(); ++i) {
        if (disps.at(i) == from) {
            Q_EMIT draw(ids.at(i), from, p);
        }
    }
}

void Displays::receiveMPressed(MouseC* m)
{
    Q_EMIT mPressed(senderFrame(), m);
}

void Displays::receiveMDragging(MouseC* m)
{
    Q_EMIT mDragging(senderFrame(), m);
}

void Displays::receiveMReleased(MouseC* m)
{
    Q_EMIT mReleased(senderFrame(), m);
}

void Displays::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    // Without this, the pop-out button of a plot would get the focus, and the space bar would
    // press the button.
    if (!event->spontaneous()) {
        setFocus();
    }
}

void Displays::update()
{
    // QFrame::update() also repaints the docked plots. If they were updated as well, each would
    // be painted twice.
    QFrame::update();
    for (DispABase* d : std::as_const(disps)) {
        if (d->parent()) {
            d->updatePoppedOut();
        } else {
            d->update(); // a top-level window
        }
    }
}
