// Reference implementation of the linear combination fit and of the non-equivalent
// method. For every pixel the method parses the valences, allocates the matrices, fills
// them and solves the linear system. For every point the fit searches each reference from
// its first point. The fast paths must return the same bits.
#pragma once

#include "analysis/NonEquivalentMap.h"
#include "data/A2DData.h"
#include "data/AMutE.h"
#include "support/PlainMapForms.h"

#include <QList>
#include <QString>

#include <functional>

namespace tests
{

/// The coefficients of the basis functions in the least-squares fit of @p y, calculated from
/// the normal equations by LU decomposition. @p basis writes to @p phi the values that all
/// @p unknowns basis functions have at the index @p row of @p y.
QList<double> plainCoefficients(int unknowns,
                                const std::function<void(qsizetype row, double* phi)>& basis,
                                const QList<double>& y);

struct PlainNeqStack {
    bool victoreen = false;
    QList<QList<double>> refValues;
    QList<double> energies;
    QList<double> weights;
    double jumpSum = 0.0;
    QList<QString> valences;
    QList<const A2DData*> maps; ///< the result has the size, coordinates and header of the first
};

struct PlainNeqHistograms {
    PlainHistogram valence;
    PlainHistogram total;
    QList<PlainHistogram> ratio;
    QList<PlainHistogram> dMut;
};

void plainNeqSolve(bool victoreen, const QList<double>& T, const QList<QList<double>>& refValues,
                   const QList<double>& energies, const QList<double>& weights, double* sum,
                   QList<double>& out);

/// Converts the inputs to the struct of the fast path.
analysis::NeqStack neqStackOf(const PlainNeqStack& plain);

void plainNonEquivalent(const PlainNeqStack& stack, A2DData& result,
                        PlainNeqHistograms& histograms);

struct PlainFit {
    QList<double> fractions;
    double valence = 0.0;
    double base = 0.0;
    QList<MutPoint> curve;
};

PlainFit plainLinearFit(const AMutE& target, const QList<const AMutE*>& references,
                        const QList<double>& valences, double lowest, double highest);

} // namespace tests
