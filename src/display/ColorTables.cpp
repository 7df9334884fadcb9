#include "display/ColorTables.h"

#include <array>

namespace display
{

namespace
{

/// The intensity of a colour channel at step t (0 to 255) of a ramp: 0 (None), t (Rising),
/// 255 - t (Falling) or 255 (Full).
enum class Channel { None, Rising, Falling, Full };
enum class Order { Up, Down };

/// A colour gradient of 256 entries, from step 0 to 255 (Up) or from step 255 to 0 (Down).
struct Ramp {
    Order order;
    Channel red;
    Channel green;
    Channel blue;
};

constexpr int rampSteps = 256;
constexpr int top = rampSteps - 1;

constexpr auto none = Channel::None;
constexpr auto t = Channel::Rising;
constexpr auto c = Channel::Falling;
constexpr auto full = Channel::Full;
constexpr auto up = Order::Up;
constexpr auto down = Order::Down;

int level(Channel channel, int step)
{
    switch (channel) {
    case Channel::Rising:
        return step;
    case Channel::Falling:
        return top - step;
    case Channel::Full:
        return top;
    case Channel::None:
        break;
    }
    return 0;
}

const std::array<QList<Ramp>, colorTableCount>& tables()
{
    static const std::array<QList<Ramp>, colorTableCount> all{{
        {{up, t, none, none}, {up, full, t, none}, {up, full, full, t}},
        {{up, none, t, none}, {up, none, full, t}, {up, t, full, full}},
        {{up, none, none, t}, {up, t, none, full}, {up, full, t, full}},
        {{down, t, c, none}, {down, none, t, c}},
        {{down, t, none, c}, {up, none, t, c}},
        {{up, t, c, none}, {down, t, none, c}},
        {{down, none, t, c}, {up, t, none, c}},
        {{up, t, none, c}, {down, t, c, none}},
        {{up, none, t, c}, {up, t, c, none}},
        {{down, t, c, c}},
        {{up, t, c, t}},
        {{up, t, t, c}},
    }};
    return all;
}

} // namespace

QList<QColor> colorTable(int type)
{
    const int known = type >= 0 && type < colorTableCount ? type : 0;
    QList<QColor> colors;
    for (const Ramp& ramp : tables().at(static_cast<std::size_t>(known))) {
        for (int i = 0; i < rampSteps; ++i) {
            const int step = ramp.order == up ? i : top - i;
            colors.append(
                QColor(level(ramp.red, step), level(ramp.green, step), level(ramp.blue, step)));
        }
    }
    return colors;
}

} // namespace display
