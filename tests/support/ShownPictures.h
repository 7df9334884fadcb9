// What the windows of a panel really show: copies of their backing stores.
#pragma once

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <QImage>
#include <QList>
#include <QString>
#include <QTest>
#include <QWidget>

namespace tests
{

/// A surface or a colour bar, and what its window shows at its place.
struct ShownPicture {
    QString name;
    const QWidget* widget;
    QImage image;
};

/// Lets everything arrive that was asked for, paints included.
inline void arrive()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
        QTest::qWait(40); // a display server asks for some of them later
    }
}

/// What is painted at the place of @p widget; nothing while it is hidden.
inline QImage shownImage(const QWidget* widget)
{
    const QWidget* window = widget->window();
    if (!widget->isVisible() || !window->backingStore()) {
        return {};
    }
    const auto* store = dynamic_cast<const QImage*>(window->backingStore()->paintDevice());
    if (!store) {
        return {}; // nothing was painted yet
    }
    return store->copy(QRect(widget->mapTo(window, QPoint()), widget->size()));
}

/// The surfaces and bars of the graph window and of both map windows by name,
/// popped out or not, hidden or not.
inline QList<ShownPicture> surfacesOf(const FourPs& panel)
{
    QList<ShownPicture> surfaces;
    for (const DispABase* plot : std::as_const(panel.Disps->disps)) {
        surfaces.append({plot->Title->text(), plot->DispA, {}});
    }
    for (const DispMBase* map : {panel.MapDisp, panel.DMapDisp}) {
        surfaces.append({map->Title->text(), map->DispA, {}});
        surfaces.append({map->Title->text() + QStringLiteral(", bar"), map->CBar, {}});
    }
    return surfaces;
}

/// The same with what they show.
inline QList<ShownPicture> shownPictures(const FourPs& panel)
{
    QList<ShownPicture> pictures = surfacesOf(panel);
    for (ShownPicture& picture : pictures) {
        picture.image = shownImage(picture.widget);
    }
    return pictures;
}

/// The same after all of them were painted again.
inline QList<ShownPicture> repaintedPictures(const FourPs& panel)
{
    const QList<ShownPicture> surfaces = surfacesOf(panel);
    for (const ShownPicture& surface : surfaces) {
        const_cast<QWidget*>(surface.widget)->update();
    }
    arrive();
    return shownPictures(panel);
}

/// The names of those that differ between two lists of the same surfaces.
inline QStringList differences(const QList<ShownPicture>& some, const QList<ShownPicture>& others)
{
    QStringList names;
    for (qsizetype i = 0; i < some.size(); ++i) {
        if (some.at(i).image != others.at(i).image) {
            names.append(some.at(i).name);
        }
    }
    return names;
}

} // namespace tests
