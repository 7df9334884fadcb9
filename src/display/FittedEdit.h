// A line edit that fits its font to long texts.
#pragma once

#include <QFont>
#include <QLineEdit>

namespace display
{

/// A line edit that shows the whole text if possible, so that no number is misread.
///
/// If the text is wider than the field, the font becomes smaller (down to 7 points)
/// and narrower (down to a stretch of 65 %) until the text fits. A text that is still
/// too wide is shortened with an ellipsis, see shortened(); a number keeps its whole
/// exponent. The tool tip then shows the full text. The shortened form is not used
/// while the user edits the text or has selected a part of it. When the field loses
/// the focus, but not to its context menu or another window, the cursor returns to the
/// beginning.
///
/// The size hints are always calculated for the ordinary font, which the field inherits
/// from its parent. A font that is set on the field itself is lost after a fitted font
/// was in use.
///
/// A field with a style sheet is expected to have a light background and gets black
/// text, independent of the desktop's colours.
///
/// The class has no Q_OBJECT, so it has the meta-object of QLineEdit, also for style
/// sheets.
class FittedEdit : public QLineEdit
{
public:
    explicit FittedEdit(QWidget* parent = nullptr);

    /// Returns the size hint for the ordinary font, also while a fitted font is in use.
    QSize sizeHint() const override;
    /// Returns the minimum size hint for the ordinary font, also while a fitted font is
    /// in use.
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    /// Marks the text as no longer being edited, so that it can be shortened.
    void endEditing();

private:
    QRect textRect() const;
    void fit();
    void applyFont(const QFont& font);
    bool isBeingEdited() const;
    void paintShortened();

    bool m_isApplyingFont = false; ///< whether this class itself is changing the font
    bool m_fitted = false;         ///< whether a smaller or narrower font is in use
    bool m_overflows = false;      ///< whether the text is too wide even in the last font step
    bool m_hasKeys = false;        ///< whether a key was pressed since the last end of editing
    QSize m_hint;                  ///< size hint of the ordinary font, valid while m_fitted
    QSize m_minimumHint;           ///< minimum size hint of the ordinary font, valid while m_fitted
};

} // namespace display
