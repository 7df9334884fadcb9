// A text map made by hand.
#pragma once

#include <QByteArray>

namespace tests
{

/// A map of counts that differ with @p seed, with an energy where @p energy is not
/// empty.
inline QByteArray mapText(int width, int height, int seed, const QByteArray& energy)
{
    QByteArray text = "# map\n# X-NUM " + QByteArray::number(width) + "\n# Y-NUM " +
                      QByteArray::number(height) + "\n";
    if (!energy.isEmpty()) {
        text += "# ENERGY : " + energy + "\n";
    }
    for (int i = 0; i < width * height; ++i) {
        const int counts = 100 + (i * 37 + seed * 53) % 211;
        text += QByteArray::number(i % width) + ' ' + QByteArray::number(i / width) + ' ' +
                QByteArray::number(counts) + " 400\n";
    }
    return text;
}

} // namespace tests
