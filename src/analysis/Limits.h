// Makes data::Limits and data::noLimits available in this namespace.
#pragma once

#include "data/Limits.h"

namespace analysis
{

using data::Limits;
using data::noLimits;

} // namespace analysis
