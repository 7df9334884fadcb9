#include "analysis/CalculationState.h"

namespace analysis
{

QList<const AMutE*> CalculationState::usedSpectra() const
{
    QList<const AMutE*> used;
    for (int k = 0; k < references.validCount(); ++k) {
        used.append(spectra.at(references.usedRow(k)));
    }
    return used;
}

} // namespace analysis
