// The file row of one spectrum, and the spectrum itself.
#pragma once

#include "data/AMutE.h"
#include "rows/AFileSelect.h"

class ChCoord;
class DispABase;
class MouseC;
class QStylePainter;

/// Reads the spectrum file that its row is given, proposes an edge energy and
/// keeps the energy shift. It draws itself in its frame of the graph window.
class AXafsFileSelect : public AFileSelect, public AMutE
{
    Q_OBJECT

public:
    explicit AXafsFileSelect(QWidget* parent = nullptr);

    /// Joins the row with the frame it draws in, which may be null, in place of
    /// the one it drew in before; shows the dE field and listens to it.
    void attach(DispABase* f);

    /// Background-subtracted mut at energy @p E (eV); see
    /// AMutE::backgroundSubtractedAt().
    bool MutAt(double E, double* out) const;

    DispABase* frame = nullptr; ///< not owned
    bool subPost = false;       ///< MutAt() subtracts the post-edge line

public Q_SLOTS:
    /// Reads the file and proposes its edge; a failed read proposes none. The
    /// next paint of the frame fits its range to the new data.
    ///
    /// A slot of its own beside the one of the file row: paths arrive here
    /// through the row's newFilePath(). To load a file by code, call
    /// AFileSelect::newFile().
    void newFile(QString path);

    /// Takes the energy shift (eV) from its field; words count as 0. The
    /// background lines keep the fit made when the file was read.
    void setNewDE();

    /// Draws the spectrum, its two background lines and the limits between
    /// them, over working energies (eV), with the edge jump as a text. Without
    /// points the frame stays white. Nothing without a frame.
    void draw(QStylePainter* p);

    /// Do nothing: dragging is the business of the frame's marker lines.
    void mPressed(MouseC* m);
    void mDragging(MouseC* m);
    void mReleased(MouseC* m);

Q_SIGNALS:
    /// A spectrum was read whose steepest rise is at @p e (eV).
    void foundNewEdge(double e);
    /// The energy shift of a valid spectrum changed.
    void updated();

private:
    void drawLimits(QStylePainter* p, const ChCoord& cc, double bottom, double top) const;
    void drawCurves(QStylePainter* p, const ChCoord& cc) const;
    void drawEdgeJump(QStylePainter* p, const ChCoord& cc) const;
};
