// Makes data::Limits and data::emptyLimits available in this namespace.
#pragma once

#include "data/Limits.h"

/// Calculations on spectra and maps, without widgets.
namespace analysis
{

using data::emptyLimits;
using data::Limits;

} // namespace analysis
