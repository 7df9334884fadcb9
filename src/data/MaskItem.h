// One shape that goes with a two-dimensional map.
#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <variant>

/// A labelled shape over a map, in the map's pixel coordinates. It owns its
/// shape: a copy is a deep copy.
class MaskItem
{
public:
    enum class Kind { Points = 1, Rectangles = 2, Rectangle = 3 };

    using Points = QList<QPointF>;
    using Rectangles = QList<QRectF>;
    using Shape = std::variant<Points, Rectangles, QRectF>;

    MaskItem(Shape shape, QString label);

    /// Which of the three shapes the item holds.
    Kind kind() const;

    /// The shape; its alternative is the one that kind() names.
    const Shape& shape() const { return m_shape; }

    const QString& label() const { return m_label; }

private:
    Shape m_shape;
    QString m_label;
};
