// Reference implementation of the spectrum reader.
#pragma once

#include "data/AMutE.h"

#include <QList>

class QIODevice;

namespace tests
{

/// Reads the points of a spectrum, in either file format. It reads line by line,
/// simplifies each line, splits it by a regular expression and converts every number by
/// QString::toDouble. Slow but simple; not part of the product.
///
/// @param device  open for reading in text mode, at its start, not sequential
QList<MutPoint> readPlainSpectrum(QIODevice& device);

} // namespace tests
