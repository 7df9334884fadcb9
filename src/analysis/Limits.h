// The range of a scale.
#pragma once

#include "data/Limits.h"

namespace analysis
{

using data::Limits;
using data::noLimits;

} // namespace analysis
