// Conversions between the data values and the pixels of a plot.
#pragma once

#include <QObject>

/// The coordinates of a plot: the rectangle of the whole widget (@c scr), the
/// plot area inside its margins (@c area), both in pixels, and the data values at
/// the edges of the plot area (@c real).
///
/// On a painting surface y0 is the height of the widget and y1 is 0, so that data
/// values grow upward. The conversions do not check for a span of zero: they then
/// return infinities or NaN.
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

    /// Set the data values at the plot area's edges.
    void setReal(double x0, double y0, double x1, double y1);
    void setRealX(double x0, double x1);
    void setRealY(double y0, double y1);

    /// Convert a data value to a pixel position.
    double r2sX(double v) const;
    double r2sY(double v) const;

    /// Convert a distance in data values to pixels. The result is signed: on a
    /// painting surface a positive distance in y is negative in pixels.
    double r2sdX(double d) const;
    double r2sdY(double d) const;

    /// Convert a pixel position to a data value.
    double s2rX(double p) const;
    double s2rY(double p) const;

    /// Convert a pixel position to its distance, in data values, from the first
    /// real limit.
    double s2rOffX(double p) const;
    double s2rOffY(double p) const;

    /// Convert a signed distance in pixels to a distance in data values.
    double s2rdX(double d) const;
    double s2rdY(double d) const;

    /// Return s2rX() or s2rY(), clamped to the two real limits, which can be in
    /// either order. NaN is returned as NaN.
    double s2rClampX(double p) const;
    double s2rClampY(double p) const;

    /// Whether pixel @p p is inside the edge band of the plot area or outside the
    /// plot area.
    bool nearAreaEdgeX(double p) const;
    bool nearAreaEdgeY(double p) const;

    /// Whether pixel @p p is inside the edge band of the whole widget or outside
    /// the widget.
    bool nearScrEdgeX(double p) const;
    bool nearScrEdgeY(double p) const;

    /// Chooses the distance between ticks, in data values: the first of @p base
    /// times 1, 2, 5, 10, 20, 50, ... that is wider than @p minPixels on the x axis.
    /// If none of the first 24 is wide enough, returns @p base times 10^8.
    double tickStep(double base, double minPixels) const;

    /// Returns the distance between ticks on the y axis. It is the same as
    /// tickStep(), which uses the scale of x, on purpose: both axes have the same
    /// step.
    double tickStepY(double base, double minPixels) const;

    /// Height of a row of text, truncated to whole pixels. It has the sign of the
    /// y axis: negative on a painting surface.
    int textRow() const;

    /// Width of the left margin, truncated to whole pixels. Labels and legends
    /// derive their width from it.
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
    double scrEdge = 0.1;      ///< edge band, as a fraction of the widget's size
    double areaEdge = 0.1;     ///< edge band, as a fraction of the plot area's size
    double marginLeft = 0.1;   ///< fraction of the widget's width
    double marginRight = 0.05; ///< fraction of the widget's width
    double marginTop = 0.05;   ///< fraction of the widget's height
    double marginBottom = 0.1; ///< fraction of the widget's height
    int titleDiv = 20;         ///< number of text rows in the height of the plot area
    int tickDiv = 25;          ///< not used
    double textFill = 0.85;    ///< fraction of a row's height that its text fills
    bool drawn = true;         ///< each paint sets it; a client with nothing to draw clears it
};
