// Random actions with fields, buttons and windows.
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

    /// Clicks a button with the mouse and returns a description of the click.
    static QString click(QAbstractButton* button, Qt::MouseButton mouse = Qt::LeftButton,
                         Qt::KeyboardModifiers keys = {});

    /// Replaces the text of a field at once, as an input method does, and presses Enter.
    static void enterText(QLineEdit* edit, const QString& text);

    /// Limits the memory of long texts. At most two fields keep a very long text: the two
    /// that received one most recently. Their undo history is cleared. In all other fields
    /// with a long text, the text "1" is entered instead, like typed text.
    void shortenTexts();

    /// Bytes used by the undo histories of the text fields that contained a long text at least
    /// once. A field does not free this memory, because an undo history never shrinks.
    double keptByFields() const { return m_fieldMemory; }

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
    QString chooseSpectrum(Draw& draw);
    QString showOrHide(Draw& draw);
    QString popOrDock(Draw& draw);
    QString resizeWindow(Draw& draw);

    PanelWindows& m_windows;
    QList<QLineEdit*> m_longTexts; ///< fields that can have a long text, the most recent last
    QSet<const QLineEdit*> m_preparedFields; ///< fields that prepareForLongText() prepared
    double m_fieldMemory = 0.0;
};

} // namespace tests
