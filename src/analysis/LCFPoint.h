// One point of the plot "LCF vs 4PS".
#pragma once

/// The result of one linear combination fit, with the result of the target
/// calculation at the time of the fit.
struct LCFPoint {
    double fourPsA = 0.0;       ///< fraction of the first reference by the target calculation
    double fourPsValence = 0.0; ///< valence by the target calculation
    double lcfA = 0.0;          ///< fraction of the first reference by the fit
    double lcfValence = 0.0;    ///< valence of the fit
    int color = 0;              ///< index in the list of colours
};
