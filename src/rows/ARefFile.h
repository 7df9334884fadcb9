// A row of the reference table.
#pragma once

#include "ui_ARefFile.h"

#include <QFrame>

/// The row of a reference spectrum: a button that switches it on, a file row, its
/// valence and two result fields. The numbers are stored only in the widgets.
class ARefFile : public QFrame, public Ui_ARefFile
{
    Q_OBJECT

public:
    explicit ARefFile(QWidget* parent = nullptr);

    /// Switches the row on or off. If this is a change, changedUse() is emitted twice:
    /// once because the button toggles, and once directly.
    void setUse(bool f);

Q_SIGNALS:
    /// The row was switched on or off. Emitted twice for a change by setUse().
    void changedUse(bool f);
    /// A file was selected in the file row, or the file row was cleared.
    void selectedFile();
    /// A spectrum was read whose steepest rise is at @p e (eV).
    void foundNewEdge(double e);
};
