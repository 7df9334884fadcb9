// Generates large text maps for the benchmarks.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cmath>
#include <random>

namespace bench
{

/// The text of a map of @p width by @p height pixels in a beamline format: a header and
/// one line per pixel, row-major. The four columns are x and y (um) and the counts I and
/// I0. The same arguments always return the same text.
inline QByteArray bigMapText(int width, int height, double energyEv = 8360.0, unsigned seed = 1306)
{
    std::mt19937 random(seed);
    QByteArray text = "# 1306\n";
    text += QByteArray("# ENERGY : ") + QByteArray::number(energyEv, 'f', 2) + "\n";
    text +=
        "# X-NUM " + QByteArray::number(width) + "\n# Y-NUM " + QByteArray::number(height) + "\n";
    text.reserve(text.size() + qsizetype{width} * height * 40);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double i0 = 1e5 + static_cast<double>(random() % 2000u) / 8.0;
            const double mut = 0.5 + 0.25 * std::sin(0.01 * x) * std::cos(0.01 * y) +
                               static_cast<double>(random() % 1000u) * 1e-6;
            text += QByteArray::number(0.65 * x, 'f', 2) + ' ' +
                    QByteArray::number(0.65 * y, 'f', 2) + ' ' +
                    QByteArray::number(i0 * std::exp(-mut), 'f', 4) + ' ' +
                    QByteArray::number(i0, 'f', 4) + '\n';
        }
    }
    return text;
}

/// Writes bigMapText() to the file @p name in @p dir. Returns the path, or an empty
/// string if the file cannot be written.
inline QString writeBigMap(const QTemporaryDir& dir, const QString& name, int width, int height,
                           double energyEv = 8360.0, unsigned seed = 1306)
{
    const QByteArray text = bigMapText(width, height, energyEv, seed);
    QFile file(dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        return {};
    }
    return file.fileName();
}

} // namespace bench
