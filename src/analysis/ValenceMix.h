// The valence that a fraction of the first reference stands for.
#pragma once

namespace analysis
{

/// Valence of a mixture of two references.
struct ValenceMix {
    bool enoughReferences = false; ///< two or more used references are valid
    double v1 = 0.0;               ///< valence of the first used reference
    double v2 = 0.0;               ///< valence of the second one

    /// (1 - a) * v2 + v1 * a; 0.0 without enough references.
    double operator()(double a) const { return enoughReferences ? (1 - a) * v2 + v1 * a : 0.0; }
};

} // namespace analysis
