// Which picture is repainted when which field changes.
#pragma once

namespace panel
{

struct Widgets;

/// Connects each picture of graphs and maps to the fields and buttons that it reads.
///
/// A drawing reads them as they are at the paint. It therefore follows them whether or
/// not a calculation runs after a change, or refuses; no calculation starts here. It
/// follows no others, since the picture of a large map takes its time.
void connectRepaints(const Widgets& widgets);

} // namespace panel
