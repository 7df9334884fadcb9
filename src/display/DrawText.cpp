#include "display/DrawText.h"

#include "display/Pixels.h"

#include <QMouseEvent>
#include <QStylePainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double trialPoints = 10.0;

/// Start value for the common size of several texts, in points: larger than any
/// size in practice. An empty list gets this size.
constexpr double startPoints = 100000.0;

QFont sized(const QFont& font, double points)
{
    QFont copy(font);
    copy.setPointSizeF(points);
    return copy;
}

/// Returns the size in points at which a text fits @p box. @p measured is the bounding
/// box of the text at the trial size.
double fittingPoints(const QRectF& box, const QRectF& measured)
{
    if (measured.width() == 0.0 && measured.height() == 0.0) {
        return trialPoints;
    }
    const double rw = measured.width() == 0.0 ? 1.0 : box.width() / measured.width();
    const double rh = measured.height() == 0.0 ? 1.0 : box.height() / measured.height();
    return trialPoints * std::min(rw, rh);
}

double limited(double points, double maxPoints)
{
    return maxPoints > 0.0 && points > maxPoints ? maxPoints : points;
}

/// Returns the distance from the top of the line of @p text to its baseline. This can differ
/// from the ascent of the painter's font if some letters, for example Japanese ones, belong
/// to a fallback font.
double ascentOf(const QStylePainter* p, const QString& text)
{
    QTextLayout layout(text, p->font(), p->device());
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line.ascent();
}

/// Draws @p text with the painter's font into @p box, without clipping. Text that is
/// wider than the box is squeezed to the width of the box. Text whose letters would
/// extend above or below the box is moved inside if the letters fit. They usually fit: the
/// line can be a pixel higher than the box, but the letters are rarely as high as the line.
void drawInsideBox(QStylePainter* p, const QRectF& box, int flags, const QString& text)
{
    const QRectF line = p->boundingRect(box, flags, text);
    const double ascent = ascentOf(p, text);
    const double baseline = line.top() + ascent;
    const QRectF ink = QFontMetricsF(p->font(), p->device()).tightBoundingRect(text);
    const double highest = std::ceil(box.top() - ink.top());
    const double lowest = std::floor(box.bottom() - ink.bottom());
    const bool tooWide = line.width() > box.width();
    if (!tooWide && baseline >= highest && baseline <= lowest) {
        p->drawText(box, flags | Qt::TextDontClip, text);
        return;
    }
    const double width = tooWide ? line.width() : box.width();
    const double movedBaseline = std::max(std::min(std::round(baseline), lowest), highest);
    const QTransform before = p->transform();
    p->translate(box.left(), 0.0);
    p->scale(tooWide ? box.width() / width : 1.0, 1.0);
    p->drawText(QRectF(0.0, movedBaseline - ascent, width, box.height()),
                (flags & ~Qt::AlignVertical_Mask) | Qt::AlignTop | Qt::TextDontClip, text);
    p->setTransform(before);
}

QRectF rowBox(const QRectF& first, double dx, double dy, qsizetype row)
{
    const auto steps = static_cast<double>(row);
    return DrawText::normalize(first).translated(dx * steps, dy * steps);
}

} // namespace

QRectF DrawText::drawText(QStylePainter* p, const QRectF& box, const QFont& font, int flags,
                          int mode, const QString& text, double maxPoints)
{
    const QRectF normal = normalize(box);
    const QRectF measured = measure(p, mode == fit ? sized(font, trialPoints) : font, flags, text);
    if (mode == fit) {
        const double points = limited(fittingPoints(normal, measured), maxPoints);
        if (points > 0.0) {
            p->setFont(sized(font, points));
            drawInsideBox(p, normal, flags, text);
        }
    } else {
        p->drawText(normal, flags, text);
    }
    p->setFont(font);
    return measured;
}

QRectF DrawText::textBox(QStylePainter* p, const QRectF& box, const QFont& font, int flags,
                         int mode, const QString& text)
{
    const QRectF bounds = normalize(box);
    QFont chosen(font);
    if (mode == fit) {
        const double points =
            fittingPoints(bounds, measure(p, sized(font, trialPoints), flags, text));
        if (!(points > 0.0)) {
            return {bounds.topLeft(), QSizeF(0.0, 0.0)};
        }
        chosen = sized(font, points);
    }
    p->setFont(chosen);
    const QRectF place = p->boundingRect(bounds, flags, text);
    p->setFont(font);
    return place;
}

