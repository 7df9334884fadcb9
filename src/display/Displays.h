// The graph window with its eleven plots.
#pragma once

#include "display/DispABase.h"
#include "ui_Displays.h"

#include <QFrame>
#include <QList>

/// Shows the plots in a grid. Forwards their signals draw(), mPressed(), mDragging() and
/// mReleased() with the sending plot as an additional argument.
class Displays : public QFrame, public Ui_Displays
{
    Q_OBJECT

public:
    /// The ids of the plots: the four references, the target, and the six graphs of the
    /// analysis.
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

    /// Creates the eleven plots.
    explicit Displays(QWidget* parent = nullptr);
    ~Displays() override;

    /// Adds a plot: sets its title, connects its signals, appends it to @c disps
    /// and places it in the grid. With a negative column or row it is not placed in
    /// the grid. The axis titles are drawn in the plot, not in the strip of its frame.
    void addDisp(DispABase* d, const QString& title, DispId id, int col, int row, int colSpan,
                 int rowSpan);

    /// Returns the first plot with this @p id, or nullptr if there is none.
    DispABase* frame(DispId id) const;

    QList<DispABase*> disps;
    QList<DispId> ids; ///< the id of each plot in @c disps

public Q_SLOTS:
    void receiveDraw(QStylePainter* p); ///< emits draw() for the sending plot
    void receiveMPressed(MouseC* m);    ///< emits mPressed() for the sending plot
    void receiveMDragging(MouseC* m);   ///< emits mDragging() for the sending plot
    void receiveMReleased(MouseC* m);   ///< emits mReleased() for the sending plot

    /// Repaints all plots. Plots in separate windows are repainted even while this
    /// window is hidden.
    void update();

Q_SIGNALS:
    /// Plot @p dab with the id @p id is being painted, see DispArea::draw().
    void draw(Displays::DispId id, DispABase* dab, QStylePainter* p);
    /// Plot @p dab has emitted mPressed(), see DispArea::mPressed().
    void mPressed(DispABase* dab, MouseC* m);
    /// Plot @p dab has emitted mDragging(), see DispArea::mDragging().
    void mDragging(DispABase* dab, MouseC* m);
    /// Plot @p dab has emitted mReleased(), see DispArea::mReleased().
    void mReleased(DispABase* dab, MouseC* m);

protected:
    /// Gives the focus to the window itself when it opens.
    void showEvent(QShowEvent* event) override;

private:
    DispABase* senderFrame() const;
};
