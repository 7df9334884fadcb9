// A spectrum file made by hand.
#pragma once

#include <QByteArray>

namespace tests
{

/// A plain spectrum without background from 8000 to 8850 eV: 0 below the edge,
/// @p jump far above it, and the given values at four energies between. Its
/// steepest rise is the step from 8320 to 8370, so it proposes 8345 eV as its
/// edge.
inline QByteArray spectrumText(const QByteArray& at8381, const QByteArray& at8390,
                               const QByteArray& at8404, const QByteArray& jump)
{
    QByteArray text("# energy mut\n");
    for (int energy = 8000; energy <= 8320; energy += 40) {
        text += QByteArray::number(energy) + " 0\n";
    }
    text += "8370 " + at8381 + "\n8381 " + at8381 + "\n8390 " + at8390 + "\n8404.5 " + at8404;
    for (int energy = 8450; energy <= 8850; energy += 50) {
        text += "\n" + QByteArray::number(energy) + " " + jump;
    }
    return text + "\n";
}

} // namespace tests
