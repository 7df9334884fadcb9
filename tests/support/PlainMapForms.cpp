#include "support/PlainMapForms.h"

#include "analysis/SmallMatrix.h"

#include <cmath>
#include <limits>

namespace tests
{

namespace
{

struct Row {
    const A2DData* map;
    double E, R1, R2;
};

// Splits the energy rows into the V row and the other rows. The last row that is marked as
// a V point becomes the V row; earlier marked rows are ignored. The unmarked rows keep
// their order.
void collect(const PlainStack& stack, QList<Row>& others, Row& v)
{
    for (const PlainPoint& point : stack.points) {
        const Row row{point.map, point.energy.toDouble(), point.r1.toDouble(), point.r2.toDouble()};
        if (point.vPoint) {
            v = row;
        } else {
            others.append(row);
        }
    }
}

double valenceOf(const PlainStack& stack, double a)
{
    int valid = 0;
    for (const PlainReference& reference : stack.references) {
        if (reference.used && reference.valid) {
            ++valid;
        }
    }
    if (valid < 2) {
        return 0.0;
    }
    QList<double> valences;
    for (const PlainReference& reference : stack.references) {
        if (reference.used && valences.size() < 2) {
            valences.append(reference.valence.toDouble());
        }
    }
    return (1 - a) * valences.at(1) + valences.at(0) * a;
}

template <class Form>
void forEachPixel(const PlainStack& stack, const A2DData& base, A2DData& result,
                  PlainHistogram& valence, PlainHistogram& thickness, Form form)
{
    result.clear();
    result.xNum = base.xNum;
    result.yNum = base.yNum;
    for (const QString& line : base.headerLines) {
        result.headerLines.append(line);
    }
    for (int y = 0; y < base.yNum; ++y) {
        for (int x = 0; x < base.xNum; ++x) {
            A2DRow row;
            const qsizetype i = qsizetype{y} * base.xNum + x;
            if (i < base.rows.size()) {
                row.x = base.rows.at(i).x;
                row.y = base.rows.at(i).y;
            }
            form(x, y, row);
            result.rows.append(row);
            plainCount(valence, valenceOf(stack, row.intensity));
            plainCount(thickness, row.i0);
        }
    }
    result.extended = false;
}

} // namespace

void plainCount(PlainHistogram& histogram, double value)
{
    const double quotient = (value - histogram.minV) / histogram.step;
    int b = std::numeric_limits<int>::min();
    if (quotient > -2147483649.0 && quotient < 2147483648.0) {
        b = static_cast<int>(quotient);
    }
    if (b < 0) {
        ++histogram.under;
    } else if (b >= histogram.bins.size()) {
        ++histogram.over;
    } else {
        ++histogram.bins[b];
        if (histogram.bins[b] > histogram.total) {
            histogram.total = histogram.bins[b];
        }
    }
}

analysis::MapStack mapStackOf(const PlainStack& plain)
{
    analysis::MapStack stack;
    stack.r = plain.r;
    stack.mix = {plain.references.at(0).valid && plain.references.at(1).valid,
                 plain.references.at(0).valence.toDouble(),
                 plain.references.at(1).valence.toDouble()};
    for (const PlainPoint& point : plain.points) {
        const analysis::MapPoint numbers{point.map, point.energy.toDouble(), point.r1.toDouble(),
                                         point.r2.toDouble()};
        if (point.vPoint) {
            stack.v = numbers;
        } else {
            stack.others.append(numbers);
        }
    }
    return stack;
}

double plainPixelMut(const A2DData& map, int x, int y)
{
    const qint64 i = qint64{y} * map.xNum + x;
    if (i < 0 || i >= map.rows.size()) {
        return -1.0;
    }
    const double intensity = map.rows.at(i).intensity;
    const double i0 = map.rows.at(i).i0;
    if (i0 == 0.0) {
        return intensity;
    }
    if (intensity == 0.0) {
        return 1.0;
    }
    return std::log(i0 / intensity);
}

double plainLeastSquareFourPoints(double TV, double R1V, double R2V, double EV,
                                  const QList<double>& T, const QList<double>& R1,
                                  const QList<double>& R2, const QList<double>& E, double r,
                                  double* tts)
{
    QList<double> S;
    for (qsizetype i = 0; i < R1.size(); ++i) {
        S.append(R1.at(i) + R2.at(i));
    }
    double n = 0, sE = 0, sT = 0, sEE = 0, sET = 0, sTT = 0, sS = 0, sSE = 0, sST = 0;
    for (qsizetype i = 0; i < T.size(); ++i) {
        n += 1.0;
        sE += E.at(i);
        sT += T.at(i);
        sEE += E.at(i) * E.at(i);
        sET += E.at(i) * T.at(i);
        sTT += T.at(i) * T.at(i);
        sS += S.at(i);
        sSE += S.at(i) * E.at(i);
        sST += S.at(i) * T.at(i);
    }
    analysis::SmallMatrix library;
    double** a = library.newMatrix(3);
    double** l = library.newMatrix(3);
    double** u = library.newMatrix(3);
    double* b = library.newVector(3);
    double* y = library.newVector(3);
    double* x = library.newVector(3);
    int* perm = library.newIndexVector(3);
    const double matrix[3][3] = {{n, sE, sT}, {sE, sEE, sET}, {sT, sET, sTT}};
    const double right[3] = {sS, sSE, sST};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            a[i][j] = matrix[i][j];
        }
        b[i] = right[i];
    }
    library.luDecompose(3, a, l, u, perm);
    library.forwardSolve(3, l, b, y, perm);
    library.backSolve(3, u, y, x, perm);
    const double c0 = x[perm[0]];
    const double c1 = x[perm[1]];
    const double c2 = x[perm[2]];
    library.freeMatrix(3, a);
    library.freeMatrix(3, l);
    library.freeMatrix(3, u);
    library.freeVector(b);
    library.freeVector(y);
    library.freeVector(x);
    library.freeIndexVector(perm);
    const double K = c2;
    const double p = r * K / (r + 1);
    const double q = K / (r + 1);
    *tts = 1 / (K * 0.5);
    const double B = (-c1 / K) * EV + (-c0 / K);
    return ((B - TV) * p * q + R2V * p) / (R2V * p - R1V * q);
}

