// The window of the measured map.
#pragma once

class AEPoint;
class QStylePainter;

namespace panel
{

class InputReader;
struct Widgets;

/// Draws the measured map of the chosen energy row in its window, and keeps the limits
/// of its colours and the read-out of a value.
class DataMapView
{
public:
    /// @param widgets  complete at the first call, with one energy row or more
    /// Both must outlive this.
    DataMapView(const Widgets& widgets, const InputReader& inputs);

    /// A white ground, and the cells of the map unless the row has none. While the
    /// surface has no range of its own, the view and the limits are fitted first.
    void draw(QStylePainter* p) const;

    /// Shows the value at a place in the view (pixels of the map), -1 outside the map.
    /// Nothing changes while the row has no map.
    void showValueAt(double x, double y) const;

    /// Repaints the map, which is another one, the view and the limits fitted to it.
    void showOtherMap() const;

private:
    const AEPoint& row() const;

    const Widgets& m_widgets;
    const InputReader& m_inputs;
};

} // namespace panel
