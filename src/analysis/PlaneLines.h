// Lines for the plot of the second reference's absorbance against the first's.
#pragma once

namespace analysis
{

struct CollectedRows;

/// Three lines in a plane where x is the mut of the first used reference and y is the mut of
/// the second used reference.
struct PlaneLines {
    double k1 = 0.0; ///< slope 1 / r of y = k1 x, for references that differ only in edge jump
    double k2 = 0.0; ///< slope R2_V / R1_V of y = k2 x, the line through the V point
    double a = 0.0;  ///< slope of y = a x + b, the linear regression through the other rows
    double b = 0.0;  ///< intercept of the regression line
};

/// Calculates the lines from the used rows; the regression line by the normal equations.
///
/// Numbers that the rows do not determine are infinite or NaN: k1 without two references;
/// k2 without a V row or with R1_V = 0; a and b with fewer than two other rows, or if these
/// have the same x.
PlaneLines planeLines(const CollectedRows& rows);

} // namespace analysis
