// Functions for tests of the two map windows of a panel.
#pragma once

#include "support/PictureTools.h"
#include "support/PlainMapCells.h"
#include "support/SharedPanel.h"

#include <QButtonGroup>
#include <QImage>
#include <QTest>

#include <array>
#include <cmath>

namespace tests
{

inline bool showWindow(QWidget* window)
{
    window->show();
    return QTest::qWaitForWindowExposed(window);
}

/// Moves the surface of a map window into a separate window. The map window must be
/// visible. Returns whether the separate window became visible in time.
inline bool popOut(DispMBase* window)
{
    window->popDock();
    return QTest::qWaitForWindowExposed(window->pop);
}

/// The radio button that chooses a quantity for display. @p quantity is the index of the quantity
/// in a pixel's value list, 0 to 12.
inline QRadioButton* mapRadio(const FourPs& panel, int quantity)
{
    const std::array<QRadioButton*, 13> radios{
        panel.ui.MapRatio1, panel.ui.MapRatio2, panel.ui.MapRatio3, panel.ui.MapRatio4,
        panel.ui.MapDMut1,  panel.ui.MapDMut2,  panel.ui.MapDMut3,  panel.ui.MapDMut4,
        panel.ui.MapMut0,   panel.ui.MapC1,     panel.ui.MapC2,     panel.ui.MapValence,
        panel.ui.MapAmount};
    return radios.at(static_cast<std::size_t>(quantity));
}

/// Makes references 1 and 2 valid, with valences 2 and 3 and edge jumps 2 and 6.
inline void setTwoReferences(FourPs& panel)
{
    makeReferenceValid(panel, 0, 2.0);
    makeReferenceValid(panel, 1, 6.0);
    panel.Refs.RefRows.at(0)->Valence->setText(QStringLiteral("2"));
    panel.Refs.RefRows.at(1)->Valence->setText(QStringLiteral("3"));
}

/// Calls resetData(), chooses the valence map and the measured map of the first energy
/// row for display, switches the grid off, calls setTwoReferences() and puts both
/// references in use.
inline void resetMaps(FourPs& panel)
{
    resetData(panel);
    for (QAbstractButton* first : {static_cast<QAbstractButton*>(panel.ui.MapValence),
                                   static_cast<QAbstractButton*>(panel.EPoints.at(0)->ShowMapB)}) {
        const QSignalBlocker quiet(first->group());
        first->group()->setExclusive(true);
        first->setChecked(true);
    }
    const QSignalBlocker quiet(panel.ui.MapWGrid);
    panel.ui.MapWGrid->setChecked(false);
    setTwoReferences(panel);
    useReferences(panel, {0, 1});
}

/// Stores a result of the non-equivalent method: thirteen values per pixel, row-major.
/// The intensity and I0 fields, in which the four-point family stores a and the
/// thickness, are -77 and -78. The display must not read them.
inline void setResult(FourPs& panel, int width, int height, const QList<QList<double>>& pixels)
{
    panel.BaseData.clear();
    panel.BaseData.extended = true;
    panel.BaseData.xNum = width;
    panel.BaseData.yNum = height;
    for (const QList<double>& values : pixels) {
        panel.BaseData.rows.append({0.0, 0.0, -77.0, -78.0, values});
    }
}

/// Stores a result of the non-equivalent method and chooses one quantity. The chosen
/// quantity has @p values and all others have 1e6, so reading a wrong quantity changes
/// the picture.
inline void setQuantity(FourPs& panel, int quantity, int width, int height,
                        const QList<double>& values)
{
    QList<QList<double>> pixels;
    for (const double value : values) {
        QList<double> all(13, 1e6);
        all[quantity] = value;
        pixels.append(all);
    }
    setResult(panel, width, height, pixels);
    mapRadio(panel, quantity)->setChecked(true);
}

/// One pixel of a result of the four-point family.
struct FractionPixel {
    double a;
    double thickness;
};

inline void setFractions(FourPs& panel, int width, int height, const QList<FractionPixel>& pixels)
{
    panel.BaseData.clear();
    panel.BaseData.extended = false;
    panel.BaseData.xNum = width;
    panel.BaseData.yNum = height;
    for (const FractionPixel& pixel : pixels) {
        panel.BaseData.rows.append({-77.0, -78.0, pixel.a, pixel.thickness, {}});
    }
}

/// Index of the colour of @p value in the table of 768 colours, which covers the range
/// from @p low to @p high. Values outside the range have index 0 or 767. If the calculated
/// index is not finite (NaN, infinity or an empty range), the result is 0.
inline int plainColorIndex(double value, double low, double high)
{
    const double place = 768.0 / (high - low) * (value - low);
    return std::isfinite(place) ? static_cast<int>(std::clamp(place, 0.0, 767.0)) : 0;
}

/// The colour of @p value. The table changes from black through red and yellow to white.
inline QColor plainMapColor(double value, double low, double high)
{
    const int place = plainColorIndex(value, low, high);
    if (place < 256) {
        return {place, 0, 0};
    }
    return place < 512 ? QColor(255, place - 256, 0) : QColor(255, 255, place - 512);
}

/// Paints the surface of a map window and returns the picture.
inline QImage picture(DispMBase* window)
{
    return window->DispA->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The values of a map and the settings of its display.
struct PlainMap {
    int width;
    int height;
    QList<double> values; ///< row-major
    double low;
    double high;
    bool grid = false;
};

/// The expected picture of the surface for @p view. The field @p view.surface is ignored:
/// the picture has the size of the window's surface.
inline QImage plainPicture(const DispMBase* window, const PlainMap& map, PlainMapView view)
{
    view.surface = window->DispA->size();
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    plainFill(&p, view, map.width, map.height, [&map](int x, int y) {
        return plainMapColor(map.values.at(y * map.width + x), map.low, map.high);
    });
    if (map.grid) {
        p.setPen(QColor(200, 200, 200));
        plainOutline(&p, view, map.width, map.height);
    }
    return image;
}

/// The expected picture if the view is exactly the whole map.
inline QImage plainPicture(const DispMBase* window, const PlainMap& map)
{
    return plainPicture(window, map, {{}, 0.0, 0.0, double(map.width), double(map.height)});
}

/// The lower and the upper limit of the colour bar.
inline QList<double> barLimits(const DispMBase* window)
{
    return {window->CBar->zmin, window->CBar->zmax};
}

inline QStringList limitTexts(const DispMBase* window)
{
    return {window->MinV->text(), window->MaxV->text()};
}

/// The map coordinates at the edges of the surface: left, bottom, right, top.
inline QList<double> viewOf(const DispMBase* window)
{
    const ChCoord& cc = window->DispA->cc;
    return {cc.realX0, cc.realY0, cc.realX1, cc.realY1};
}

/// Centre of pixel (@p x, @p y) on a surface that shows the whole map of @p width by
/// @p height pixels.
inline QPointF pixelCentre(const DispMBase* window, int width, int height, int x, int y)
{
    const QSize size = window->DispA->size();
    return {size.width() * (x + 0.5) / width, size.height() * (1.0 - (y + 0.5) / height)};
}

} // namespace tests
