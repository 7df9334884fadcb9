// The lines in the plane of the two references' absorbance.
#pragma once

namespace analysis
{

struct CollectedRows;

/// Three lines in the plane whose x is the mut of the first used reference and
/// whose y that of the second.
struct PlaneLines {
    double k1 = 0.0; ///< y = k1 x: the references differ by their edge jumps alone, k1 = 1 / r
    double k2 = 0.0; ///< y = k2 x: through the V point, k2 = R2V / R1V
    double a = 0.0;  ///< y = a x + b: the least-square line through the other rows
    double b = 0.0;
};

/// The lines that the rows in use determine. What they do not determine is NaN
/// or infinite: no V row or one at R1V = 0, other rows that are fewer than two or
/// agree in x.
PlaneLines planeLines(const CollectedRows& rows);

} // namespace analysis