void plainThreePoints(const PlainStack& stack, A2DData& result, PlainHistogram& valence,
                      PlainHistogram& thickness)
{
    QList<Row> o;
    Row v{};
    collect(stack, o, v);
    forEachPixel(stack, *v.map, result, valence, thickness, [&](int x, int y, A2DRow& row) {
        const double T0 = plainPixelMut(*o.at(0).map, x, y);
        const double T1 = plainPixelMut(*o.at(1).map, x, y);
        const double TV = plainPixelMut(*v.map, x, y);
        const double fT = (TV - T0) / (T1 - T0);
        const double fR1 = (v.R1 - o.at(0).R1) / (o.at(1).R1 - o.at(0).R1);
        const double fR2 = (v.R2 - o.at(0).R2) / (o.at(1).R2 - o.at(0).R2);
        row.intensity = (fT - fR2) / (fR1 - fR2);
        row.i0 = (T1 - T0) / (0.5 * ((o.at(1).R1 - o.at(0).R2) + (o.at(1).R1 - o.at(0).R1)));
    });
}

void plainExactFourPoints(const PlainStack& stack, A2DData& result, PlainHistogram& valence,
                          PlainHistogram& thickness)
{
    QList<Row> o;
    Row v{};
    collect(stack, o, v);
    forEachPixel(stack, *v.map, result, valence, thickness, [&](int x, int y, A2DRow& row) {
        const double T0 = plainPixelMut(*o.at(0).map, x, y);
        const double T1 = plainPixelMut(*o.at(1).map, x, y);
        const double T2 = plainPixelMut(*o.at(2).map, x, y);
        const double TV = plainPixelMut(*v.map, x, y);
        const double E0 = o.at(0).E, E1 = o.at(1).E, E2 = o.at(2).E;
        const double S0 = o.at(0).R2 + o.at(0).R1;
        const double S1 = o.at(1).R2 + o.at(1).R1;
        const double S2 = o.at(2).R2 + o.at(2).R1;
        const double DS = (E1 - E0) * S2 + (E0 - E2) * S1 + (E2 - E1) * S0;
        const double DT = (E1 - E0) * T2 + (E0 - E2) * T1 + (E2 - E1) * T0;
        const double K = DS / DT;
        const double p = stack.r * K / (stack.r + 1);
        const double q = K / (stack.r + 1);
        const double N0 =
            -((E0 * T1 - E1 * T0) * S2 + (E1 * S0 - E0 * S1) * T2 + E2 * T0 * S1 - E2 * S0 * T1);
        const double N1 = T2 * (S0 - S1) + (T1 - T0) * S2 + S1 * T0 - S0 * T1;
        const double B = N0 / DS + (N1 / DS) * v.E;
        row.intensity = ((B - TV) * (p * q) + v.R2 * p) / (v.R2 * p - v.R1 * q);
        row.i0 = 1 / (K * 0.5);
    });
}

void plainLeastSquare(const PlainStack& stack, A2DData& result, PlainHistogram& valence,
                      PlainHistogram& thickness)
{
    QList<Row> o;
    Row v{};
    collect(stack, o, v);
    QList<double> T, R1, R2, E;
    for (const Row& row : std::as_const(o)) {
        R1.append(row.R1);
        R2.append(row.R2);
        E.append(row.E);
    }
    forEachPixel(stack, *v.map, result, valence, thickness, [&](int x, int y, A2DRow& row) {
        T.clear();
        for (const Row& other : std::as_const(o)) {
            T.append(plainPixelMut(*other.map, x, y));
        }
        const double TV = plainPixelMut(*v.map, x, y);
        row.intensity =
            plainLeastSquareFourPoints(TV, v.R1, v.R2, v.E, T, R1, R2, E, stack.r, &row.i0);
    });
}

} // namespace tests
