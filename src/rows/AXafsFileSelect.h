// The file row of a spectrum, with the spectrum itself.
#pragma once

#include "data/AMutE.h"
#include "rows/AFileSelect.h"

class ChCoord;
class DispABase;
class MouseC;
class QStylePainter;

/// Reads the spectrum file that is selected in its row, proposes an edge energy, stores
/// the energy shift, and draws the spectrum in a frame of the graph window.
class AXafsFileSelect : public AFileSelect, public AMutE
{
    Q_OBJECT

public:
    explicit AXafsFileSelect(QWidget* parent = nullptr);

    /// Makes @p f the frame in which the spectrum is drawn, instead of the earlier frame;
    /// @p f can be null. Also shows the energy shift field and connects it.
    void attach(DispABase* f);

    /// Calculates the mut at working energy @p E (eV) minus the post-edge line if @c subPost
    /// is set, otherwise minus the pre-edge line; see AMutE::backgroundSubtractedAt().
    /// @return false, with @p out unchanged, if no point has the working energy @p E or more
    bool MutAt(double E, double* out) const;

    DispABase* frame = nullptr; ///< not owned
    bool subPost = false;       ///< whether MutAt() subtracts the post-edge line

public Q_SLOTS:
    /// Reads the file and emits foundNewEdge() if it contains a spectrum. The next paint
    /// of the frame fits the range of its axes to the new data.
    ///
    /// This slot hides AFileSelect::newFile() but does not override it: AFileSelect::newFile()
    /// emits newFilePath(), which calls this slot. To load a file from code, call
    /// AFileSelect::newFile(), which also shows the path and emits the signals.
    void newFile(QString path);

    /// Reads the energy shift (eV) from its field; an unparsable number counts as 0. The
    /// background lines are not fitted again.
    void setNewDE();

    /// Draws the spectrum and its two background lines against the working energy (eV).
    /// Also draws vertical lines at preEdgeEnd, edgeEnergy and postEdgeStart, and writes the
    /// edge jump as text. If the spectrum has no points, draws only a white background.
    /// Does nothing without a frame.
    void draw(QStylePainter* p);

    /// Does nothing: DispArea handles the dragging of marker lines.
    void mPressed(MouseC* m);

    /// Does nothing: DispArea handles the dragging of marker lines.
    void mDragging(MouseC* m);

    /// Does nothing: DispArea handles the dragging of marker lines.
    void mReleased(MouseC* m);

Q_SIGNALS:
    /// A spectrum was read whose steepest rise is at @p e (eV).
    void foundNewEdge(double e);
    /// The energy shift of a valid spectrum was entered.
    void updated();

private:
    void drawLimits(QStylePainter* p, const ChCoord& cc, double bottom, double top) const;
    void drawCurves(QStylePainter* p, const ChCoord& cc) const;
    void drawEdgeJump(QStylePainter* p, const ChCoord& cc) const;
};
