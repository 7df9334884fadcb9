// The main window: the analysis panel and nothing else.
#pragma once

#include "ui_Body.h"

#include <QMainWindow>

class FourPs;

/// Holds the one panel of the program, and grows to the panel's size. Its menu
/// bar and status bar stay empty.
class Body : public QMainWindow
{
    Q_OBJECT

public:
    Body();

private:
    Ui_Body ui;
    FourPs* panel = nullptr; ///< owned by the central widget
};
