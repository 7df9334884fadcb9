#include "display/LayeredMarks.h"

#include "display/MarkPlaces.h"

#include <QPainter>

#include <algorithm>

namespace display
{

LayeredMarks::LayeredMarks(const MarkStamp& stamp, const MarkPlaces& places,
                           const QList<QColor>& colors)
    : m_stamp(stamp)
    , m_colors(colors)
    , m_places(places.area())
    , m_covered(places.area().adjusted(-MarkStamp::reach, -MarkStamp::reach, MarkStamp::reach,
                                       MarkStamp::reach))
    , m_layers(static_cast<std::size_t>(colors.size()))
{
}

std::optional<MarkStamp> LayeredMarks::stampOf(const QPainter& p, const QList<QColor>& colors)
{
    const auto isOpaque = [](const QColor& color) { return color.alpha() == 255; };
    if (colors.isEmpty() || !std::all_of(colors.cbegin(), colors.cend(), isOpaque)) {
        return std::nullopt;
    }
    return MarkStamp::of(p, QPen(colors.first()));
}

void LayeredMarks::cover(const QPoint& place, qsizetype layer)
{
    std::optional<PixelSet>& shown = m_layers[static_cast<std::size_t>(layer)];
    if (!shown) {
        shown.emplace(m_covered.area());
    }
    QPoint at = place - QPoint(MarkStamp::reach, MarkStamp::reach);
    for (const std::uint64_t row : m_stamp.rows()) {
        if (row != 0) {
            shown->insertRow(at, m_covered.insertRow(at, row));
        }
        ++at.ry();
    }
}

void LayeredMarks::draw(QPainter* p) const
{
    for (std::size_t i = 0; i < m_layers.size(); ++i) {
        if (m_layers[i]) {
            m_layers[i]->fill(p, m_colors.at(static_cast<qsizetype>(i)));
        }
    }
}

} // namespace display
