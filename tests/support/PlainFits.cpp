#include "support/PlainFits.h"

#include "analysis/SmallMatrix.h"

using analysis::SmallMatrix;

namespace tests
{

QList<double> plainCoefficients(int unknowns,
                                const std::function<void(qsizetype row, double* phi)>& basis,
                                const QList<double>& y)
{
    double** a = SmallMatrix::newMatrix(unknowns);
    double** l = SmallMatrix::newMatrix(unknowns);
    double** u = SmallMatrix::newMatrix(unknowns);
    double* phi = SmallMatrix::newVector(unknowns);
    double* right = SmallMatrix::newVector(unknowns);
    double* middle = SmallMatrix::newVector(unknowns);
    double* x = SmallMatrix::newVector(unknowns);
    std::int32_t* perm = SmallMatrix::newIndexVector(unknowns);
    SmallMatrix::clearMatrix(unknowns, a);
    SmallMatrix::clearVector(unknowns, right);
    for (qsizetype row = 0; row < y.size(); ++row) {
        basis(row, phi);
        for (int i = 0; i < unknowns; ++i) {
            for (int k = 0; k < unknowns; ++k) {
                a[i][k] += phi[i] * phi[k];
            }
            right[i] += phi[i] * y.at(row);
        }
    }
    SmallMatrix::luDecompose(unknowns, a, l, u, perm);
    SmallMatrix::forwardSolve(unknowns, l, right, middle, perm);
    SmallMatrix::backSolve(unknowns, u, middle, x, perm);
    QList<double> solution;
    for (int i = 0; i < unknowns; ++i) {
        solution.append(x[perm[i]]);
    }
    SmallMatrix::freeMatrix(unknowns, a);
    SmallMatrix::freeMatrix(unknowns, l);
    SmallMatrix::freeMatrix(unknowns, u);
    SmallMatrix::freeVector(phi);
    SmallMatrix::freeVector(right);
    SmallMatrix::freeVector(middle);
    SmallMatrix::freeVector(x);
    SmallMatrix::freeIndexVector(perm);
    return solution;
}

void plainNeqSolve(bool victoreen, const QList<double>& T, const QList<QList<double>>& refValues,
                   const QList<double>& energies, const QList<double>& weights, double* sum,
                   QList<double>& out)
{
    const int references = static_cast<int>(refValues.size());
    const auto basis = [&](qsizetype e, double* phi) {
        for (int j = 0; j < references; ++j) {
            phi[j] = refValues.at(j).at(e);
        }
        phi[references] = 1.0;
        if (victoreen) {
            const double L = 12398.424360387684 / energies.at(e);
            phi[references + 1] = L * L * L;
            phi[references + 2] = L * L * L * L;
        } else {
            phi[references + 1] = energies.at(e);
        }
    };
    const QList<double> x = plainCoefficients(references + (victoreen ? 3 : 2), basis, T);
    out = QList<double>(13, 0.0);
    *sum = 0.0;
    for (int i = 0; i < 4; ++i) {
        out[i] = i < references ? x.at(i) * weights.at(i) : 0.0;
        *sum += out.at(i);
    }
    for (int i = 0; i < 4; ++i) {
        out[i] /= *sum;
    }
    out[8] = x.at(references);
    out[9] = x.at(references + 1);
    out[10] = victoreen ? x.at(references + 2) : 0.0;
}

analysis::NeqStack neqStackOf(const tests::PlainNeqStack& plain)
{
    analysis::NeqStack stack;
    stack.victoreen = plain.victoreen;
    stack.inputs.refValues = plain.refValues;
    stack.inputs.energies = plain.energies;
    stack.inputs.weights = plain.weights;
    stack.inputs.jumpSum = plain.jumpSum;
    for (const QString& valence : plain.valences) {
        stack.inputs.valences.append(valence.toDouble());
    }
    stack.maps = plain.maps;
    stack.base = plain.maps.first();
    return stack;
}

void plainNonEquivalent(const PlainNeqStack& stack, A2DData& result, PlainNeqHistograms& histograms)
{
    const A2DData& base = *stack.maps.first();
    const int references = static_cast<int>(stack.refValues.size());
    result.clear();
    result.xNum = base.xNum;
    result.yNum = base.yNum;
    result.headerLines = base.headerLines;
    for (int y = 0; y < base.yNum; ++y) {
        for (int x = 0; x < base.xNum; ++x) {
            QList<double> T;
            for (const A2DData* map : stack.maps) {
                T.append(plainPixelMut(*map, x, y));
            }
            QList<double> out;
            double sum = 0.0;
            plainNeqSolve(stack.victoreen, T, stack.refValues, stack.energies, stack.weights, &sum,
                          out);
            for (int i = 0; i < references; ++i) {
                out[4 + i] = out.at(i) * sum * stack.jumpSum;
            }
            double valence = 0.0;
            for (int i = 0; i < references; ++i) {
                valence += out.at(i) * stack.valences.at(i).toDouble();
            }
            out[11] = valence;
            out[12] = sum * stack.jumpSum;
            const qsizetype i = qsizetype{y} * base.xNum + x;
            const bool inside = i < base.rows.size();
            result.rows.append({inside ? base.rows.at(i).x : 0.0, inside ? base.rows.at(i).y : 0.0,
                                out.at(0), out.at(12), out});
            plainCount(histograms.valence, valence);
            plainCount(histograms.total, out.at(12));
            for (int k = 0; k < references; ++k) {
                plainCount(histograms.ratio[k], out.at(k));
                plainCount(histograms.dMut[k], out.at(4 + k));
            }
        }
    }
    result.extended = true;
}

PlainFit plainLinearFit(const AMutE& target, const QList<const AMutE*>& references,
                        const QList<double>& valences, double lowest, double highest)
{
    QList<double> values;
    PlainFit fit;
    for (const MutPoint& point : target.points) {
        const double e = point.energy - target.dE;
        if (!(e >= lowest && e <= highest)) {
            continue;
        }
        values.append((point.mut - target.preValue(e)) /
                      (target.postValue(e) - target.preValue(e)));
        fit.curve.append({point.angle, e, 0.0});
    }
    const int count = static_cast<int>(references.size());
    const auto basis = [&](qsizetype point, double* phi) {
        for (int i = 0; i < count; ++i) {
            phi[i] = references.at(i)->normalisedAt(fit.curve.at(point).energy);
        }
        phi[count] = 1.0;
    };
    const QList<double> sol = plainCoefficients(count + 1, basis, values);
    double sum = 0.0;
    for (int i = 0; i < count; ++i) {
        sum += sol.at(i);
        fit.valence += sol.at(i) * valences.at(i);
    }
    for (int i = 0; i < count; ++i) {
        fit.fractions.append(sol.at(i) / sum);
    }
    fit.base = sol.at(count);
    for (qsizetype point = 0; point < fit.curve.size(); ++point) {
        double mut = sol.at(count);
        for (int i = 0; i < count; ++i) {
            mut += sol.at(i) * references.at(i)->normalisedAt(fit.curve.at(point).energy);
        }
        fit.curve[point].mut = mut;
    }
    return fit;
}

} // namespace tests
