// A line edit that holds one number.
#pragma once

#include "display/FittedEdit.h"

namespace display
{

/// A field for a number: a double click selects all of it, where an ordinary
/// field would stop at the decimal point and leave the rest behind what is typed.
/// Enter selects it, too, so that the next number replaces it.
///
/// No Q_OBJECT: to forms and style sheets it is a QLineEdit.
class NumberEdit : public FittedEdit
{
public:
    using FittedEdit::FittedEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool m_selectedWhole = false; ///< from a double click to the release of the button
};

} // namespace display
