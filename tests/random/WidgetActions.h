// What a random user does with fields, buttons and windows.
#pragma once

#include "random/ActionKind.h"
#include "random/PanelWindows.h"

#include <QSet>

class QAbstractButton;
class QLineEdit;

namespace tests
{

class WidgetActions
{
public:
    explicit WidgetActions(PanelWindows& windows)
        : m_windows(windows)
    {
    }

    QList<ActionKind> kinds();

    /// Presses a button with the mouse.
    static QString click(QAbstractButton* button, Qt::MouseButton mouse = Qt::LeftButton,
                         Qt::KeyboardModifiers keys = {});

    /// Puts a text into a field in place of the one there, as an input method does,
    /// and confirms it.
    static void enterText(QLineEdit* edit, const QString& text);

    /// Leaves very long texts in the few fields that got one last, without what
    /// they could take back; a user puts a short one into the others.
    void shortenTexts();

    /// Bytes that fields keep for ever since they had a very long text: each keeps the
    /// memory that its longest list of things to take back had.
    double keptByFields() const { return m_keptByFields; }

private:
    void prepareForLongText(QLineEdit* edit);
    void findLongTexts();
    QString typeLongText(Draw& draw);
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
    QList<QLineEdit*> m_longTexts;           ///< fields that may have one, the latest last
    QSet<const QLineEdit*> m_preparedFields; ///< that keep all the memory they ever will
    double m_keptByFields = 0.0;
};

} // namespace tests
