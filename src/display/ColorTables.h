// The colour tables of maps.
#pragma once

#include <QColor>
#include <QList>

namespace display
{

/// How many tables there are.
inline constexpr int colorTableCount = 12;

/// The entries of table @p type, from the lowest value to the highest, in ramps
/// of 256: 0 to 2 run from black to white through a hue, 3 to 8 through the
/// three primaries in each order (8 is blue, green, red), 9 to 11 between
/// complementary colours. Any other type gives table 0.
QList<QColor> colorTable(int type);

} // namespace display
