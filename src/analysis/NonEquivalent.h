// The non-equivalent method: every reference's share of a target, by one linear
// least-square fit over all energies in use.
#pragma once

#include "analysis/LinearCombination.h"
#include "analysis/NeqPlaces.h"

#include <QList>

#include <array>
#include <cstddef>

class AMutE;

namespace analysis
{

struct PointState;
class ReferenceSet;

/// What the fit knows of the references, made once per calculation.
struct NeqInputs {
    QList<QList<double>> refValues; ///< for each reference, its mut at each row, background off
    QList<double> energies;         ///< of the rows, eV
    QList<double> weights;          ///< for each reference, its edge jump over jumpSum
    QList<double> valences;         ///< of the references
    double jumpSum = 0.0;           ///< sum of the references' edge jumps
    int baseRow = 0;                ///< the first of the rows; 0 without any
    QList<int> rowIndices;          ///< the rows in use, with a map or without
};

/// Gathers the references at all used rows.
///
/// @param spectra  the spectra of the first n used references, n being the
///                 number of used and valid ones; a surplus is left out
/// @param subPost  take the post-edge line off, instead of the pre-edge line
NeqInputs neqPrepare(const QList<PointState>& points, const ReferenceSet& references,
                     const QList<const AMutE*>& spectra, bool subPost);

/// A target spectrum's mut at each of @p energies (eV), less its post-edge line
/// (@p subPost) or its pre-edge line.
QList<double> neqTargetValues(const AMutE& target, const QList<double>& energies, bool subPost);

/// The fit with all that does not depend on the target made beforehand.
///
/// The model is T(E) = sum_j x_j R_j(E) + Mut0 + C1 L^3 + C2 L^4 with
/// L = hc / E (Victoreen), or + C1 E in place of the last two terms (linear);
/// E in eV, L in angstrom. An energy of 0 makes L infinite and all results NaN.
class NeqFit
{
public:
    /// @param refValues  as in NeqInputs; the shortest of its lists and
    ///                   @p energies counts. More than four references are cut,
    ///                   and one without a weight counts with 0.
    NeqFit(bool victoreen, const QList<QList<double>>& refValues, const QList<double>& energies,
           const QList<double>& weights);

    /// The numbers of references and of background terms, known to the compiler.
    template <std::size_t References, std::size_t Terms>
    struct Size {
        static constexpr std::size_t unknowns = References + Terms;
    };

    /// Calls @p solve with the Size of this fit.
    template <class Solve>
    void withSize(Solve solve) const
    {
        m_terms == 3 ? withReferences<3>(solve) : withReferences<2>(solve);
    }

    /// The first half of a solve, for one target or for as many as @p Number has
    /// numbers side by side.
    ///
    /// @param targetAt  called as targetAt(row) for each of rows(), in order
    template <std::size_t References, std::size_t Terms, class Number, class TargetAt>
    [[gnu::always_inline]] inline void begin(Size<References, Terms> /*of this fit*/,
                                             TargetAt targetAt,
                                             std::array<Number, References + Terms>& x) const
    {
        m_fit.substituteForward(targetAt, x);
    }

    /// The second half: the places share and mut0 to c2 of @p out; all other
    /// places become 0.
    /// @return the sum of the coefficients, each times its weight
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
        // Places without a reference too: with a sum of 0 or NaN they show it.
        for (std::size_t i = 0; i < neq::references; ++i) {
            out[i] /= sum;
        }
        for (std::size_t term = 0; term < Terms; ++term) {
            out[neq::mut0 + term] = x[References + term];
        }
        return sum;
    }

    int rows() const { return m_rows; }
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
    int m_terms = 0; ///< of the background
    int m_rows = 0;
    std::array<double, neq::references> m_weights{};
    LinearCombination m_fit;
};

/// The fit of one target by itself: @p out gets neq::count values as from
/// NeqFit::solve() and @p sum its sum. @p T may have fewer values than there
/// are energies; then only the first rows count.
void neqSolve(bool victoreen, const QList<double>& T, const QList<QList<double>>& refValues,
              const QList<double>& energies, const QList<double>& weights, double* sum,
              QList<double>& out);

/// The valence that shares stand for: the sum of share times valence over the
/// references. A reference without a valence counts as 0.
double neqValence(const QList<double>& out, const QList<double>& valences);

/// All values of one target spectrum.
QList<double> neqTargetResult(bool victoreen, const QList<double>& T, const NeqInputs& inputs);

} // namespace analysis
