// The colour bar next to a map.
#pragma once

#include "display/ChCoord.h"
#include "display/MouseC.h"

#include <QColor>
#include <QFrame>
#include <QList>

/// Owns the colour table and maps values to colours. It is also a control: dragging its
/// two horizontal lines compresses or stretches the table along the bar without changing
/// the value limits.
class cBar : public QFrame
{
    Q_OBJECT

public:
    explicit cBar(QWidget* parent = nullptr);
    ~cBar() override;

    /// Builds a colour table of 256 to 768 entries, see display::colorTable(), and
    /// resets both lines. A type outside 0 to 11 builds type 0. The value limits are
    /// unchanged.
    void setCBarType(int type);

    /// Returns the colour of value @p v. The table index is linear in @p v: @c imin for
    /// @c zmin and @c imax for @c zmax. An index outside the table is replaced by the first or
    /// the last index. If @p v is not finite, or if the value limits are equal, the first index
    /// is used. If @c invert is set, the indices count from the end of the table. The
    /// reference is valid until the next table is built.
    const QColor& color(double v) const;

    /// Swaps the value limits if they are reversed, and emits newScale().
    void checkOrder();

    MouseC mouse;
    ChCoord cc;                       ///< coordinates of the bar; y is a table index
    QList<QColor*> table;             ///< owned
    QColor aboveColor{255, 255, 255}; ///< fills the bar above the upper line
    QColor belowColor{0, 0, 0};       ///< fills the bar below the lower line
    QColor lineColor{150, 150, 150};
    int nColors = 0;       ///< length of the table
    int maxIdx = 0;        ///< table index of the upper line
    int minIdx = 0;        ///< table index of the lower line
    int maxLineY = 0;      ///< pixel row of the upper line at the last paint
    int minLineY = 0;      ///< pixel row of the lower line at the last paint
    double zmax = 1.0;     ///< upper value limit
    double zmin = 0.0;     ///< lower value limit
    double imax = 0.0;     ///< table index at the top of the bar, which is the index of zmax
    double imin = 0.0;     ///< table index at the bottom of the bar, which is the index of zmin
    bool autoScale = true; ///< whether the client calculates the limits from its data
    bool invert = false;   ///< whether the table is read in reverse order
    int dragHandle = 2;    ///< the line that a drag moves: 0 upper, 1 lower, 2 none yet

public Q_SLOTS:
    /// Sets @c autoScale and emits newScale().
    void setAutoScale(bool f);

    /// Sets the upper value limit, swaps both limits if they are now reversed, and emits
    /// newScale().
    void newZmax(double max);
    /// Sets the lower value limit, swaps both limits if they are now reversed, and emits
    /// newScale().
    void newZmin(double min);

    /// Returns the number of colour tables.
    int maxCBarTypes();

    /// Sets @c invert. The caller must repaint the bar and the map.
    void setInvertCBar(bool f);

Q_SIGNALS:
    /// Emitted after the value limits or @c autoScale were set, or a line was dragged: the
    /// mapping from values to colours can have changed.
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
