#include "data/MaskItem.h"

#include <utility>

MaskItem::MaskItem(Shape shape, QString label)
    : m_shape(std::move(shape))
    , m_label(std::move(label))
{
}

MaskItem::Kind MaskItem::kind() const
{
    return static_cast<Kind>(static_cast<int>(Kind::Points) + static_cast<int>(m_shape.index()));
}
