#include "display/MarkStamp.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <cmath>

namespace display
{

namespace
{

bool isWhole(double v)
{
    return v == std::floor(v);
}

/// Whether the transformation of @p p is the identity or a shift by whole device pixels.
bool keepsWholePixels(const QPainter& p)
{
    const QTransform device = p.deviceTransform();
    return device.type() <= QTransform::TxTranslate && isWhole(device.dx()) && isWhole(device.dy());
}

} // namespace

bool isRedrawNoOp(const QPainter& p, const QPen& pen)
{
    return !p.testRenderHint(QPainter::Antialiasing) && p.opacity() == 1.0 &&
           p.compositionMode() == QPainter::CompositionMode_SourceOver &&
           p.brush().style() == Qt::NoBrush && pen.brush().isOpaque();
}

std::optional<MarkStamp> MarkStamp::of(const QPainter& p, const QPen& pen)
{
    const QPaintEngine* engine = p.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster || !keepsWholePixels(p) ||
        !isRedrawNoOp(p, pen) || pen.style() != Qt::SolidLine ||
        pen.brush().style() != Qt::SolidPattern || pen.widthF() > 1.0) {
        return std::nullopt;
    }
    constexpr int size = 2 * reach + 1;
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    QPen white(pen);
    white.setColor(Qt::white);
    painter.setPen(white);
    drawMark(&painter, {reach, reach});
    painter.end();
    MarkStamp stamp;
    for (int y = 0; y < size; ++y) {
        std::uint64_t row = 0;
        for (int x = 0; x < size; ++x) {
            row |= std::uint64_t{image.pixel(x, y) == qRgb(255, 255, 255)} << x;
        }
        stamp.m_rows.push_back(row);
    }
    return stamp;
}

} // namespace display
