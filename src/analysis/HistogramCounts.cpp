#include "analysis/HistogramCounts.h"

#include "analysis/NumberText.h"

#include <algorithm>

namespace analysis
{

int HistogramCounts::boxesFrom(double number)
{
    if (!(number >= 1.0)) {
        return 0;
    }
    return number < maxBoxes ? static_cast<int>(number) : maxBoxes;
}

void HistogramCounts::start(double from, double to, int boxCount)
{
    boxes = std::clamp(boxCount, 0, maxBoxes);
    step = (to - from) / (boxes - 1);
    minV = from - step * 0.5;
    maxV = to + step * 0.5;
    bins.fill(0, boxes);
    under = 0;
    over = 0;
    total = 0;
}

QByteArray HistogramCounts::fileText() const
{
    QByteArray text;
    const auto appendLine = [&](int i, int count) {
        appendGeneral(text, step * i + minV, 0);
        text += ' ';
        appendGeneral(text, step * (i + 0.5) + minV, 0);
        text += ' ';
        appendGeneral(text, step * (i + 1) + minV, 0);
        text += "  ";
        text += QByteArray::number(count);
        text += '\n';
    };
    appendLine(-1, under);
    for (int i = 0; i < boxes; ++i) {
        appendLine(i, bins.at(i));
    }
    appendLine(boxes, over);
    return text;
}

} // namespace analysis
