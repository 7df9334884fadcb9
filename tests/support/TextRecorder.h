// A paint device that records the texts drawn on it.
#pragma once

#include <QColor>
#include <QLineF>
#include <QList>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPointF>
#include <QString>

namespace tests
{

/// A drawn text: its size in points, its colour, and the start and length of its baseline
/// in device pixels.
struct DrawnText {
    QString text;
    double points = 0.0;
    QPointF at;
    double width = 0.0;
    QColor color;
};

/// Ignores all drawing except texts, which it records. The device has 1000 by 800 pixels
/// at 96 dpi.
class TextRecorder : public QPaintDevice
{
public:
    QPaintEngine* paintEngine() const override { return &m_engine; }

    const QList<DrawnText>& texts() const { return m_engine.texts; }
    void clear() { m_engine.texts.clear(); }

protected:
    int metric(PaintDeviceMetric which) const override
    {
        switch (which) {
        case PdmWidth:
            return 1000;
        case PdmHeight:
            return 800;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return which == PdmDevicePixelRatioScaled ? static_cast<int>(devicePixelRatioFScale())
                                                      : 0;
        }
    }

private:
    class Engine : public QPaintEngine
    {
    public:
        Engine()
            : QPaintEngine(AllFeatures)
        {
        }
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        Type type() const override { return User; }
        void updateState(const QPaintEngineState&) override {}
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
        void drawPath(const QPainterPath&) override {}
        void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
        void drawTextItem(const QPointF& at, const QTextItem& item) override
        {
            const QTransform& onDevice = painter()->transform();
            const QLineF baseline =
                onDevice.map(QLineF(at, QPointF(at.x() + item.width(), at.y())));
            texts.append({item.text(), item.font().pointSizeF(), baseline.p1(), baseline.length(),
                          painter()->pen().color()});
        }

        QList<DrawnText> texts;
    };

    mutable Engine m_engine;
};

} // namespace tests
