// Builds the text of a map file.
#pragma once

#include <QByteArray>

namespace tests
{

/// The text of a map of @p width by @p height pixels. The counts depend on @p seed. The
/// header has an ENERGY line only if @p energy is not empty.
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
