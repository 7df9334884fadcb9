// Data values and pixels of a plot, and the conversions between them.
#pragma once

#include <QObject>

/// Three rectangles: the whole widget, the plot area inside its margins, and
/// the data values at the plot area's edges.
///
/// On a surface y0 is the widget's height and y1 is 0, so that real values grow
/// upward. A span of zero is not guarded against: the conversions then give
/// infinities or NaN.
class ChCoord : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Sets the whole widget, pixels; the plot area becomes the same.
    void setScreen(double x0, double y0, double x1, double y1);

    /// Sets the plot area, pixels.
    void setArea(double x0, double y0, double x1, double y1);

    /// Derives the plot area from the whole widget and the margins, each cut to
    /// whole pixels.
    void computeArea();

    /// Set the data values at the plot area's edges.
    void setReal(double x0, double y0, double x1, double y1);
    void setRealX(double x0, double x1);
    void setRealY(double y0, double y1);

    /// From a data value to pixels.
    double r2sX(double v) const;
    double r2sY(double v) const;

    /// From a distance of data values to pixels, signed: a positive one in y
    /// is negative on a surface.
    double r2sdX(double d) const;
    double r2sdY(double d) const;

    /// From pixels to a data value.
    double s2rX(double p) const;
    double s2rY(double p) const;

    /// The same measured from the first real limit.
    double s2rOffX(double p) const;
    double s2rOffY(double p) const;

    /// From a distance in pixels to one of data values, signed.
    double s2rdX(double d) const;
    double s2rdY(double d) const;

    /// s2rX() held between the two real limits, in whichever order they are.
    double s2rClampX(double p) const;
    double s2rClampY(double p) const;

    /// Whether pixel @p p lies within the edge band of the plot area, or beyond
    /// its edge.
    bool nearAreaEdgeX(double p) const;
    bool nearAreaEdgeY(double p) const;

    /// The same for the whole widget.
    bool nearScrEdgeX(double p) const;
    bool nearScrEdgeY(double p) const;

    /// A distance for ticks in data values: the first of @p base times 1, 2, 5,
    /// 10, 20, ... that takes more than @p minPixels on the x axis; @p base
    /// times 10^8 when none does.
    double tickStep(double base, double minPixels) const;

    /// The same rule for ticks on y. It looks at the scale of x too, so that
    /// both axes of a plot step alike.
    double tickStepY(double base, double minPixels) const;

    /// Height of a row of text in whole pixels, with the sense of y: negative on
    /// a surface.
    int textRow() const;

    /// Width of the left margin in whole pixels, the measure of what is written
    /// beside and on the plot.
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
    double scrEdge = 0.1;      ///< edge band of the whole widget, part of its size
    double areaEdge = 0.1;     ///< edge band of the plot area, part of its size
    double marginLeft = 0.1;   ///< part of the widget's width
    double marginRight = 0.05; ///< part of the widget's width
    double marginTop = 0.05;   ///< part of the widget's height
    double marginBottom = 0.1; ///< part of the widget's height
    int titleDiv = 20;         ///< a row of text is the plot area's height over this
    int tickDiv = 25;          ///< read by nothing
    double textFill = 0.85;    ///< the part of a row that its text fills
    bool drawn = true;         ///< set by each paint; cleared by whoever has nothing to draw
};
