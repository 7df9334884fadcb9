// Lines for the plot of the second reference's absorbance against the first reference's
// absorbance.
#pragma once

namespace analysis
{

struct CollectedRows;

/// Three lines in a plane where x is the mut of the first used reference and y is the mut of
/// the second used reference. R1_V and R2_V are these two values at the V row.
struct PlaneLines {
    /// Slope 1 / r of y = k1 x, where r is the edge jump ratio of the first to the second
    /// reference. All rows are on this line if the references differ only in edge jump.
    double k1 = 0.0;
    double k2 = 0.0; ///< slope R2_V / R1_V of y = k2 x, the line through the V point
    double a = 0.0;  ///< slope of y = a x + b, the linear regression without the V row
    double b = 0.0;  ///< intercept of y = a x + b, the linear regression without the V row
};

/// Calculates the lines from the used rows; the regression line by the normal equations.
///
/// Values that the rows do not determine are infinite or NaN: k1 without two references or
/// with r = 0; k2 without a V row or with R1_V = 0; a and b with fewer than two rows besides
/// the V row. If all of these rows have the same x, a and b are also undetermined, but
/// rounding errors can make them finite.
PlaneLines planeLines(const CollectedRows& rows);

} // namespace analysis
