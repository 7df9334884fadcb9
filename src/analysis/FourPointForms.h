// The three forms of the four-points method: from the values of a target and of
// two references at a few energies to the fraction of the first reference and
// the thickness.
//
// None of them guards against a zero divisor: infinities and NaN flow into the
// results, where the user sees them. All of them run once per pixel of a map.
//
// The forms may work on several pixels side by side because each operation is made
// for each pixel in the order of the formula. The sums over the rows that do not
// depend on the target are made beforehand, from the same terms in the same order.
#pragma once

#include "analysis/Lanes.h"

#include <QList>

#include <span>
#include <vector>

namespace analysis
{

/// A target's fraction of the first reference, and its thickness relative to
/// the references.
struct FractionAndThickness {
    double a = 0.0;
    double thickness = 0.0;
};

/// A series (target or reference) at rows 0 and 1 and at the V row; with Lanes as
/// @p Number, four of them side by side.
template <class Number>
struct ThreeOf {
    Number at0{};
    Number at1{};
    Number atV{};
};
using ThreeValues = ThreeOf<double>;

/// Fraction of the first reference by three points:
/// a = (f(T) - f(R2)) / (f(R1) - f(R2)) with f(X) = (X_V - X_0) / (X_1 - X_0).
template <class Number = double>
[[gnu::always_inline]] inline Number
threePointFraction(const ThreeOf<Number>& t, const ThreeValues& r1, const ThreeValues& r2)
{
    const Number ofT = (t.atV - t.at0) / (t.at1 - t.at0);
    const double ofR1 = (r1.atV - r1.at0) / (r1.at1 - r1.at0);
    const double ofR2 = (r2.atV - r2.at0) / (r2.at1 - r2.at0);
    return (ofT - ofR2) / (ofR1 - ofR2);
}

/// Thickness by three points. The divisor mixes both references on purpose
/// (the second reference's row 0 under the first one's row 1): results stay
/// comparable with earlier data.
template <class Number = double>
[[gnu::always_inline]] inline Number
threePointThickness(const ThreeOf<Number>& t, const ThreeValues& r1, const ThreeValues& r2)
{
    return (t.at1 - t.at0) / (0.5 * ((r1.at1 - r2.at0) + (r1.at1 - r1.at0)));
}

/// exactFourPoints() for one target, or for as many as @p Number has numbers side
/// by side.
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
    return exactFourPointsOf(T0, T1, T2, TV, R1_0, R1_1, R1_2, R1V, R2_0, R2_1, R2_2, R2V, E0, E1,
                             E2, EV, r, tts);
}

/// Both references and the energy (eV) at the V row, and the ratio of the
/// references' edge jumps.
struct VPointNumbers {
    double R1V = 0.0;
    double R2V = 0.0;
    double EV = 0.0;
    double r = 0.0;
};

/// The least-square plane S = c0 + c1 E + c2 T over any number of rows, with
/// all sums that do not depend on the target made beforehand.
class LeastSquarePlane
{
public:
    /// @param R1,R2,E  references' mut and energies (eV) of the rows, row order;
    ///                 the shortest of the lists counts
    LeastSquarePlane(const QList<double>& R1, const QList<double>& R2, const QList<double>& E,
                     const VPointNumbers& v);

    /// Fraction and thickness of the first @p count targets of a block, at most
    /// blockPixels; both results are undefined from there on.
    ///
    /// @param T             for each row the block of the targets' mut
    /// @param TV            the targets' mut at the V row
    /// @param instructions  must be available; all give the same bits
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
