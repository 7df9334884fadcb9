// Draws the result map in its window.
#pragma once

#include "analysis/MapQuantity.h"

class A2DData;
class DispMBase;
class MouseC;
class QStylePainter;

namespace panel
{

class InputReader;
struct Widgets;

/// Draws the selected quantity of the result map in its window, sets the limits of its
/// colours, and shows the value at the mouse position.
class ResultMapView
{
public:
    /// All three arguments must outlive this object.
    /// @param widgets  must be complete at the first call
    /// @param inputs   reads the input fields
    /// @param result   the result of the latest map calculation
    ResultMapView(const Widgets& widgets, const InputReader& inputs, const A2DData& result);

    /// Paints a white background and, if the map has pixels, its cells. If the painting
    /// surface has no range, this function first fits the view to the map and sets the colour
    /// limits: to the preset limits of the quantity, or to the range of the values of all
    /// pixels if the quantity has no preset limits.
    void draw(QStylePainter* p) const;

    /// Sets the colour limits to the preset limits of the selected quantity, see
    /// analysis::mapLimits().
    /// @return false if the quantity has no preset limits; the limits are then unchanged
    bool setPresetLimits() const;

    /// Shows the value at the position (@p x, @p y) (pixels of the map), or 0 outside the
    /// map. Does nothing if there is no result.
    void showValueAt(double x, double y) const;

    /// Sets the colour limits after a double click with the left button. The pressed keys of
    /// Shift, Control and Alt select the limits:
    /// - none: the range of the values of all pixels;
    /// - Shift: the range of the values of all pixels, except that no limit is lowered;
    /// - Control: the preset limits, or the range of the values of all pixels if the quantity
    ///   has no preset limits;
    /// - any other combination: the limits are unchanged.
    ///
    /// These limits are kept only until the next paint: the double click has also reset the
    /// range of the surface, so draw() sets the view and the limits again.
    /// @return false if there is no result; the colour limits are then unchanged
    bool handleDoubleClick(const MouseC& mouse) const;

    /// Call this if another quantity was selected: clears the shown value, sets the preset
    /// limits of the new quantity if it has any, and repaints.
    void showOtherQuantity() const;

    /// Clears the shown value and repaints after a map calculation. Keeps the colour limits,
    /// unless the painting surface has no range: then draw() sets them.
    /// @param isSizeNew  whether the size of the map has changed; if so, the view is fitted to
    ///                   the map, otherwise it is kept
    void showNewResult(bool isSizeNew) const;

    /// Clears the shown value and repaints after a map calculation. The next draw() fits the
    /// view to the map and sets the colour limits again.
    void showAndFitNewResult() const;

private:
    bool hasResult() const;
    bool hasPixels() const;
    analysis::MapQuantity quantity() const;
    void scanLimits(bool onlyRaise) const;

    const Widgets& m_widgets;
    const InputReader& m_inputs;
    const A2DData& m_result;
};

} // namespace panel
