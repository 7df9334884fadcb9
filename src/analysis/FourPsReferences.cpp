// FourPs: quantities derived from the reference rows.

#include "panel/FourPs.h"

#include "analysis/ReferenceSet.h"

double FourPs::edgeJumpRatio() const
{
    return m_inputs.references().edgeJumpRatio();
}

double FourPs::valenceMix(double a) const
{
    return m_inputs.references().valenceMix()(a);
}

void FourPs::ValenceRange(double& lo, double& hi, double& span) const
{
    const analysis::Limits range = m_inputs.references().valenceRange();
    lo = range.low;
    hi = range.high;
    span = hi - lo;
}
