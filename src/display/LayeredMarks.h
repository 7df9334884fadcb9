// The marks of many points in several colours, later ones over earlier ones.
#pragma once

#include "display/MarkStamp.h"
#include "display/PixelSet.h"

#include <QColor>
#include <QList>

#include <optional>
#include <vector>

class QPainter;

namespace display
{

class MarkPlaces;

/// Draws marks that cover one another, each of their pixels once.
///
/// The picture is the one of display::drawMark() for each point in order, pixel
/// for pixel. It may differ from that because only the newest mark on a pixel
/// shows: the points come newest first, and what is covered already is left out
/// (the reverse painter's algorithm).
class LayeredMarks
{
public:
    /// @param stamp   the pixels of a mark
    /// @param colors  one for each layer
    LayeredMarks(const MarkStamp& stamp, const MarkPlaces& places, const QList<QColor>& colors);

    /// The stamp of marks in these colours; nothing where they have to be drawn
    /// one after the other.
    static std::optional<MarkStamp> stampOf(const QPainter& p, const QList<QColor>& colors);

    /// Adds a mark below all that are there, in the colour of @p layer.
    void addBelow(const QPoint& place, qsizetype layer)
    {
        if (m_places.insert(place)) {
            cover(place, layer);
        }
    }

    /// Draws what shows of each mark.
    void draw(QPainter* p) const;

private:
    void cover(const QPoint& place, qsizetype layer);

    MarkStamp m_stamp;
    QList<QColor> m_colors;
    PixelSet m_places;
    PixelSet m_covered;
    std::vector<std::optional<PixelSet>> m_layers; ///< made when first used
};

} // namespace display
