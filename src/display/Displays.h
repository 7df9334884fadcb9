// The graph window: eleven plots at once.
#pragma once

#include "display/DispABase.h"
#include "ui_Displays.h"

#include <QFrame>
#include <QList>

/// Shows the plots in a grid and turns their draw and mouse signals into ones
/// that name the plot they came from.
class Displays : public QFrame, public Ui_Displays
{
    Q_OBJECT

public:
    enum DispId {
        DRef1,
        DRef2,
        DRef3,
        DRef4,
        DTarget,
        DMuts,
        DLCFvs4PS,
        DHistA,
        DHistDMut,
        DDMutVsA,
        DM2M3
    };

    /// Makes the eleven plots.
    explicit Displays(QWidget* parent = nullptr);
    ~Displays() override;

    /// Names a plot, lists it, connects it, and places it in the grid; with a
    /// negative column or row it stays out of the grid. Its axis titles are
    /// drawn in the plot.
    void addDisp(DispABase* d, const QString& title, DispId id, int col, int row, int colSpan,
                 int rowSpan);

    /// The first plot listed under @p id; null when there is none.
    DispABase* frame(DispId id) const;

    QList<DispABase*> disps;
    QList<DispId> ids; ///< of the plots, place by place

public Q_SLOTS:
    void receiveDraw(QStylePainter* p);
    void receiveMPressed(MouseC* m);
    void receiveMDragging(MouseC* m);
    void receiveMReleased(MouseC* m);

    /// Repaints all plots, those in windows of their own as well, also while
    /// this window is hidden.
    void update();

Q_SIGNALS:
    void draw(Displays::DispId id, DispABase* dab, QStylePainter* p);
    void mPressed(DispABase* dab, MouseC* m);
    void mDragging(DispABase* dab, MouseC* m);
    void mReleased(DispABase* dab, MouseC* m);

protected:
    /// Gives the focus to the window itself.
    void showEvent(QShowEvent* event) override;

private:
    DispABase* senderFrame() const;
};
