// A line edit for one number.
#pragma once

#include "display/FittedEdit.h"

namespace display
{

/// A field for a number. A double click selects the whole number; a QLineEdit would
/// select only the digits on one side of the decimal point, and the rest would remain when
/// the user types. Enter also selects the whole number, so that typing replaces it.
///
/// The class has no Q_OBJECT, so it has the meta-object of QLineEdit, also for style sheets.
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
    bool m_selectedWhole = false; ///< true from a double click until the next press or release
};

} // namespace display
