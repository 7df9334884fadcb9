// Builds the text of a spectrum file.
#pragma once

#include <QByteArray>

namespace tests
{

/// A spectrum in the plain format, from 8000 to 8850 eV, without background. The
/// absorbance is 0 up to 8320 eV and @p jump from 8450 eV. At 8381, 8390 and 8404.5 eV it
/// has the given values; at 8370 eV it has the value of 8381 eV. If the largest rise
/// between neighbouring points is from 8320 to 8370 eV, the proposed edge is their midpoint,
/// 8345 eV.
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
