// Numbers of the reference rows that calculations, scales and files share.

#include "panel/FourPs.h"

#include "analysis/ReferenceSet.h"

double FourPs::edgeJumpRatio() const
{
    return references().edgeJumpRatio();
}

double FourPs::valenceMix(double a) const
{
    return references().valenceMix()(a);
}

void FourPs::ValenceRange(double& lo, double& hi, double& span) const
{
    const analysis::Limits range = references().valenceRange();
    lo = range.low;
    hi = range.high;
    span = hi - lo;
}
