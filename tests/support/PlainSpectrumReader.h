// Reference implementation of the spectrum reader.
#pragma once

#include "data/AMutE.h"

#include <QList>

class QIODevice;

namespace tests
{

/// Reads the points of a spectrum file in the plain or the beamline (9809) format. Reads
/// line by line, simplifies each line, splits it at white space and converts the numbers by
/// QString::toDouble() or toInt().
/// This is simple but slow; it is not part of the program.
///
/// @param device  not sequential, open for reading in text mode, positioned at its start
QList<MutPoint> readPlainSpectrum(QIODevice& device);

} // namespace tests
