#include "display/CColors.h"

namespace
{

QList<QColor> baseList()
{
    // The fourth and the thirteenth colour are equal on purpose: without the thirteenth, the
    // indices of the colours after it, and so the colours of the graphs, would change.
    const QList<QColor> once{{0, 0, 0},       {255, 0, 0},     {0, 0, 255},     {120, 220, 120},
                             {200, 200, 0},   {240, 0, 240},   {0, 240, 240},   {160, 0, 0},
                             {0, 160, 0},     {0, 0, 160},     {255, 160, 160}, {160, 160, 160},
                             {120, 220, 120}, {160, 160, 255}, {240, 160, 0}};
    return once + once + once;
}

/// Returns one channel of a derived colour: if @p next is lower than @p channel, @p channel
/// minus a third of the difference between them, otherwise @p next.
int between(int channel, int next)
{
    return next < channel ? (next + 2 * channel) / 3 : next;
}

/// Derives a new colour from two neighbours in the list. Bright results are darkened,
/// because plots have a white background.
QColor derived(const QColor& color, const QColor& next)
{
    int red = between(color.red(), next.red());
    int green = between(color.green(), next.green());
    int blue = between(color.blue(), next.blue());
    if (red + green + blue > 500) {
        red = static_cast<int>(red * 0.8);
        green = static_cast<int>(green * 0.6);
        blue = static_cast<int>(blue * 0.8);
    }
    return {red, green, blue};
}

} // namespace

CColors::CColors(int n)
    : CColors(baseList(), n)
{
}

CColors::CColors(const QList<QColor>& list, int n)
    : colors(list)
{
    grow(n);
}

void CColors::grow(int n)
{
    while (colors.size() < n && !colors.isEmpty()) {
        const qsizetype length = colors.size();
        for (qsizetype i = 0; i < length && colors.size() < n; ++i) {
            colors.append(derived(colors.at(i), colors.at((i + 1) % length)));
        }
    }
}
