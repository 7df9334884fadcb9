// What a random user does with fields, buttons and windows.
#pragma once

#include "random/ActionKind.h"
#include "random/PanelWindows.h"

class QAbstractButton;
class QLineEdit;

namespace tests
{

class WidgetActions
{
public:
    /// Types a very long text into the fields that get such texts: a field keeps the
    /// memory that its longest list of things to take back had.
    explicit WidgetActions(PanelWindows& windows);

    QList<ActionKind> kinds();

    /// Presses a button with the mouse.
    static QString click(QAbstractButton* button, Qt::MouseButton mouse = Qt::LeftButton);

    /// Puts a text into a field in place of the one there, as an input method does,
    /// and confirms it.
    static void enterText(QLineEdit* edit, const QString& text);

private:
    QList<QLineEdit*> fieldsOfLongTexts() const;
    QString pressAny(Draw& draw);
    QString pressInPanel(Draw& draw);
    QString calculate(Draw& draw);
    QString type(QLineEdit* edit, Draw& draw);
    QString typeAnywhere(Draw& draw);
    QString typeUseful(Draw& draw);
    QString typeLimit(Draw& draw);
    QString pressKeys(Draw& draw);
    QString turnCombo(Draw& draw);
    QString showOrHide(Draw& draw);
    QString popOrDock(Draw& draw);
    QString resizeWindow(Draw& draw);

    PanelWindows& m_windows;
};

} // namespace tests
