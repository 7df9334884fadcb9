// One line of the reference table.
#pragma once

#include "ui_ARefFile.h"

#include <QFrame>

/// A reference spectrum's row: use switch, file row, valence and two result
/// fields. The widgets hold the numbers.
class ARefFile : public QFrame, public Ui_ARefFile
{
    Q_OBJECT

public:
    explicit ARefFile(QWidget* parent = nullptr);

    /// Switches the row by code. A real change emits changedUse() twice: from
    /// the button and from here.
    void setUse(bool f);

Q_SIGNALS:
    /// The row was switched on or off; twice for one change by setUse().
    void changedUse(bool f);
    /// The file row was given a path, or cleared.
    void selectedFile();
    /// A spectrum was read whose steepest rise is at @p e (eV).
    void foundNewEdge(double e);
};
