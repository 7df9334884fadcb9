// What both calculation paths of the panel ask of its rows.

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

bool FourPs::hasUsableRows(const analysis::CollectedRows& rows, int needed)
{
    if (rows.usable() >= needed) {
        return true;
    }
    if (rows.v.row < 0) {
        return false; // a reference is missing, which its count has told already
    }
    // Several V rows: all but the last belong to neither side.
    sayWrongCount(rows.usable(), needed);
    return false;
}

void FourPs::sayWrongCount(int count, int needed)
{
    message(tr("Number of selected data sets %1 is not %2.").arg(count).arg(needed));
}
