// The graph window with its eleven plots.
#pragma once

#include "display/DispABase.h"
#include "ui_Displays.h"

#include <QFrame>
#include <QList>

/// Shows the plots in a grid and forwards their draw and mouse signals, with the
/// plot that sent them as an argument.
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

    /// Creates the eleven plots.
    explicit Displays(QWidget* parent = nullptr);
    ~Displays() override;

    /// Adds a plot: sets its title, connects its signals, appends it to @c disps
    /// and places it in the grid. With a negative column or row it is not placed in
    /// the grid. Its axis titles are drawn in the plot.
    void addDisp(DispABase* d, const QString& title, DispId id, int col, int row, int colSpan,
                 int rowSpan);

    /// Returns the first plot with this @p id, or nullptr if there is none.
    DispABase* frame(DispId id) const;

    QList<DispABase*> disps;
    QList<DispId> ids; ///< the id of each plot in @c disps

public Q_SLOTS:
    /// Forward a signal of the sending plot.
    void receiveDraw(QStylePainter* p);
    void receiveMPressed(MouseC* m);
    void receiveMDragging(MouseC* m);
    void receiveMReleased(MouseC* m);

    /// Repaints all plots. Plots in separate windows are repainted even while this
    /// window is hidden.
    void update();

Q_SIGNALS:
    /// The signals of the plots, with the plot @p dab that sent them; see DispArea.
    void draw(Displays::DispId id, DispABase* dab, QStylePainter* p);
    void mPressed(DispABase* dab, MouseC* m);
    void mDragging(DispABase* dab, MouseC* m);
    void mReleased(DispABase* dab, MouseC* m);

protected:
    /// Gives the focus to the window itself when it opens.
    void showEvent(QShowEvent* event) override;

private:
    DispABase* senderFrame() const;
};
