// The reference reader of spectra, against which the product's is held.
#pragma once

#include "data/AMutE.h"

#include <QList>

class QIODevice;

namespace tests
{

/// The points of the spectrum on @p device, in either form: a line at a time,
/// simplified, split by an expression, every number through QString::toDouble.
/// Slow, and plain to read; not part of the product.
///
/// @param device  open for reading, in text mode, at its start, not sequential
QList<MutPoint> readPlainSpectrum(QIODevice& device);

} // namespace tests
