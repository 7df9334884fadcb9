// The colour tables for maps.
#pragma once

#include <QColor>
#include <QList>

namespace display
{

inline constexpr int colorTableCount = 12;

/// Returns the colours of table @p type, from the lowest value to the highest. A
/// table consists of colour gradients of 256 entries each:
/// - types 0 to 2: three gradients, from black through red, green or blue to white;
/// - types 3 to 8: two gradients through the three primary colours, one type for
///   each order (type 8 is blue, green, red);
/// - types 9 to 11: one gradient between two complementary colours.
///
/// Returns table 0 for any other type.
QList<QColor> colorTable(int type);

} // namespace display
