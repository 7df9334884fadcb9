#include "data/TDData0.h"

#include <algorithm>

void TDData0::smoothAlongX(TDData0* dest, int n) const
{
    const int lines = std::min(height, dest->height);
    for (int y = 0; y < lines; ++y) {
        smoothRun(dest, {qint64{y} * width, 1, width}, {qint64{y} * dest->width, 1, dest->width},
                  n);
    }
}

void TDData0::smoothAlongY(TDData0* dest, int n) const
{
    const int columns = std::min(width, dest->width);
    for (int x = 0; x < columns; ++x) {
        smoothRun(dest, {x, width, height}, {x, dest->width, dest->height}, n);
    }
}

TDData0* TDData0::smoothed(int nx, int ny) const
{
    auto* result = new TDData0(width, height);
    if (nx < 1 && ny < 1) {
        copyBlockTo(result, QRect(QPoint(0, 0), QPoint(width - 1, height - 1)), false);
        copyMaskItemsTo(result);
    } else if (nx < 1) {
        smoothAlongY(result, ny);
    } else if (ny < 1) {
        smoothAlongX(result, nx);
    } else {
        auto* alongX = new TDData0(width, height);
        smoothAlongX(alongX, nx);
        alongX->smoothAlongY(result, ny);
        alongX->deleteLater();
    }
    return result;
}

// The running sum makes the cost independent of the width of the window.
void TDData0::smoothRun(TDData0* dest, const Run& from, const Run& to, int n) const
{
    if (n < 0) {
        return;
    }
    // A reach of from.length already covers the whole run. Without the limit, a large n
    // would make the loop below long.
    const qint64 reach = std::min(n, from.length);
    const auto source = [&from](qint64 i) { return from.first + i * from.step; };
    double sum = 0.0;
    qint64 count = 0;
    for (qint64 c = -reach; c < from.length; ++c) {
        if (c + reach < from.length && holdsData(source(c + reach))) {
            sum += data.at(source(c + reach));
            ++count;
        }
        if (c >= 0 && c < to.length && count > 0 && holdsData(source(c))) {
            dest->setMean(to.first + c * to.step, sum / static_cast<double>(count));
        }
        if (c - reach >= 0 && holdsData(source(c - reach))) {
            sum -= data.at(source(c - reach));
            --count;
        }
    }
}

void TDData0::setMean(qint64 index, double mean)
{
    if (!hasPixel(index)) {
        return;
    }
    data[index] = mean;
    validFlags[index] = true;
    widenExtremes(mean);
}
