// The three forms of the four-points method: from the values of a target and of
// two references at a few energies to the fraction of the first reference and
// the thickness.
//
// None of them guards against a zero divisor: infinities and NaN flow into the
// results, where the user sees them. All of them run once per pixel of a map.
#pragma once

#include <QList>

#include <array>

namespace analysis
{

/// A target's fraction of the first reference, and its thickness relative to
/// the references.
struct FractionAndThickness {
    double a = 0.0;
    double thickness = 0.0;
};

/// A series (target or reference) at rows 0 and 1 and at the V row.
struct ThreeValues {
    double at0 = 0.0;
    double at1 = 0.0;
    double atV = 0.0;
};

/// Fraction of the first reference by three points:
/// a = (f(T) - f(R2)) / (f(R1) - f(R2)) with f(X) = (X_V - X_0) / (X_1 - X_0).
inline double threePointFraction(const ThreeValues& t, const ThreeValues& r1, const ThreeValues& r2)
{
    const auto position = [](const ThreeValues& x) { return (x.atV - x.at0) / (x.at1 - x.at0); };
    return (position(t) - position(r2)) / (position(r1) - position(r2));
}

/// Thickness by three points. The divisor mixes both references on purpose
/// (the second reference's row 0 under the first one's row 1): results stay
/// comparable with earlier data.
inline double threePointThickness(const ThreeValues& t, const ThreeValues& r1,
                                  const ThreeValues& r2)
{
    return (t.at1 - t.at0) / (0.5 * ((r1.at1 - r2.at0) + (r1.at1 - r1.at0)));
}

/// Fraction of the first reference by the plane S = c0 + c1 E + c2 T through
/// three rows, with S = R1 + R2, in closed form.
///
/// @param T0,T1,T2,TV      target's mut at the three rows and the V row
/// @param R1_0,...,R1V     first reference's mut there
/// @param R2_0,...,R2V     second reference's mut there
/// @param E0,E1,E2,EV      energies, eV
/// @param r                edge jump of the first over the second reference
/// @param tts              takes the relative thickness 2 / c2
/// @return the fraction; not clamped
inline double exactFourPoints(double T0, double T1, double T2, double TV, double R1_0, double R1_1,
                              double R1_2, double R1V, double R2_0, double R2_1, double R2_2,
                              double R2V, double E0, double E1, double E2, double EV, double r,
                              double* tts)
{
    const double S0 = R2_0 + R1_0;
    const double S1 = R2_1 + R1_1;
    const double S2 = R2_2 + R1_2;
    const double DS = (E1 - E0) * S2 + (E0 - E2) * S1 + (E2 - E1) * S0;
    const double DT = (E1 - E0) * T2 + (E0 - E2) * T1 + (E2 - E1) * T0;
    const double K = DS / DT;
    *tts = 1 / (K * 0.5);
    const double p = r * K / (r + 1);
    const double q = K / (r + 1);
    const double N0 =
        -((E0 * T1 - E1 * T0) * S2 + (E1 * S0 - E0 * S1) * T2 + E2 * T0 * S1 - E2 * S0 * T1);
    const double N1 = T2 * (S0 - S1) + (T1 - T0) * S2 + S1 * T0 - S0 * T1;
    const double B = N0 / DS + (N1 / DS) * EV;
    return ((B - TV) * (p * q) + R2V * p) / (R2V * p - R1V * q);
}

/// The least-square plane S = c0 + c1 E + c2 T over any number of rows, with
/// all sums that do not depend on the target made beforehand.
class LeastSquarePlane
{
public:
    /// @param R1,R2,E  references' mut and energies (eV) of the rows, row order;
    ///                 the shortest of the lists counts
    LeastSquarePlane(const QList<double>& R1, const QList<double>& R2, const QList<double>& E);

    /// Coefficients c0, c1, c2 of the plane for a target.
    /// @param T  the target's mut at each row, in row order
    std::array<double, 3> coefficients(const double* T) const;

private:
    struct Row {
        double E = 0.0;
        double S = 0.0;
    };

    QList<Row> m_rows;
    double m_n = 0.0;
    double m_sE = 0.0;
    double m_sEE = 0.0;
    double m_sS = 0.0;
    double m_sSE = 0.0;
};

/// Both references and the energy (eV) at the V row, and the ratio of the
/// references' edge jumps.
struct VPointNumbers {
    double R1V = 0.0;
    double R2V = 0.0;
    double EV = 0.0;
    double r = 0.0;
};

/// Fraction and thickness from the plane's coefficients and the target's mut
/// @p TV at the V row.
inline FractionAndThickness fractionFromPlane(const std::array<double, 3>& c, double TV,
                                              const VPointNumbers& v)
{
    const double K = c[2];
    const double p = v.r * K / (v.r + 1);
    const double q = K / (v.r + 1);
    const double B = (-c[1] / K) * v.EV + (-c[0] / K);
    return {((B - TV) * p * q + v.R2V * p) / (v.R2V * p - v.R1V * q), 1 / (K * 0.5)};
}

/// Fraction of the first reference by the least-square plane; the same model as
/// exactFourPoints(), over any number of rows.
///
/// @param TV,R1V,R2V,EV  target, references and energy (eV) at the V row
/// @param T,R1,R2,E      the other rows; the shortest list counts
/// @param r              edge jump of the first over the second reference
/// @param tts            takes the relative thickness
/// @return the fraction; not clamped. Too few or singular rows give what the
///         matrix library's zero-pivot rule gives.
double leastSquareFourPoints(double TV, double R1V, double R2V, double EV, const QList<double>& T,
                             const QList<double>& R1, const QList<double>& R2,
                             const QList<double>& E, double r, double* tts);

} // namespace analysis
