// Test rows of painter states for drawing marks.
#pragma once

#include "support/PictureTools.h"

#include <QPainter>
#include <QTest>

#include <functional>

namespace tests
{

/// A function that changes the state of a painter. It is called before the pen is set.
using PainterState = std::function<void(QPainter*)>;

/// Adds data rows of a painter state and a device pixel ratio. With @p plain, adds only
/// states in which, apart from clipping, a mark has the same pixels at every position and
/// drawing it twice has the same result as drawing it once. Without @p plain, adds only
/// other states, such as a rotated or an antialiased painter.
inline void addPainterStates(bool plain)
{
    QTest::addColumn<PainterState>("state");
    QTest::addColumn<double>("scale");
    const auto add = [](const char* name, const PainterState& state, double scale = 1.0) {
        QTest::newRow(name) << state << scale;
    };
    if (plain) {
        add("default state", [](QPainter*) {});
        add("moved by whole pixels", [](QPainter* p) { p->translate(13, -7); });
        add("clipped to a rectangle", [](QPainter* p) { p->setClipRect(31, 22, 97, 83); });
        add("clipped to a region", [](QPainter* p) {
            p->setClipRegion(QRegion(20, 20, 90, 90, QRegion::Ellipse).xored({60, 40, 200, 33}));
        });
        return;
    }
    add("moved by part of a pixel", [](QPainter* p) { p->translate(0.5, 0.25); });
    add("scaled", [](QPainter* p) { p->scale(1.5, 0.75); });
    add("mirrored", [](QPainter* p) {
        p->translate(150, 0);
        p->scale(-1, 1);
    });
    add("rotated", [](QPainter* p) { p->rotate(20); });
    add("antialiased", [](QPainter* p) { p->setRenderHint(QPainter::Antialiasing); });
    add("half transparent", [](QPainter* p) { p->setOpacity(0.5); });
    add("with a brush", [](QPainter* p) { p->setBrush(Qt::yellow); });
    add("xor composition mode",
        [](QPainter* p) { p->setCompositionMode(QPainter::CompositionMode_Xor); });
    add(
        "device pixel ratio 2", [](QPainter*) {}, 2.0);
    add(
        "device pixel ratio 1.25", [](QPainter*) {}, 1.25);
}

/// A white picture of @p size logical pixels with the device pixel ratio @p scale.
inline QImage scaledPicture(const QSize& size, double scale,
                            QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size * scale, format);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    return image;
}

} // namespace tests

Q_DECLARE_METATYPE(tests::PainterState)
