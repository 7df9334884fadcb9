// All that a calculation reads from the panel.
#pragma once

#include "analysis/CalculationChoice.h"
#include "analysis/ReferenceSet.h"
#include "analysis/RowCollection.h"

#include <QList>

class A2DData;
class AMutE;

namespace analysis
{

/// The panel as it is when a calculation starts, gathered once.
///
/// Spectra and maps stay with their rows; they outlive the calculation, and
/// none of the pointers is null but in a state that was never filled.
struct CalculationState {
    QList<PointState> points;                         ///< the energy-point rows
    QList<const A2DData*> maps;                       ///< one for each of them
    ReferenceSet references{QList<ReferenceState>()}; ///< the reference rows
    QList<const AMutE*> spectra;                      ///< one for each of them
    const AMutE* target = nullptr;                    ///< the target's spectrum
    MethodRadios radios;
    bool subPostForRef = false;    ///< references less their post-edge line, not the pre-edge one
    bool subPostForTarget = false; ///< the same for the target

    /// Spectra of the first n used references, n being the number of used and
    /// valid ones. One of them may have no points where a used reference is not
    /// valid.
    QList<const AMutE*> usedSpectra() const;
};

} // namespace analysis
