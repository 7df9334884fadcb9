// Converts a fraction of the first reference to a valence.
#pragma once

namespace analysis
{

/// The valence of a mixture of two references, linear in the fraction of the first reference.
struct ValenceMix {
    bool enoughReferences = false; ///< two or more used references are valid
    double v1 = 0.0;               ///< valence of the first used reference
    double v2 = 0.0;               ///< valence of the second used reference

    /// (1 - a) * v2 + v1 * a, where @p a is the fraction of the first reference; not clamped.
    /// 0.0 without enough references.
    double operator()(double a) const { return enoughReferences ? (1 - a) * v2 + v1 * a : 0.0; }
};

} // namespace analysis
