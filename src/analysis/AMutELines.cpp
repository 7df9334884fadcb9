// Calculations on a spectrum, such as background lines, normalisation and interpolation.
#include "analysis/SmallMatrix.h"
#include "data/AMutE.h"
#include "data/Limits.h"

namespace
{

/// Victoreen's formula (J. A. Victoreen, 1943) with an added constant.
double valueOf(const data::VictoreenLine& line, double energyEv)
{
    const double L = AMutE::hcEvAngstrom / energyEv;
    return (line.b * L + line.a) * L * L * L + line.c;
}

/// Linear interpolation between (e0, v0) and (e1, v1); extrapolates outside.
double interpolated(double e0, double v0, double e1, double v1, double E)
{
    return (v1 - v0) / (e1 - e0) * (E - e0) + v0;
}

/// Sums for the normal equations of the least-squares fit of c + a L^3 + b L^4.
struct LineSums {
    double n = 0.0;
    double s3 = 0.0;
    double s4 = 0.0;
    double s6 = 0.0;
    double s7 = 0.0;
    double s8 = 0.0;
    double t0 = 0.0;
    double t3 = 0.0;
    double t4 = 0.0;

    void add(double energyEv, double y)
    {
        const double L = AMutE::hcEvAngstrom / energyEv;
        const double p3 = L * L * L;
        const double p4 = p3 * L;
        n += 1.0;
        s3 += p3;
        s4 += p4;
        s6 += p3 * p3;
        s7 += p3 * p4;
        s8 += p4 * p4;
        t0 += y;
        t3 += y * p3;
        t4 += y * p4;
    }
};

data::VictoreenLine fittedLine(const LineSums& sums)
{
    constexpr int n = 3;
    const double rows[n][n] = {
        {sums.n, sums.s3, sums.s4}, {sums.s3, sums.s6, sums.s7}, {sums.s4, sums.s7, sums.s8}};
    const double right[n] = {sums.t0, sums.t3, sums.t4};
    const double* const a[n] = {rows[0], rows[1], rows[2]};
    double lowerRows[n][n];
    double upperRows[n][n];
    double* const lower[n] = {lowerRows[0], lowerRows[1], lowerRows[2]};
    double* const upper[n] = {upperRows[0], upperRows[1], upperRows[2]};
    double y[n];
    double x[n];
    std::int32_t perm[n];

    analysis::SmallMatrix::luDecompose(n, a, lower, upper, perm);
    analysis::SmallMatrix::forwardSolve(n, lower, right, y, perm);
    analysis::SmallMatrix::backSolve(n, upper, y, x, perm);
    return {x[perm[0]], x[perm[1]], x[perm[2]]};
}

} // namespace

double AMutE::preValue(double E) const
{
    return valueOf(preLine, E);
}

double AMutE::postValue(double E) const
{
    return valueOf(postLine, E);
}

double AMutE::edgeJump() const
{
    return postValue(edgeEnergy) - preValue(edgeEnergy);
}

void AMutE::fitLines()
{
    if (points.isEmpty()) {
        return;
    }
    LineSums pre;
    LineSums post;
    for (qsizetype i = 0; i < points.size(); ++i) {
        const double e = workingEnergy(i);
        const double y = points.at(i).mut;
        // Two separate tests: if the ranges overlap, a point can be used in both fits.
        if (e < preEdgeEnd) {
            pre.add(e, y);
        }
        if (e > postEdgeStart) {
            post.add(e, y);
        }
    }
    preLine = fittedLine(pre);
    postLine = fittedLine(post);
}

double AMutE::findEdge() const
{
    if (points.isEmpty()) {
        return 0.0;
    }
    qsizetype steepest = -1;
    double best = -1.0;
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        const double step = points.at(i + 1).mut - points.at(i).mut;
        if (step > best) {
            best = step;
            steepest = i;
        }
    }
    if (steepest < 0) {
        return 0.5 * workingEnergy(0);
    }
    return 0.5 * (workingEnergy(steepest) + workingEnergy(steepest + 1));
}

double AMutE::mutAt(double E) const
{
    return valueAt(raw, E);
}

double AMutE::value(int kind, int i) const
{
    if (i < 0 || i >= points.size()) {
        return 0.0;
    }
    const double e = workingEnergy(i);
    const double m = points.at(i).mut;
    switch (kind) {
    case raw:
        return m;
    case minusPreEdge:
        return m - preValue(e);
    case minusPostEdge:
        return m - postValue(e);
    case byEdgeJump:
        return (m - preValue(e)) / edgeJump();
    case normalisedByLines:
        return (m - preValue(e)) / (postValue(e) - preValue(e));
    default:
        return 0.0;
    }
}

double AMutE::checkedValue(int kind, int i) const
{
    return i < 0 || i >= points.size() ? 0.0 : value(kind, i);
}

double AMutE::valueAt(int kind, double E) const
{
    if (points.size() < 2) {
        return 0.0;
    }
    return onSegment(kind, indexBelow(E), E);
}

double AMutE::onSegment(int kind, int i, double E) const
{
    return interpolated(workingEnergy(i), value(kind, i), workingEnergy(i + 1), value(kind, i + 1),
                        E);
}

double AMutE::normalisedAt(double E) const
{
    return valueAt(normalisedByLines, E);
}

QList<double> AMutE::normalisedAt(const QList<double>& energies) const
{
    if (points.size() < 2) {
        return QList<double>(energies.size(), 0.0);
    }
    const QList<int> indices = indicesBelow(energies);
    QList<double> values;
    values.reserve(energies.size());
    for (qsizetype k = 0; k < energies.size(); ++k) {
        values.append(onSegment(normalisedByLines, indices.at(k), energies.at(k)));
    }
    return values;
}

void AMutE::valueRange(int kind, double from, double to, double* min, double* max) const
{
    for (qsizetype i = 0; i < points.size(); ++i) {
        const double e = workingEnergy(i);
        if (e >= from && e <= to) {
            data::widen(value(kind, static_cast<int>(i)), *min, *max);
        }
    }
}

bool AMutE::backgroundSubtractedAt(double E, bool subPost, double* out) const
{
    double e0 = 0.0;
    double mut0 = 0.0;
    for (const MutPoint& point : points) {
        const double e1 = point.energy - dE;
        if (e1 >= E) {
            const double background = subPost ? postValue(E) : preValue(E);
            *out = interpolated(e0, mut0, e1, point.mut, E) - background;
            return true;
        }
        e0 = e1;
        mut0 = point.mut;
    }
    return false;
}
