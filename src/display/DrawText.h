// Text that fits its box.
#pragma once

#include <QColor>
#include <QFont>
#include <QList>
#include <QObject>
#include <QRectF>
#include <QStringList>

#include <optional>

class QMouseEvent;
class QStylePainter;

/// Draws text at a size that fits a box: it is measured once at 10 points, and
/// the size scales with the box from there. Boxes may have negative sizes.
/// Alignment comes as the flags of QPainter::drawText(). A box that has no room
/// (a size of 0 points) shows nothing.
class DrawText : public QObject
{
    Q_OBJECT

public:
    /// Modes of drawing: the font as it is, and the size that fits the box.
    static constexpr int asGiven = 0;
    static constexpr int fit = 1;

    using QObject::QObject;

    /// Draws @p text into @p box and leaves the painter with @p font. Fitted
    /// text is not clipped to its box, so that it cannot lose a digit. Fonts come
    /// in whole pixels, so that it may be wider than the size says; then it is
    /// squeezed to the width of the box.
    ///
    /// @param mode       1 fits the size; anything else takes @p font as it is
    /// @param maxPoints  the largest size when fitting; no limit at 0 or below
    /// @return the text's bounding box at the size of measuring: 10 points when
    ///         fitting, else that of @p font
    QRectF drawText(QStylePainter* p, const QRectF& box, const QFont& font, int flags, int mode,
                    const QString& text, double maxPoints);

    /// Where drawText() without a limit would put the text, without drawing it.
    QRectF textBox(QStylePainter* p, const QRectF& box, const QFont& font, int flags, int mode,
                   const QString& text);

    /// The size in points at which @p text fits @p box; an empty side of the
    /// box, or a text that measures nothing, counts as fitting at 10 points.
    double fitSize(QStylePainter* p, const QRectF& box, const QFont& font, int flags,
                   const QString& text);

    /// Draws one line for each string of @p list, the box moving by (dx, dy)
    /// pixels after each. In mode 0 all have one size, the smallest that fits
    /// any of them, in whole points and without a limit; in any other each line
    /// fits itself.
    void drawTexts(QStylePainter* p, const QRectF& box, double dx, double dy, const QFont& font,
                   int flags, int mode, const QStringList& list, double maxPoints);

    /// Draws two lists side by side: each row has the first string at the left
    /// and the second at the right of the same box, in the size that fits the
    /// longest row, in whole points and without a limit. Rows beyond the shorter
    /// list are left out.
    void drawTextPairs(QStylePainter* p, const QRectF& box, double dx, double dy, const QFont& font,
                       const QStringList& list1, const QStringList& list2, double maxPoints);

    /// Remembers a box as used on the drawing.
    void addBox(const QRectF& box);

    /// Whether @p box, its size made positive, meets a remembered one.
    bool overlaps(const QRectF& box) const;

    /// The same rectangle with a positive width and height.
    static QRectF normalize(const QRectF& box);

    /// Draws a tick box by hand, a square of side @p height with its lower left
    /// at (x, y), and its text to the right within @p width.
    void drawButton(QStylePainter* p, bool on, const QString& text, double x, double y,
                    double width, double height);

    /// Whether the rounded position of @p event is strictly inside the square
    /// of side @p size with its lower left at (x, y).
    static bool inButton(const QMouseEvent* event, double x, double y, double size);

    int align = -1;
    QList<QRectF> boxes; ///< rectangles already used on a drawing
    QColor buttonLine{0, 220, 220};
    QColor buttonOn{170, 255, 170};
    QColor buttonOff{140, 180, 140};
    QColor buttonText{0, 0, 0};

private:
    static QRectF measure(QStylePainter* p, const QFont& font, int flags, const QString& text);
    std::optional<QFont> commonFont(QStylePainter* p, const QRectF& box, const QFont& font,
                                    int flags, const QStringList& list);
};