double DrawText::fitSize(QStylePainter* p, const QRectF& box, const QFont& font, int flags,
                         const QString& text)
{
    constexpr double trialSide = 1000.0;
    const QRectF bounds = normalize(box);
    p->setFont(sized(font, trialPoints));
    const QRectF measured =
        p->boundingRect(QRectF(bounds.topLeft(), QSizeF(trialSide, trialSide)), flags, text);
    p->setFont(font);
    double rw = bounds.width() == 0.0 ? 1.0 : measured.width() / bounds.width();
    double rh = bounds.height() == 0.0 ? 1.0 : measured.height() / bounds.height();
    if (rw == 0.0 && rh == 0.0) {
        rw = 1.0;
        rh = 1.0;
    }
    return trialPoints / std::max(rw, rh);
}

void DrawText::drawTexts(QStylePainter* p, const QRectF& box, double dx, double dy,
                         const QFont& font, int flags, int mode, const QStringList& list,
                         double maxPoints)
{
    if (mode == asGiven) {
        const std::optional<QFont> common = commonFont(p, box, font, flags, list);
        for (qsizetype i = 0; common && i < list.size(); ++i) {
            drawText(p, rowBox(box, dx, dy, i), *common, flags, asGiven, list.at(i), maxPoints);
        }
    } else {
        for (qsizetype i = 0; i < list.size(); ++i) {
            drawText(p, rowBox(box, dx, dy, i), font, flags, fit, list.at(i), maxPoints);
        }
    }
    p->setFont(font);
}

void DrawText::drawTextPairs(QStylePainter* p, const QRectF& box, double dx, double dy,
                             const QFont& font, const QStringList& list1, const QStringList& list2,
                             double maxPoints)
{
    QStringList joined;
    for (qsizetype i = 0; i < std::min(list1.size(), list2.size()); ++i) {
        joined.append(list1.at(i) + list2.at(i));
    }
    const std::optional<QFont> common = commonFont(p, box, font, Qt::AlignVCenter, joined);
    for (qsizetype i = 0; common && i < joined.size(); ++i) {
        const QRectF row = rowBox(box, dx, dy, i);
        drawText(p, row, *common, Qt::AlignLeft | Qt::AlignVCenter, asGiven, list1.at(i),
                 maxPoints);
        drawText(p, row, *common, Qt::AlignRight | Qt::AlignVCenter, asGiven, list2.at(i),
                 maxPoints);
    }
    p->setFont(font);
}

std::optional<QFont> DrawText::commonFont(QStylePainter* p, const QRectF& box, const QFont& font,
                                          int flags, const QStringList& list)
{
    double points = startPoints;
    for (const QString& text : list) {
        points = std::min(points, fitSize(p, box, font, flags, text));
    }
    const int whole = display::truncated(points);
    if (whole <= 0) {
        return std::nullopt;
    }
    QFont common(font);
    common.setPointSize(whole);
    return common;
}

void DrawText::addBox(const QRectF& box)
{
    boxes.append(box);
}

bool DrawText::overlaps(const QRectF& box) const
{
    const QRectF normal = normalize(box);
    return std::any_of(boxes.cbegin(), boxes.cend(),
                       [&](const QRectF& used) { return used.intersects(normal); });
}

QRectF DrawText::normalize(const QRectF& box)
{
    return box.normalized();
}

void DrawText::drawButton(QStylePainter* p, bool on, const QString& text, double x, double y,
                          double width, double height)
{
    const QRectF square(x, y - height, height, height);
    p->fillRect(square, on ? buttonOn : buttonOff);
    p->setPen(buttonLine);
    p->setBrush(Qt::NoBrush);
    p->drawRect(square);
    p->setPen(buttonText);
    const QRectF box(x + 1.2 * height, y - 0.95 * height, width - 1.2 * height, 0.9 * height);
    drawText(p, box, p->font(), Qt::AlignVCenter | Qt::AlignLeft, fit, text, -1.0);
}

bool DrawText::inButton(const QMouseEvent* event, double x, double y, double size)
{
    const QPoint at = display::nearestPixel(event->position());
    return at.x() > x && at.x() < x + size && at.y() < y && at.y() > y - size;
}

QRectF DrawText::measure(QStylePainter* p, const QFont& font, int flags, const QString& text)
{
    p->setFont(font);
    return p->boundingRect(QRectF(0.0, 0.0, 5000.0, 5000.0), flags, text);
}
