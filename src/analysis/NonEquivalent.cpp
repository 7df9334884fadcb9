#include "analysis/NonEquivalent.h"

#include "analysis/ReferenceSet.h"
#include "analysis/RowCollection.h"
#include "data/AMutE.h"

#include <algorithm>

namespace analysis
{

namespace
{

int kindOf(bool subPost)
{
    return subPost ? AMutE::minusPostEdge : AMutE::minusPreEdge;
}

int commonRows(const QList<QList<double>>& refValues, const QList<double>& energies)
{
    qsizetype rows = energies.size();
    for (const QList<double>& values : refValues) {
        rows = std::min(rows, values.size());
    }
    return static_cast<int>(rows);
}

std::vector<double> basisOf(bool victoreen, const QList<QList<double>>& refValues, int references,
                            const QList<double>& energies, int rows)
{
    std::vector<double> basis;
    for (int row = 0; row < rows; ++row) {
        for (int j = 0; j < references; ++j) {
            basis.push_back(refValues.at(j).at(row));
        }
        basis.push_back(1.0);
        const double E = energies.at(row);
        if (victoreen) {
            const double L = AMutE::hcEvAngstrom / E;
            const double L3 = L * L * L;
            basis.push_back(L3);
            basis.push_back(L3 * L);
        } else {
            basis.push_back(E);
        }
    }
    return basis;
}

int referencesOf(const QList<QList<double>>& refValues)
{
    return static_cast<int>(std::min(refValues.size(), qsizetype{neq::references}));
}

} // namespace

NeqInputs neqPrepare(const QList<PointState>& points, const ReferenceSet& references,
                     const QList<const AMutE*>& spectra, bool subPost)
{
    NeqInputs inputs;
    const int count = std::min(references.validCount(), static_cast<int>(spectra.size()));
    inputs.refValues.resize(count);
    for (int i = 0; i < points.size(); ++i) {
        if (!points.at(i).used) {
            continue;
        }
        const double E = points.at(i).energy;
        for (int j = 0; j < count; ++j) {
            inputs.refValues[j].append(spectra.at(j)->valueAt(kindOf(subPost), E));
        }
        inputs.energies.append(E);
        inputs.rowIndices.append(i);
    }
    inputs.jumpSum = references.totalJump();
    inputs.valences = references.usedValences();
    for (int j = 0; j < count; ++j) {
        inputs.weights.append(references.used(j)->edgeJump / inputs.jumpSum);
    }
    if (!inputs.rowIndices.isEmpty()) {
        inputs.baseRow = inputs.rowIndices.first();
    }
    return inputs;
}

QList<double> neqTargetValues(const AMutE& target, const QList<double>& energies, bool subPost)
{
    QList<double> values;
    for (const double E : energies) {
        values.append(target.valueAt(kindOf(subPost), E));
    }
    return values;
}

NeqFit::NeqFit(bool victoreen, const QList<QList<double>>& refValues, const QList<double>& energies,
               const QList<double>& weights)
    : m_references(referencesOf(refValues))
    , m_terms(victoreen ? 3 : 2)
    , m_rows(commonRows(refValues, energies))
    , m_fit(m_references + m_terms, basisOf(victoreen, refValues, m_references, energies, m_rows))
{
    std::copy_n(weights.cbegin(), std::min<qsizetype>(weights.size(), m_references),
                m_weights.begin());
}

void neqSolve(bool victoreen, const QList<double>& T, const QList<QList<double>>& refValues,
              const QList<double>& energies, const QList<double>& weights, double* sum,
              QList<double>& out)
{
    const NeqFit fit(victoreen, refValues, energies.first(std::min(T.size(), energies.size())),
                     weights);
    std::array<double, neq::count> values;
    fit.withSize([&](auto size) {
        const auto targetAt = [&](std::size_t row) __attribute__((always_inline))
        {
            return T.at(static_cast<qsizetype>(row));
        };
        std::array<double, size.unknowns> x;
        fit.begin(size, targetAt, x);
        *sum = fit.finish(size, x, values);
    });
    out = QList<double>(values.cbegin(), values.cend());
}

double neqValence(const QList<double>& out, const QList<double>& valences)
{
    double valence = 0.0;
    const qsizetype count = std::min(valences.size(), qsizetype{neq::references});
    for (qsizetype i = 0; i < count; ++i) {
        valence += out.at(i) * valences.at(i);
    }
    return valence;
}

QList<double> neqTargetResult(bool victoreen, const QList<double>& T, const NeqInputs& inputs)
{
    QList<double> out;
    double sum = 0.0;
    neqSolve(victoreen, T, inputs.refValues, inputs.energies, inputs.weights, &sum, out);
    // Here sum * jumpSum is calculated first. mapNonEquivalent() multiplies share * sum *
    // jumpSum from left to right, so its rounding differs. Both orders are kept on purpose,
    // so that results stay comparable with earlier data.
    const double total = sum * inputs.jumpSum;
    for (int i = 0; i < referencesOf(inputs.refValues); ++i) {
        out[neq::dMut + i] = out.at(i) * total;
    }
    out[neq::valence] = neqValence(out, inputs.valences);
    out[neq::totalDMut] = total;
    return out;
}

} // namespace analysis
