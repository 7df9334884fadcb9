// Buttons and keys that a mouse event may come with.
#pragma once

#include "random/Draw.h"

#include <Qt>

namespace tests
{

/// Any button, often the left one.
inline Qt::MouseButton someButton(Draw& draw)
{
    return draw.onceIn(2) ? Qt::LeftButton
                          : draw.oneOf({Qt::LeftButton, Qt::RightButton, Qt::MiddleButton,
                                        Qt::BackButton, Qt::ForwardButton});
}

/// The left button most of the time, and any otherwise.
inline Qt::MouseButton mostlyLeftButton(Draw& draw)
{
    return draw.onceIn(5) ? someButton(draw) : Qt::LeftButton;
}

/// No key half of the time; otherwise one or two.
inline Qt::KeyboardModifiers someKeys(Draw& draw)
{
    const auto key = [&draw] {
        return draw.oneOf({Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                           Qt::MetaModifier, Qt::KeypadModifier});
    };
    if (draw.onceIn(2)) {
        return {};
    }
    const Qt::KeyboardModifiers first = key();
    return draw.onceIn(3) ? first | key() : first;
}

} // namespace tests
