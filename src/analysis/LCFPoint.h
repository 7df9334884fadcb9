// One point of the comparison of fits and target results.
#pragma once

/// One run of the linear combination fit beside the target's result at that
/// time.
struct LCFPoint {
    double fourPsA = 0.0;       ///< TargetV
    double fourPsValence = 0.0; ///< TargetT
    double lcfA = 0.0;          ///< fraction of the first reference by the fit
    double lcfValence = 0.0;    ///< valence of the fit
    int color = 0;              ///< place in the list of colours
};
