#include "data/TDData0.h"

#include "data/MaskItem.h"

#include <algorithm>

TDData0::TDData0(int w, int h, QObject* parent)
    : QObject(parent)
{
    setSize(w, h);
}

TDData0::~TDData0()
{
    qDeleteAll(maskItems);
}

void TDData0::setSize(int w, int h)
{
    width = std::max(w, 0);
    height = std::max(h, 0);
    const qsizetype pixels = qsizetype{width} * height;
    data.fill(0.0, pixels);
    validFlags.fill(false, pixels);
    if (pixels > 0) {
        widenExtremes(0.0);
    }
}

void TDData0::copyBlockTo(TDData0* dest, const QRect& r, bool toOrigin) const
{
    const qint64 left = toOrigin ? r.left() : 0;
    const qint64 top = toOrigin ? r.top() : 0;
    const int endX = static_cast<int>(std::min<qint64>(qint64{r.right()} + 1, width));
    const int endY = static_cast<int>(std::min<qint64>(qint64{r.bottom()} + 1, height));
    for (int sy = std::max(r.top(), 0); sy < endY; ++sy) {
        for (int sx = std::max(r.left(), 0); sx < endX; ++sx) {
            const qint64 from = qint64{sy} * width + sx;
            const qint64 x = sx - left;
            const qint64 y = sy - top;
            const qint64 to = y * dest->width + x;
            if (x >= dest->width || y >= dest->height || !hasPixel(from) || !dest->hasPixel(to)) {
                continue;
            }
            const double value = data.at(from);
            dest->validFlags[to] = validFlags.at(from);
            dest->data[to] = value;
            dest->widenExtremes(value);
        }
    }
    dest->dataId = dataId;
    dest->region = regionSet ? region : QRect(QPoint(0, 0), QPoint(width - 1, height - 1));
    dest->regionSet = true;
}

void TDData0::copyMaskItemsTo(TDData0* dest) const
{
    const QList<MaskItem*> items = maskItems; // a copy of the list, because dest can be this map
    for (const MaskItem* item : items) {
        dest->maskItems.append(new MaskItem(*item));
    }
}

QString TDData0::fileSafeId() const
{
    return QString(dataId)
        .replace(u'/', QLatin1String("div"))
        .replace(QLatin1String("__"), QLatin1String("_"));
}

void TDData0::setRegion(QRect rR)
{
    region = rR;
    regionSet = true;
}

void TDData0::regionCleared()
{
    regionSet = false;
}

bool TDData0::hasPixel(qint64 index) const
{
    return index < std::min(data.size(), validFlags.size());
}

bool TDData0::holdsData(qint64 index) const
{
    return hasPixel(index) && validFlags.at(index);
}

void TDData0::widenExtremes(double value)
{
    data::widen(value, minVal, maxVal);
}
