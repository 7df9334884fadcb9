// Random buttons and modifier keys for mouse events.
#pragma once

#include "random/Draw.h"

#include <Qt>

namespace tests
{

/// A random mouse button; the left button is the most frequent.
inline Qt::MouseButton someButton(Draw& draw)
{
    return draw.onceIn(2) ? Qt::LeftButton
                          : draw.oneOf({Qt::LeftButton, Qt::RightButton, Qt::MiddleButton,
                                        Qt::BackButton, Qt::ForwardButton});
}

/// Usually the left button, sometimes another mouse button.
inline Qt::MouseButton mostlyLeftButton(Draw& draw)
{
    return draw.onceIn(5) ? someButton(draw) : Qt::LeftButton;
}

/// No modifier key in half of the cases, otherwise one or two keys.
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
