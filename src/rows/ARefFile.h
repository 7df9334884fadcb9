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
    void changedUse(bool f);
    void selectedFile();
    void foundNewEdge(double e);
};
