// The window of the result map.
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

/// Draws the chosen quantity of the result map in its window, and keeps the limits of
/// its colours and the read-out of a value.
class ResultMapView
{
public:
    /// @param widgets  complete at the first call
    /// @param result   of the latest map calculation
    /// All three must outlive this.
    ResultMapView(const Widgets& widgets, const InputReader& inputs, const A2DData& result);

    /// A white ground, and the cells of the map unless there is no pixel. While the
    /// surface has no range of its own, the view and the limits are fitted first.
    void draw(QStylePainter* p) const;

    /// Gives the map the limits that its quantity has beforehand, see
    /// analysis::mapLimits(); false, with the limits left alone, where it has none.
    bool setPresetLimits() const;

    /// Shows the value at a place in the view (pixels of the map), 0 outside the map.
    /// Nothing changes while there is no result.
    void showValueAt(double x, double y) const;

    /// Left double click: limits from all pixels; with Shift the same, raising limits
    /// only; with Control those that the quantity has beforehand. They last until the
    /// next paint: the double click has made the surface give up its range, and a paint
    /// without one fits view and limits, see draw().
    /// @return false while there is no result, which a double click does nothing to
    bool takeDoubleClick(const MouseC& mouse) const;

    /// Repaints the map in the limits of the quantity now chosen.
    void showOtherQuantity() const;

    /// Repaints a new result. The limits stay as they are, and so does the view, which
    /// is fitted only where @p isSizeNew.
    void showNewResult(bool isSizeNew) const;

    /// Repaints a new result, with the view and the limits fitted to it.
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
