// Repaints graphs and maps when an input that they read changes.
#pragma once

namespace panel
{

struct Widgets;

/// Connects inputs to the graphs and maps that read them while painting, so that a change
/// of an input causes a repaint. Wiring makes further such connections.
///
/// These connections start no calculation. The repaint is needed even if no calculation
/// runs after the change or if the calculation is refused. Unnecessary repaints are
/// avoided, since painting a large map takes long.
void connectRepaints(const Widgets& widgets);

} // namespace panel
