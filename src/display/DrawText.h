// Draws texts that fit a box, and check boxes.
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

/// Draws text, usually at a size that fits a box: the text is measured at 10 points,
/// and its size is scaled to the box. A text whose fitting size is 0 points is not drawn.
/// A box is a rectangle in pixels; its width and height can be negative. The parameter
/// @c flags contains alignment flags for QPainter::drawText().
class DrawText : public QObject
{
    Q_OBJECT

public:
    static constexpr int asGiven = 0; ///< drawing mode: uses the given font, but see drawTexts()
    static constexpr int fit = 1;     ///< drawing mode: scales the font to the box

    using QObject::QObject;

    /// Draws @p text into @p box. Afterwards the font of the painter is @p font.
    ///
    /// Fitted text is not clipped, so that no digit of a number is cut off. Font sizes
    /// are rounded to whole pixels, so the text can become wider than calculated;
    /// then it is squeezed to the width of the box.
    ///
    /// @param mode       @c fit (1) fits the size; any other value uses @p font
    ///                   unchanged
    /// @param maxPoints  the largest fitted size in points; 0 or less means no limit
    /// @return the bounding box of the text as measured: at 10 points in mode
    ///         @c fit, otherwise in @p font
    QRectF drawText(QStylePainter* p, const QRectF& box, const QFont& font, int flags, int mode,
                    const QString& text, double maxPoints);

    /// Returns the bounding box that the text would have in drawText() without a size
    /// limit, before drawText() squeezes or moves it. The bounding box is empty if the
    /// fitting size is 0. Draws nothing. Afterwards the font of the painter is @p font.
    QRectF textBox(QStylePainter* p, const QRectF& box, const QFont& font, int flags, int mode,
                   const QString& text);

    /// Returns the size in points at which @p text fits @p box. If a side of the
    /// box has length 0, the text is assumed to fit that side at 10 points. For a
    /// text without extent the result is 10.
    double fitSize(QStylePainter* p, const QRectF& box, const QFont& font, int flags,
                   const QString& text);

    /// Draws one line of text for each string of @p list and moves the box by (dx, dy)
    /// pixels after each line. In mode @c asGiven (0) all lines have the same size:
    /// the largest whole number of points at which every line fits, without using
    /// @p maxPoints. If this number is 0, nothing is drawn. In any other mode each line is
    /// fitted separately.
    void drawTexts(QStylePainter* p, const QRectF& box, double dx, double dy, const QFont& font,
                   int flags, int mode, const QStringList& list, double maxPoints);

    /// Draws two lists side by side. Each line of text has a string of @p list1 at the
    /// left and a string of @p list2 at the right of the box, which moves by (dx, dy)
    /// pixels after each line. All lines have the same size: the largest whole number of
    /// points at which every line fits, without using @p maxPoints. If this number is 0,
    /// nothing is drawn. The shorter list determines the number of lines.
    void drawTextPairs(QStylePainter* p, const QRectF& box, double dx, double dy, const QFont& font,
                       const QStringList& list1, const QStringList& list2, double maxPoints);

    /// Adds @p box to the used rectangles, see @c boxes.
    void addBox(const QRectF& box);

    /// Whether @p box (after normalize()) intersects one of the used rectangles, see
    /// @c boxes.
    bool overlaps(const QRectF& box) const;

    /// Returns the same rectangle with a non-negative width and height.
    static QRectF normalize(const QRectF& box);

    /// Draws a check box without using the widget style: a square of side @p height with
    /// its lower left corner at (x, y), and @p text to the right of it. The square is filled
    /// with @c buttonOn or @c buttonOff. The text is fitted, so that the whole check box is
    /// not wider than @p width.
    void drawButton(QStylePainter* p, bool on, const QString& text, double x, double y,
                    double width, double height);

    /// Whether the position of @p event, rounded to the nearest pixel, is strictly
    /// inside the square of side @p size with its lower left corner at (x, y).
    static bool inButton(const QMouseEvent* event, double x, double y, double size);

    int align = -1;      ///< not used by the program
    QList<QRectF> boxes; ///< rectangles that are already used in a drawing
    QColor buttonLine{0, 220, 220};
    QColor buttonOn{170, 255, 170};
    QColor buttonOff{140, 180, 140};
    QColor buttonText{0, 0, 0};

private:
    static QRectF measure(QStylePainter* p, const QFont& font, int flags, const QString& text);
    std::optional<QFont> commonFont(QStylePainter* p, const QRectF& box, const QFont& font,
                                    int flags, const QStringList& list);
};
