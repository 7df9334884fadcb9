// Limits the heights of the input widgets of a form.
#pragma once

#include <QObject>

class QWidget;

namespace panel
{

/// Limits the heights of the input widgets of a form, so that a form with many rows fits on
/// a small screen. The maximum heights are:
/// - line edits, push buttons and combo boxes: a line of text, plus the frame of a line edit,
///   plus 2 pixels;
/// - check boxes and radio buttons: the tallest of a line of text, the indicator of a check
///   box and the indicator of a radio button, plus 1 pixel.
///
/// The heights are set again when the font or the style of the form changes. Windows that are
/// children of the form, such as file dialogs, are not changed.
class LowRows : public QObject
{
public:
    /// Limits the heights of the input widgets that are currently inside @p form.
    /// @param form  becomes the owner of this object
    explicit LowRows(QWidget* form);

    /// Limits the heights again after a change of font or style. Does not block any event.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void limitHeights() const;

    QWidget* m_form;
};

} // namespace panel
