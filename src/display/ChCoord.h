// The coordinates of a plot: data values, pixels and tick distances.
#pragma once

#include <QObject>

/// The coordinates of a plot, and conversions between its data values and pixels.
///
/// @c scrX0 to @c scrY1 are the rectangle of the whole widget, and @c areaX0 to
/// @c areaY1 the plot area inside its margins, both in pixels. @c realX0 to @c realY1
/// are the data values at the edges of the plot area. On a painting surface
/// @c scrY0 is the height of the widget and @c scrY1 is 0, so that data values grow
/// upward.
///
/// The conversions do not check for a division by zero. They return infinities or NaN
/// for an empty data range (data values to pixels) or an empty plot area (pixels to data
/// values).
class ChCoord : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Sets the rectangle of the whole widget (pixels); the plot area becomes the
    /// same rectangle.
    void setScreen(double x0, double y0, double x1, double y1);

    /// Sets the plot area (pixels).
    void setArea(double x0, double y0, double x1, double y1);

    /// Calculates the plot area from the whole widget and the margins. Each margin
    /// is truncated to whole pixels.
    void computeArea();

    /// Sets the data values at all four edges of the plot area.
    void setReal(double x0, double y0, double x1, double y1);
    /// Sets the data values at the left edge (@p x0) and the right edge (@p x1) of the plot
    /// area.
    void setRealX(double x0, double x1);
    /// Sets the data values at the bottom edge (@p y0) and the top edge (@p y1) of the plot
    /// area.
    void setRealY(double y0, double y1);

    /// Converts an x value of the data to a pixel position.
    double r2sX(double v) const;
    /// Converts a y value of the data to a pixel position.
    double r2sY(double v) const;

    /// Converts a signed distance on the x axis from data values to pixels.
    double r2sdX(double d) const;
    /// Converts a signed distance on the y axis from data values to pixels. On a
    /// painting surface this changes the sign.
    double r2sdY(double d) const;

    /// Converts a pixel position to an x value of the data.
    double s2rX(double p) const;
    /// Converts a pixel position to a y value of the data.
    double s2rY(double p) const;

    /// Returns s2rX() minus @c realX0.
    double s2rOffX(double p) const;
    /// Returns s2rY() minus @c realY0.
    double s2rOffY(double p) const;

    /// Converts a signed distance on the x axis from pixels to data values.
    double s2rdX(double d) const;
    /// Converts a signed distance on the y axis from pixels to data values. On a
    /// painting surface this changes the sign.
    double s2rdY(double d) const;

    /// Returns s2rX(), clamped to the range between @c realX0 and @c realX1, which
    /// can be in either order. NaN is returned as NaN.
    double s2rClampX(double p) const;
    /// Returns s2rY(), clamped to the range between @c realY0 and @c realY1, which
    /// can be in either order. NaN is returned as NaN.
    double s2rClampY(double p) const;

    /// Whether x position @p p (pixels) is outside the plot area, or inside it but near
    /// its left or right edge: closer than the fraction @c areaEdge of its width.
    bool nearAreaEdgeX(double p) const;
    /// Whether y position @p p (pixels) is outside the plot area, or inside it but near
    /// its top or bottom edge: closer than the fraction @c areaEdge of its height.
    bool nearAreaEdgeY(double p) const;

    /// Whether x position @p p (pixels) is outside the widget, or inside it but near its
    /// left or right edge: closer than the fraction @c scrEdge of its width.
    bool nearScrEdgeX(double p) const;
    /// Whether y position @p p (pixels) is outside the widget, or inside it but near its
    /// top or bottom edge: closer than the fraction @c scrEdge of its height.
    bool nearScrEdgeY(double p) const;

    /// Returns a distance between ticks, in data values: the first product of @p base
    /// with 1, 2, 5, 10, 20, 50, ... that is wider than @p minPixels on the x axis. If
    /// none of the first 24 products is wide enough, returns @p base times 10^8.
    double tickStep(double base, double minPixels) const;

    /// Returns tickStep() with the same arguments. On purpose the distance between ticks on
    /// the y axis (data values) is also calculated with the scale of the x axis, so it is the
    /// same on both axes.
    double tickStepY(double base, double minPixels) const;

    /// Returns the height of a line of text: the height of the plot area divided by
    /// @c titleDiv, truncated to whole pixels. It is negative on a painting surface,
    /// because y values grow upward while pixels grow downward.
    int textRow() const;

    /// Returns the width of the left margin, truncated to whole pixels. The widths of
    /// labels and legends are proportional to it.
    int labelWidth() const;

    double scrX0 = 0.0;
    double scrX1 = 1.0;
    double scrY0 = 0.0;
    double scrY1 = 1.0;
    double areaX0 = 0.0;
    double areaX1 = 1.0;
    double areaY0 = 0.0;
    double areaY1 = 1.0;
    double realX0 = 0.0;
    double realX1 = 1.0;
    double realY0 = 0.0;
    double realY1 = 1.0;
    double scrEdge = 0.1;      ///< see nearScrEdgeX(), fraction of the widget's size
    double areaEdge = 0.1;     ///< see nearAreaEdgeX(), fraction of the plot area's size
    double marginLeft = 0.1;   ///< fraction of the widget's width
    double marginRight = 0.05; ///< fraction of the widget's width
    double marginTop = 0.05;   ///< fraction of the widget's height
    double marginBottom = 0.1; ///< fraction of the widget's height
    int titleDiv = 20;         ///< number of lines of text in the height of the plot area
    int tickDiv = 25;          ///< not used by the program
    double textFill = 0.85;    ///< height of a text, as a fraction of its line's height
    bool drawn = true;         ///< set before each paint; cleared by a client that has no data
};
