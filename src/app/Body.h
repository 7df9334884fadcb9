// The main window with the analysis panel.
#pragma once

#include "ui_Body.h"

#include <QMainWindow>

class FourPs;

/// Contains the analysis panel. The menu bar and the status bar are empty.
class Body : public QMainWindow
{
    Q_OBJECT

public:
    Body();

private:
    Ui_Body ui;
    FourPs* panel = nullptr; ///< child of the central widget
};
