// Choice of the calculation method from the radio buttons and the number of rows.
#pragma once

#include "analysis/CalculationMessage.h"

#include <optional>

namespace analysis
{

/// The radio buttons that select the calculation method.
struct MethodRadios {
    bool nonEquivalent = false;    ///< "Non Equiv. Meth."
    bool exact = false;            ///< "Exact 4 points"
    bool leastSquare = false;      ///< "Least Square"
    bool linearBackground = false; ///< "Linear"
};

/// A calculation method.
enum class Variant {
    ThreePoints,
    ExactFourPoints,
    LeastSquare,
    NonEquivalentLinear,
    NonEquivalentVictoreen,
};

/// The variant to run, or the reason why no variant accepts the number of rows.
struct Choice {
    std::optional<Variant> variant;
    Message refusal; ///< set only if there is no variant
};

/// Chooses the variant for one target spectrum.
///
/// Four-point family: 3 rows select the three-point form. 4 rows select the exact
/// form if its radio button is on, otherwise the least-squares form. 5 or more rows
/// select the least-squares form if its radio button is on. The non-equivalent method
/// needs at least 4 rows with the linear background and 5 with the Victoreen
/// background. Unlike in chooseForMap(), these two bounds do not depend on the number
/// of references.
///
/// @param selected  number of used rows
/// @return the variant, or a refusal with MessageId::WrongCount if no rule applies
Choice chooseForTarget(const MethodRadios& radios, int selected);

/// Chooses the variant for a stack of maps.
///
/// The four-point family follows the rules of chooseForTarget(). The
/// non-equivalent method needs at least as many rows as the fit has unknowns:
/// @p validReferences plus 2 with the linear background, plus 3 with the
/// Victoreen background.
///
/// @param selected         number of used rows that have a map
/// @param validReferences  number of references that are used and valid
/// @return the variant; if no rule applies, a refusal with MessageId::WrongCount (four-point
///         family) or MessageId::TooFewRows (non-equivalent method)
Choice chooseForMap(const MethodRadios& radios, int selected, int validReferences);

} // namespace analysis
