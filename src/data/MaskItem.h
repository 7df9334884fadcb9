// A labelled shape over a two-dimensional map.
#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <variant>

/// A labelled shape over a map, in pixel coordinates of the map. Copies are
/// independent of each other.
class MaskItem
{
public:
    /// The kinds of shape, in the order of the types in Shape; kind() relies on this order.
    enum class Kind { Points = 1, Rectangles = 2, Rectangle = 3 };

    using Points = QList<QPointF>;
    using Rectangles = QList<QRectF>;
    using Shape = std::variant<Points, Rectangles, QRectF>;

    MaskItem(Shape shape, QString label);

    /// The kind of the shape; it follows from the type of shape().
    Kind kind() const;

    /// The shape; its type corresponds to kind().
    const Shape& shape() const { return m_shape; }

    const QString& label() const { return m_label; }

private:
    Shape m_shape;
    QString m_label;
};
