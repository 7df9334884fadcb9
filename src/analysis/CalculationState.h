// The state of the panel at the start of a calculation.
#pragma once

#include "analysis/CalculationChoice.h"
#include "analysis/ReferenceSet.h"
#include "analysis/RowCollection.h"

#include <QList>

class A2DData;
class AMutE;

namespace analysis
{

/// A snapshot of the panel, made once when a calculation starts.
///
/// The panel's rows own the spectra and maps, which outlive the calculation. No
/// pointer is null, except target in a default-constructed state.
struct CalculationState {
    QList<PointState> points;                         ///< the energy-point rows
    QList<const A2DData*> maps;                       ///< map of each energy-point row
    ReferenceSet references{QList<ReferenceState>()}; ///< the reference rows
    QList<const AMutE*> spectra;                      ///< spectrum of each reference row
    const AMutE* target = nullptr;                    ///< the target's spectrum
    MethodRadios radios;
    /// Whether to subtract the post-edge line from the references instead of the
    /// pre-edge line.
    bool subPostForRef = false;
    /// Whether to subtract the post-edge line from the target instead of the pre-edge line.
    bool subPostForTarget = false;

    /// Spectra of the first n used references, where n is the number of references
    /// that are both used and valid. They can include the spectrum of an invalid
    /// reference, which can have no points; see ReferenceSet.
    QList<const AMutE*> usedSpectra() const;
};

} // namespace analysis
