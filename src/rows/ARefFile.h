// A row of the reference table.
#pragma once

#include "ui_ARefFile.h"

#include <QFrame>

/// The row of a reference spectrum: a button that switches the reference on or off, a file
/// row, a field for its valence and two result fields. The valence and the results are
/// stored only as text in these fields.
class ARefFile : public QFrame, public Ui_ARefFile
{
    Q_OBJECT

public:
    explicit ARefFile(QWidget* parent = nullptr);

    /// Switches the row on or off. If its state changes, changedUse() is emitted twice:
    /// once because the button toggles, and once directly.
    void setUse(bool f);

Q_SIGNALS:
    /// The row was switched on or off. Emitted twice if setUse() changed the state.
    void changedUse(bool f);
    /// A file was selected in the file row, or the file row was cleared.
    void selectedFile();
    /// A spectrum was read whose steepest rise is at @p e (eV).
    void foundNewEdge(double e);
};
