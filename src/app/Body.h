// The main window, which contains only the analysis panel.
#pragma once

#include "ui_Body.h"

#include <QMainWindow>

class FourPs;

/// Contains the analysis panel and grows to the size of the panel. The menu bar and the
/// status bar are empty.
class Body : public QMainWindow
{
    Q_OBJECT

public:
    Body();

private:
    Ui_Body ui;
    FourPs* panel = nullptr; ///< child of the central widget
};
