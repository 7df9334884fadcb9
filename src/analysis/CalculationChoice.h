// Which way of calculation the user's choices ask for.
#pragma once

#include "analysis/CalculationMessage.h"

#include <optional>

namespace analysis
{

/// The radio buttons that decide the way of calculation.
struct MethodRadios {
    bool nonEquivalent = false;    ///< "Non Equiv. Meth."
    bool exact = false;            ///< "Exact 4 points"
    bool leastSquare = false;      ///< "Least Square"
    bool linearBackground = false; ///< "Linear"
};

/// A way of calculation.
enum class Variant {
    ThreePoints,
    ExactFourPoints,
    LeastSquare,
    NonEquivalentLinear,
    NonEquivalentVictoreen,
};

/// The variant, or the refusal of a number of rows that none is made for.
struct Choice {
    std::optional<Variant> variant;
    Message refusal; ///< without a variant
};

/// The variant for a single spectrum with @p selected rows in use. The bounds
/// of the non-equivalent method are fixed here, unlike those of chooseForMap().
Choice chooseForTarget(const MethodRadios& radios, int selected);

/// The variant for a stack of maps with @p selected rows in use that hold a
/// map, and @p validReferences used and valid references.
Choice chooseForMap(const MethodRadios& radios, int selected, int validReferences);

} // namespace analysis
