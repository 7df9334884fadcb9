// Limits the height of the rows of a form to the height of their text.
#pragma once

#include <QObject>

class QWidget;

namespace panel
{

/// Limits the height of the rows of a form, so that a form with many rows fits on a
/// small screen. Line edits, push buttons and combo boxes are at most as high as a line of
/// text with the frame of a line edit. Check boxes and radio buttons are at most as high as
/// a line of text or their indicator, whichever is larger. A padding of one or two pixels is
/// added. The heights are set again when the font or the style of the form changes. Windows
/// that are children of the form, such as file dialogs, are not changed.
class LowRows : public QObject
{
public:
    /// Limits the heights of the widgets that are currently inside @p form.
    /// @param form  becomes the owner of this object
    explicit LowRows(QWidget* form);

    /// Limits the heights again after a change of font or style. Does not block any event.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void limitHeights() const;

    QWidget* m_form;
};

} // namespace panel
