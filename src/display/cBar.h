// The colour scale beside a map.
#pragma once

#include "display/ChCoord.h"
#include "display/MouseC.h"

#include <QColor>
#include <QFrame>
#include <QList>

/// Owns the colour table, maps values to colours, and is a control: dragging
/// its two lines squeezes or stretches the table along the bar without changing
/// the value limits.
class cBar : public QFrame
{
    Q_OBJECT

public:
    explicit cBar(QWidget* parent = nullptr);
    ~cBar() override;

    /// Builds a colour table of 256 to 768 entries and resets both lines; any
    /// type outside 0 to 11 builds type 0. The value limits stay.
    void setCBarType(int type);

    /// The colour of value @p v. Values beyond the limits take the end colours,
    /// and so does what cannot be placed: equal limits and values that are not
    /// finite give the first colour (the last one when inverted). Valid until
    /// the next table is built.
    const QColor& color(double v) const;

    /// Swaps the value limits if they are reversed, and tells newScale().
    void checkOrder();

    MouseC mouse;         ///< as on a surface
    ChCoord cc;           ///< of the bar's painting: y in places of the table
    QList<QColor*> table; ///< owned
    QColor aboveColor{255, 255, 255};
    QColor belowColor{0, 0, 0};
    QColor lineColor{150, 150, 150};
    int nColors = 0;   ///< length of the table
    int maxIdx = 0;    ///< place in the table of the upper line
    int minIdx = 0;    ///< place in the table of the lower line
    int maxLineY = 0;  ///< pixel row of the upper line at the last paint
    int minLineY = 0;  ///< pixel row of the lower line at the last paint
    double zmax = 1.0; ///< value limits
    double zmin = 0.0;
    double imax = 0.0;     ///< place in the table of the bar's top, and of zmax
    double imin = 0.0;     ///< place in the table of the bar's bottom, and of zmin
    bool autoScale = true; ///< the client recomputes the limits from its data
    bool invert = false;   ///< the table is read backwards
    int dragHandle = 2;    ///< 0 the upper line, 1 the lower one, 2 neither

public Q_SLOTS:
    /// Stores the flag and tells newScale().
    void setAutoScale(bool f);

    /// Set one value limit, swap both if they are now reversed, and tell
    /// newScale().
    void newZmax(double max);
    void newZmin(double min);

    /// The number of colour tables.
    int maxCBarTypes();

    /// Stores the flag; the caller repaints.
    void setInvertCBar(bool f);

Q_SIGNALS:
    /// Values have other colours now.
    void newScale();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int rowOf(double place) const;
    const QColor& entry(int i) const;
    void fillRows(QPainter* p, int top, int bottom, const QColor& color) const;
    void drawTable(QPainter* p) const;
    void drawDragLines(QPainter* p);
    void stretchTo(int y);
};
