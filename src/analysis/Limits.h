// data::Limits under the name that this namespace uses.
#pragma once

#include "data/Limits.h"

namespace analysis
{

using data::Limits;
using data::noLimits;

} // namespace analysis
