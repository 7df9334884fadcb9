// The three forms of the four-point method. Each calculates the fraction of the
// first reference and the thickness from the absorbance of a target and of two
// references at a few energies.
//
// Inputs that lead to a division by 0 are accepted. The results can therefore be infinite
// or NaN, and the program shows them as they are.
//
// A map calculation runs a form on four pixels side by side. The operations for each pixel
// and their order are the same as for a single pixel, so the results are bit-identical to
// a loop over single pixels. Sums that do not depend on the target are calculated once, from
// the same terms in the same order.
#pragma once

#include "analysis/Lanes.h"

#include <QList>

#include <span>
#include <vector>

namespace analysis
{

/// The mut of a target or a reference at energy rows 0 and 1 and at the V row. With Lanes as
/// @p Number, each member contains the values of four targets.
template <class Number>
struct ThreeOf {
    Number at0{};
    Number at1{};
    Number atV{};
};
using ThreeValues = ThreeOf<double>;

/// Fraction of the first reference by the three-point form.
///
/// a = (f(T) - f(R2)) / (f(R1) - f(R2)) with f(X) = (X_V - X_0) / (X_1 - X_0). f(X) is the
/// relative height of X at the V row: 0 if X_V equals X_0, and 1 if X_V equals X_1.
/// @return the fraction; not clamped
template <class Number = double>
[[gnu::always_inline]] inline Number
threePointFraction(const ThreeOf<Number>& t, const ThreeValues& r1, const ThreeValues& r2)
{
    const Number fT = (t.atV - t.at0) / (t.at1 - t.at0);
    const double fR1 = (r1.atV - r1.at0) / (r1.at1 - r1.at0);
    const double fR2 = (r2.atV - r2.at0) / (r2.at1 - r2.at0);
    return (fT - fR2) / (fR1 - fR2);
}

/// Thickness by the three-point form:
/// (T_1 - T_0) / (0.5 * ((R1_1 - R2_0) + (R1_1 - R1_0))).
///
/// The first bracket mixes the references on purpose (R1_1 - R2_0, not
/// R2_1 - R2_0), so that results stay comparable with earlier data.
template <class Number = double>
[[gnu::always_inline]] inline Number
threePointThickness(const ThreeOf<Number>& t, const ThreeValues& r1, const ThreeValues& r2)
{
    return (t.at1 - t.at0) / (0.5 * ((r1.at1 - r2.at0) + (r1.at1 - r1.at0)));
}

/// exactFourPoints() for one target (@p Number is double) or for four targets side
/// by side (Lanes).
template <class Number>
[[gnu::always_inline]] inline Number
exactFourPointsOf(const Number& T0, const Number& T1, const Number& T2, const Number& TV,
                  double R1_0, double R1_1, double R1_2, double R1V, double R2_0, double R2_1,
                  double R2_2, double R2V, double E0, double E1, double E2, double EV, double r,
                  Number* tts)
{
    const double S0 = R2_0 + R1_0;
    const double S1 = R2_1 + R1_1;
    const double S2 = R2_2 + R1_2;
    const double DS = (E1 - E0) * S2 + (E0 - E2) * S1 + (E2 - E1) * S0;
    const Number DT = (E1 - E0) * T2 + (E0 - E2) * T1 + (E2 - E1) * T0;
    const Number K = DS / DT;
    *tts = 1.0 / (K * 0.5);
    const Number p = r * K / (r + 1);
    const Number q = K / (r + 1);
    const Number N0 =
        -((E0 * T1 - E1 * T0) * S2 + (E1 * S0 - E0 * S1) * T2 + E2 * T0 * S1 - E2 * S0 * T1);
    const Number N1 = T2 * (S0 - S1) + (T1 - T0) * S2 + S1 * T0 - S0 * T1;
    const Number B = N0 / DS + (N1 / DS) * EV;
    return ((B - TV) * (p * q) + R2V * p) / (R2V * p - R1V * q);
}

/// Fraction of the first reference by the exact form.
///
/// The model of the target is T = (t/2) S + mu0 + k E with S = R1 + R2. Solved for S, it
/// is the plane S = c0 + c1 E + c2 T, with t = 2 / c2, mu0 = -c0 / c2 and k = -c1 / c2.
/// The plane goes through the points of three rows. Cramer's rule yields c2 and the
/// background B = mu0 + k E_V at the V row. The fraction a then solves T_V = B + a R1_V /
/// p + (1 - a) R2_V / q with p = r c2 / (r + 1) and q = c2 / (r + 1).
///
/// @param T0,T1,T2,TV          mut of the target at the three rows and at the V row
/// @param R1_0,R1_1,R1_2,R1V   mut of the first reference at the same rows
/// @param R2_0,R2_1,R2_2,R2V   mut of the second reference at the same rows
/// @param E0,E1,E2,EV          energies of the rows, eV
/// @param r                    edge jump ratio of the first to the second reference
/// @param[out] tts             the relative thickness t = 2 / c2
/// @return the fraction a; not clamped, infinite or NaN where a divisor is 0
inline double exactFourPoints(double T0, double T1, double T2, double TV, double R1_0, double R1_1,
                              double R1_2, double R1V, double R2_0, double R2_1, double R2_2,
                              double R2V, double E0, double E1, double E2, double EV, double r,
                              double* tts)
{
    return exactFourPointsOf(T0, T1, T2, TV, R1_0, R1_1, R1_2, R1V, R2_0, R2_1, R2_2, R2V, E0, E1,
                             E2, EV, r, tts);
}

/// The references and the energy at the V row, and the references' edge jump ratio.
struct VPointNumbers {
    double R1V = 0.0; ///< mut of the first reference
    double R2V = 0.0; ///< mut of the second reference
    double EV = 0.0;  ///< eV
    double r = 0.0;   ///< edge jump ratio of the first to the second reference
};

/// The least-squares form: the model of exactFourPoints(), with the plane
/// S = c0 + c1 E + c2 T fitted to any number of rows.
///
/// The plane is a least-squares fit by the normal equations. Sums that do not depend on
/// the target are calculated once, in the constructor.
class LeastSquarePlane
{
public:
    /// @param R1,R2,E  mut of the references and energies (eV), one value per row;
    ///                 surplus values of longer lists are ignored
    /// @param v        the numbers of the V row
    LeastSquarePlane(const QList<double>& R1, const QList<double>& R2, const QList<double>& E,
                     const VPointNumbers& v);

