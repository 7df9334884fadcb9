// The non-equivalent method: the share of every reference in a target, by one linear
// least-squares fit over all energies in use.
#pragma once

#include "analysis/LinearCombination.h"
#include "analysis/NeqColumns.h"

#include <QList>

#include <array>
#include <cstddef>

class AMutE;

namespace analysis
{

struct PointState;
class ReferenceSet;

/// The part of the fit's input that does not depend on the target; built once per calculation.
struct NeqInputs {
    QList<QList<double>> refValues; ///< [reference][row]: mut minus pre-edge or post-edge line
    QList<double> energies;         ///< energy of each used row, eV
    QList<double> weights;          ///< per reference: edge jump divided by jumpSum
    QList<double> valences;         ///< valence of each reference
    double jumpSum = 0.0;           ///< sum of the references' edge jumps
    int baseRow = 0;                ///< first element of rowIndices; 0 without used rows
    QList<int> rowIndices;          ///< indices of the used energy-point rows
};

/// Builds the input of the fit for all used energy-point rows, with or without a map.
///
/// If the edge jumps add up to 0, the weights are infinite or NaN. For an energy outside
/// the range of a spectrum, the first or last segment of the spectrum is extrapolated. The
/// values of a spectrum with fewer than two points are 0.0.
///
/// @param points      the energy-point rows
/// @param references  the reference rows
/// @param spectra     spectra of the first n used references, where n is the number of
///                    references that are both used and valid; further spectra are
///                    ignored
/// @param subPost     subtract the post-edge line instead of the pre-edge line
NeqInputs neqPrepare(const QList<PointState>& points, const ReferenceSet& references,
                     const QList<const AMutE*>& spectra, bool subPost);

/// The mut of a target spectrum minus its pre-edge or post-edge line, at each of @p energies
/// (eV).
///
/// @param subPost  subtract the post-edge line instead of the pre-edge line
/// @return one value per energy, linearly interpolated between points; 0.0 for a spectrum
///         with fewer than two points
QList<double> neqTargetValues(const AMutE& target, const QList<double>& energies, bool subPost);

/// The least-squares fit of targets by references and a background.
///
/// The model is T(E) = sum_j x_j R_j(E) + Mut0 + C1 L^3 + C2 L^4 with L = hc / E
/// (Victoreen's formula plus a constant), or T(E) = sum_j x_j R_j(E) + Mut0 + C1 E
/// (linear); E in eV, L in angstrom. T is the value of the target: the result of
/// neqTargetValues() for a spectrum, the absorbance for a pixel. R_j is the value of reference
/// j, from NeqInputs::refValues. The share of reference j is its coefficient x_j times its
/// weight, divided by the sum of these products over all references.
///
/// The part that does not depend on the target is calculated once, in the constructor; see
/// LinearCombination. With the Victoreen background, an energy of 0 makes L infinite and
/// all results NaN. Fewer rows than unknowns raise no error: a zero pivot is handled as in
/// SmallMatrix::luDecompose().
class NeqFit
{
public:
    /// @param victoreen  selects the Victoreen background instead of the linear one
    /// @param refValues  as in NeqInputs; references after the fourth are ignored
    /// @param energies   energies of the rows, eV. A row that is missing from @p energies
    ///                   or from a list of @p refValues is not used.
    /// @param weights    as in NeqInputs; a missing weight counts as 0
    NeqFit(bool victoreen, const QList<QList<double>>& refValues, const QList<double>& energies,
           const QList<double>& weights);

    /// The number of references and the number of background terms, as compile-time constants.
    template <std::size_t References, std::size_t Terms>
    struct Size {
        static constexpr std::size_t unknowns = References + Terms;
    };

    /// Calls @p solve as solve(size), where size is the Size of this fit.
    template <class Solve>
    void withSize(Solve solve) const
    {
        m_terms == 3 ? withReferences<3>(solve) : withReferences<2>(solve);
    }

