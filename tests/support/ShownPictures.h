// The pictures that the windows of a panel currently show, copied from their backing
// stores.
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

/// A surface or colour bar, and the part of its window's backing store that it covers.
struct ShownPicture {
    QString name;
    const QWidget* widget;
    QImage image;
};

/// Processes all pending events, including paints.
inline void processPendingEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
        QTest::qWait(40); // a display server can send paint events with a delay
    }
}

/// The pixels of the window's backing store in the area of @p widget; a null image if the
/// widget is hidden or not yet painted.
inline QImage shownImage(const QWidget* widget)
{
    const QWidget* window = widget->window();
    if (!widget->isVisible() || !window->backingStore()) {
        return {};
    }
    const auto* store = dynamic_cast<const QImage*>(window->backingStore()->paintDevice());
    if (!store) {
        return {}; // no paint event yet
    }
    return store->copy(QRect(widget->mapTo(window, QPoint()), widget->size()));
}

/// All surfaces and colour bars of the graph window and both map windows, with their
/// names. Hidden and popped-out surfaces are included. The images are null.
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

/// All surfaces, each with the picture that is currently visible.
inline QList<ShownPicture> shownPictures(const FourPs& panel)
{
    QList<ShownPicture> pictures = surfacesOf(panel);
    for (ShownPicture& picture : pictures) {
        picture.image = shownImage(picture.widget);
    }
    return pictures;
}

/// All surfaces, each with its picture after a full repaint.
inline QList<ShownPicture> repaintedPictures(const FourPs& panel)
{
    const QList<ShownPicture> surfaces = surfacesOf(panel);
    for (const ShownPicture& surface : surfaces) {
        const_cast<QWidget*>(surface.widget)->update();
    }
    processPendingEvents();
    return shownPictures(panel);
}

/// The names of the surfaces whose pictures in the two lists differ. Both lists must have
/// the same surfaces in the same order.
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
