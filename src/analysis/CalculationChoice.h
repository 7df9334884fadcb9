// Which way of calculation the user's choices ask for.
#pragma once

namespace analysis
{

/// The radio buttons that decide the way of calculation.
struct MethodRadios {
    bool nonEquivalent = false;    ///< "Non Equiv. Meth."
    bool exact = false;            ///< "Exact 4 points"
    bool leastSquare = false;      ///< "Least Square"
    bool linearBackground = false; ///< "Linear"
};

/// A way of calculation, or the reason why there is none.
enum class Variant {
    ThreePoints,
    ExactFourPoints,
    LeastSquare,
    NonEquivalentLinear,
    NonEquivalentVictoreen,
    WrongCount, ///< "... is not ..."
    TooFew,     ///< "... is less than ..."
};

/// The variant, and for the two refusals the number of rows that they name.
struct Choice {
    Variant variant = Variant::WrongCount;
    int needed = 0;
};

/// The variant for a single spectrum with @p selected rows in use. The bounds
/// of the non-equivalent method are fixed here, unlike those of chooseForMap().
Choice chooseForTarget(const MethodRadios& radios, int selected);

/// The variant for a stack of maps with @p selected rows in use that hold a
/// map, and @p validReferences used and valid references.
Choice chooseForMap(const MethodRadios& radios, int selected, int validReferences);

} // namespace analysis
