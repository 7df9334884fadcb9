// A line edit in which no number can be misread.
#pragma once

#include <QFont>
#include <QLineEdit>

namespace display
{

/// A line edit whose text is readable as a whole wherever that is possible.
///
/// A text that is wider than the field gets smaller letters (not below 7 points)
/// and narrower ones (not below a stretch of 65) until it fits. One that is
/// wider still shows its beginning and its end around an ellipsis, a number with
/// its whole exponent, until the user edits it or selects a part of it, and has a
/// tool tip with all of it. When the focus leaves, the cursor returns to the front.
/// The field keeps the size that it has with its ordinary letters, which are those
/// of its surroundings: a font that is set on the field itself is lost.
///
/// A field with a style sheet has a light background, so it gets black text
/// whatever the desktop's colours.
///
/// No Q_OBJECT: to forms and style sheets it is a QLineEdit.
class FittedEdit : public QLineEdit
{
public:
    explicit FittedEdit(QWidget* parent = nullptr);

    /// Those of the ordinary letters, whatever letters the text has now.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    /// What the text was edited to is final; from here on it may be shortened.
    void endEditing();

private:
    QRect textRect() const;
    void fit();
    void takeLetters(const QFont& font);
    bool isBeingEdited() const;
    void paintShortened();

    bool m_takingLetters = false; ///< a change of the font is this class's own
    bool m_fitted = false;        ///< the letters are not the ordinary ones
    bool m_overflows = false;     ///< the text is wider than the field even so
    bool m_hasKeys = false;       ///< a key was pressed since the focus came
    QSize m_hint;                 ///< of the ordinary letters, while m_fitted
    QSize m_minimumHint;
};

} // namespace display
