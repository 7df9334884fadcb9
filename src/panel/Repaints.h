// Repaints graphs and maps when an input field that they read changes.
#pragma once

namespace panel
{

struct Widgets;

/// Connects each graph and each map to the fields and buttons that it reads while
/// painting, so that any change repaints it.
///
/// These connections start no calculation. The repaint is needed even if no calculation
/// runs after the change or if the calculation is refused. A graph or map is not connected
/// to inputs that it does not read, since painting a large map takes long.
void connectRepaints(const Widgets& widgets);

} // namespace panel
