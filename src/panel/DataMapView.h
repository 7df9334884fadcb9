// Draws the measured map in its window.
#pragma once

class AEPoint;
class QStylePainter;

namespace panel
{

class InputReader;
struct Widgets;

/// Draws the measured map of the selected energy row in its window, sets the limits of
/// its colours, and shows the value at the mouse position.
class DataMapView
{
public:
    /// Both arguments must outlive this object.
    /// @param widgets  must be complete at the first call, with at least one energy row
    /// @param inputs   reads the input fields
    DataMapView(const Widgets& widgets, const InputReader& inputs);

    /// Paints a white background and, if the energy row has a map, the cells of the map. If
    /// the painting surface has no range, the view and the colour limits are first fitted to
    /// the map.
    void draw(QStylePainter* p) const;

    /// Shows the value at the position (@p x, @p y) (pixels of the map), or -1 outside
    /// the map. Does nothing if the energy row has no map.
    void showValueAt(double x, double y) const;

    /// Call this if another map was selected or read: clears the shown value and repaints.
    /// The paint fits the view and the colour limits to the new map.
    void showOtherMap() const;

private:
    const AEPoint& row() const;

    const Widgets& m_widgets;
    const InputReader& m_inputs;
};

} // namespace panel