    /// Calculates fraction and thickness of the targets in a block.
    ///
    /// @param T               mut of the targets, one block per row in row order; surplus
    ///                        blocks are ignored
    /// @param TV              mut of the targets at the V row
    /// @param count           number of targets, at most blockPixels; the elements of
    ///                        the results from index @p count on are undefined
    /// @param[out] a          fraction of the first reference; not clamped
    /// @param[out] thickness  relative thickness 2 / c2
    /// @param instructions    one of availableInstructions(); the results are identical
    ///                        for all
    void solve(std::span<const BlockView> T, const BlockView& TV, int count, Block& a,
               Block& thickness, Instructions instructions = fastestInstructions()) const;

private:
    struct Row {
        double E = 0.0;
        double S = 0.0;
    };

    [[gnu::always_inline]] inline void solveAt(std::span<const BlockView> T, const BlockView& TV,
                                               int at, Block& a, Block& thickness) const;

    std::vector<Row> m_rows;
    VPointNumbers m_v;
    double m_n = 0.0;
    double m_sE = 0.0;
    double m_sEE = 0.0;
    double m_sS = 0.0;
    double m_sSE = 0.0;
};

/// Fraction of the first reference by the least-squares form, for one target; see
/// LeastSquarePlane.
///
/// @param TV,R1V,R2V,EV  mut of target and references, and energy (eV), at the V row
/// @param T,R1,R2,E      mut of target and references, and energies (eV), at the other
///                       rows; surplus values of longer lists are ignored
/// @param r              edge jump ratio of the first to the second reference
/// @param[out] tts       the relative thickness
/// @return the fraction; not clamped. Fewer than three rows, or a singular system,
///         raise no error: a zero pivot is handled as in SmallMatrix::luDecompose(),
///         and the result has no meaning or is infinite or NaN.
double leastSquareFourPoints(double TV, double R1V, double R2V, double EV, const QList<double>& T,
                             const QList<double>& R1, const QList<double>& R2,
                             const QList<double>& E, double r, double* tts);

} // namespace analysis