    /// The first half of a fit: builds the right side of the normal equations and does
    /// the forward substitution. The first argument is the Size of this fit.
    ///
    /// @tparam Number   double for one target, Lanes for four targets side by side
    /// @param targetAt  called as targetAt(row) for each row below rows(), in order; returns
    ///                  the value T of the model
    /// @param[out] x    the intermediate result for finish()
    template <std::size_t References, std::size_t Terms, class Number, class TargetAt>
    [[gnu::always_inline]] inline void begin(Size<References, Terms> /*of this fit*/,
                                             TargetAt targetAt,
                                             std::array<Number, References + Terms>& x) const
    {
        m_fit.substituteForward(targetAt, x);
    }

    /// The second half of a fit: does the back substitution, sets the shares and the
    /// background terms in @p out (indices share and mut0 to c2 of analysis::neq) and
    /// zeroes the other elements of @p out.
    ///
    /// @param[in,out] x  the result of begin(); becomes the coefficients
    /// @return the sum of coefficient times weight over the references. If this sum is 0,
    ///         the shares are infinite or NaN.
    template <std::size_t References, std::size_t Terms, class Number>
    [[gnu::always_inline]] inline Number finish(Size<References, Terms> /*of this fit*/,
                                                std::array<Number, References + Terms>& x,
                                                std::array<Number, neq::count>& out) const
    {
        m_fit.substituteBack(x);
        for (Number& each : out) {
            each = Number{};
        }
        Number sum{};
        for (std::size_t i = 0; i < References; ++i) {
            out[i] = x[i] * m_weights[i];
            sum += out[i];
        }
        // On purpose, the zero shares of missing references are divided, too: they become
        // NaN if the sum is 0 or NaN.
        for (std::size_t i = 0; i < neq::references; ++i) {
            out[i] /= sum;
        }
        for (std::size_t term = 0; term < Terms; ++term) {
            out[neq::mut0 + term] = x[References + term];
        }
        return sum;
    }

    /// Number of rows that the fit uses.
    int rows() const { return m_rows; }

    /// Number of references that the fit uses, at most four.
    int references() const { return m_references; }

private:
    template <std::size_t Terms, class Solve>
    void withReferences(Solve solve) const
    {
        switch (m_references) {
        case 0:
            return solve(Size<0, Terms>());
        case 1:
            return solve(Size<1, Terms>());
        case 2:
            return solve(Size<2, Terms>());
        case 3:
            return solve(Size<3, Terms>());
        default:
            return solve(Size<neq::references, Terms>());
        }
    }

    int m_references = 0;
    int m_terms = 0; ///< number of background terms
    int m_rows = 0;
    std::array<double, neq::references> m_weights{};
    LinearCombination m_fit;
};

/// Fits a single target; see NeqFit for the model and the other parameters.
///
/// @param T         the value T of the model for each row. If there are fewer values than
///                  energies, only the first rows are used.
/// @param[out] sum  the sum of coefficient times weight over the references
/// @param[out] out  neq::count values as from NeqFit::finish()
void neqSolve(bool victoreen, const QList<double>& T, const QList<QList<double>>& refValues,
              const QList<double>& energies, const QList<double>& weights, double* sum,
              QList<double>& out);

/// The mean valence of a mixture: the sum of share times valence over the references.
///
/// @param out       a list of values with at least the shares, see analysis::neq
/// @param valences  valence of each reference; a missing valence counts as 0
double neqValence(const QList<double>& out, const QList<double>& valences);

/// Calculates all neq::count values of one target spectrum; see analysis::neq for their
/// order. The total dMut is NeqInputs::jumpSum times the sum that NeqFit::finish() returns.
/// The dMut of a reference is its share times the total dMut.
///
/// @param victoreen  selects the Victoreen background instead of the linear one
/// @param T          as from neqTargetValues()
QList<double> neqTargetResult(bool victoreen, const QList<double>& T, const NeqInputs& inputs);

} // namespace analysis
