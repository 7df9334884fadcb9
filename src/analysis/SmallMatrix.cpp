#include "analysis/SmallMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

namespace analysis
{

namespace
{

using Index = std::int32_t;

constexpr double belowAllSizes = -1e300;

template <class T>
T* newArray(Index n)
{
    return n < 1 ? nullptr : new T[static_cast<std::size_t>(n)];
}

/// The place in perm, from @p column on, of the row with the largest absolute
/// value in @p column; @p column itself when all are NaN.
Index pivotPlace(Index n, const double* const* work, const Index* perm, Index column)
{
    Index place = column;
    double best = belowAllSizes;
    for (Index k = column; k < n; ++k) {
        const double size = std::fabs(work[perm[k]][column]);
        if (size > best) {
            best = size;
            place = k;
        }
    }
    return place;
}

/// Subtracts the pivot row of @p column from the rows below it and leaves the
/// multipliers in that column.
void eliminateColumn(Index n, double* const* work, const Index* perm, Index column)
{
    const double* pivotRow = work[perm[column]];
    const double pivot = pivotRow[column];
    const double divisor = pivot == 0.0 ? 1.0 : pivot;
    for (Index k = column + 1; k < n; ++k) {
        double* row = work[perm[k]];
        row[column] = row[column] / divisor;
        for (Index j = column + 1; j < n; ++j) {
            row[j] -= pivotRow[j] * row[column];
        }
    }
}

/// Moves the upper triangle of the factorised @p work to @p u and puts a unit
/// diagonal in its place.
void splitFactors(Index n, double* const* work, double* const* u, const Index* perm)
{
    for (Index i = 0; i < n; ++i) {
        double* row = work[perm[i]];
        double* upper = u[perm[i]];
        for (Index j = 0; j < n; ++j) {
            if (i <= j) {
                upper[j] = row[j];
                row[j] = i == j ? 1.0 : 0.0;
            } else {
                upper[j] = 0.0;
            }
        }
    }
}

/// The free row with the largest absolute value on the diagonal, the first
/// free one when all of these are NaN.
Index freeDiagonalPivot(Index n, const double* const* a, const std::vector<bool>& used)
{
    Index chosen = -1;
    Index firstFree = -1;
    double best = belowAllSizes;
    for (Index i = 0; i < n; ++i) {
        if (used[static_cast<std::size_t>(i)]) {
            continue;
        }
        if (firstFree < 0) {
            firstFree = i;
        }
        const double size = std::fabs(a[i][i]);
        if (size > best) {
            best = size;
            chosen = i;
        }
    }
    return chosen < 0 ? firstFree : chosen;
}

void divideRow(Index n, double* row, double divisor)
{
    for (Index j = 0; j < n; ++j) {
        row[j] /= divisor;
    }
}

void subtractRow(Index n, double* row, double factor, const double* other)
{
    for (Index j = 0; j < n; ++j) {
        row[j] -= factor * other[j];
    }
}

void printHeader(const char* name)
{
    std::printf("# %s = \n# ", name);
}

void printElements(Index n, const double* v)
{
    for (Index j = 0; j < n; ++j) {
        std::printf("%g ", v[j]);
    }
    std::printf("\n# ");
}

} // namespace

double** SmallMatrix::newMatrix(Index n)
{
    double** m = newArray<double*>(n);
    for (Index i = 0; i < n; ++i) {
        m[i] = newArray<double>(n);
    }
    return m;
}

double* SmallMatrix::newVector(Index n)
{
    return newArray<double>(n);
}

Index* SmallMatrix::newIndexVector(Index n)
{
    return newArray<Index>(n);
}

void SmallMatrix::freeMatrix(Index n, double** m)
{
    if (n < 1 || !m) {
        return;
    }
    for (Index i = 0; i < n; ++i) {
        delete[] m[i];
    }
    delete[] m;
}

void SmallMatrix::freeVector(double* v)
{
    delete[] v;
}

void SmallMatrix::freeIndexVector(Index* p)
{
    delete[] p;
}

void SmallMatrix::clearMatrix(Index n, double* const* m)
{
    for (Index i = 0; i < n; ++i) {
        clearVector(n, m[i]);
    }
}

void SmallMatrix::clearVector(Index n, double* v)
{
    for (Index i = 0; i < n; ++i) {
        v[i] = 0.0;
    }
}

void SmallMatrix::clearIndexVector(Index n, Index* p)
{
    for (Index i = 0; i < n; ++i) {
        p[i] = 0;
    }
}

void SmallMatrix::setIdentity(Index n, double* const* m)
{
    clearMatrix(n, m);
    for (Index i = 0; i < n; ++i) {
        m[i][i] = 1.0;
    }
}

void SmallMatrix::copyMatrix(Index n, const double* const* from, double* const* to)
{
    for (Index i = 0; i < n; ++i) {
        copyVector(n, from[i], to[i]);
    }
}

void SmallMatrix::copyVector(Index n, const double* from, double* to)
{
    for (Index i = 0; i < n; ++i) {
        to[i] = from[i];
    }
}

void SmallMatrix::multiplyMatrices(Index n, const double* const* a, const double* const* b,
                                   double* const* c)
{
    for (Index i = 0; i < n; ++i) {
        double sum = 0.0;
        for (Index k = 0; k < n; ++k) {
            sum += b[k][i] * a[i][k];
        }
        for (Index j = 0; j < n; ++j) {
            c[i][j] = sum;
        }
    }
}

void SmallMatrix::multiplyMatrixVector(Index n, const double* const* a, const double* v,
                                       double* out)
{
    for (Index i = 0; i < n; ++i) {
        double sum = 0.0;
        for (Index j = 0; j < n; ++j) {
            sum += a[i][j] * v[j];
        }
        out[i] = sum;
    }
}

int SmallMatrix::hasNaNMatrix(Index n, const double* const* m)
{
    for (Index i = 0; i < n; ++i) {
        if (hasNaNVector(n, m[i]) != 0) {
            return 1;
        }
    }
    return 0;
}

int SmallMatrix::hasNaNVector(Index n, const double* v)
{
    for (Index i = 0; i < n; ++i) {
        if (std::isnan(v[i])) {
            return 1;
        }
    }
    return 0;
}

void SmallMatrix::luDecompose(Index n, const double* const* a, double* const* l, double* const* u,
                              Index* perm)
{
    for (Index i = 0; i < n; ++i) {
        perm[i] = i;
    }
    copyMatrix(n, a, l);
    for (Index c = 0; c < n; ++c) {
        std::swap(perm[c], perm[pivotPlace(n, l, perm, c)]);
        eliminateColumn(n, l, perm, c);
    }
    splitFactors(n, l, u, perm);
}

void SmallMatrix::forwardSolve(Index n, const double* const* l, const double* b, double* y,
                               const Index* perm)
{
    copyVector(n, b, y);
    for (Index i = 0; i + 1 < n; ++i) {
        const Index p = perm[i];
        y[p] /= l[p][i];
        for (Index k = i + 1; k < n; ++k) {
            y[perm[k]] -= y[p] * l[perm[k]][i];
        }
    }
}

void SmallMatrix::backSolve(Index n, const double* const* u, const double* y, double* x,
                            const Index* perm)
{
    copyVector(n, y, x);
    for (Index i = std::max(n, 0) - 1; i >= 0; --i) {
        const Index p = perm[i];
        x[p] /= u[p][i];
        for (Index k = i - 1; k >= 0; --k) {
            x[perm[k]] -= x[p] * u[perm[k]][i];
        }
    }
}

void SmallMatrix::gaussJordan(Index n, double* const* a, double* const* b)
{
    std::vector<bool> used(static_cast<std::size_t>(std::max(n, 0)), false);
    for (Index round = 0; round < n; ++round) {
        const Index pivot = freeDiagonalPivot(n, a, used);
        used[static_cast<std::size_t>(pivot)] = true;
        const double diagonal = a[pivot][pivot];
        if (diagonal == 0.0) {
            continue;
        }
        divideRow(n, a[pivot], diagonal);
        divideRow(n, b[pivot], diagonal);
        for (Index i = 0; i < n; ++i) {
            if (used[static_cast<std::size_t>(i)]) {
                continue;
            }
            const double factor = a[i][pivot];
            subtractRow(n, a[i], factor, a[pivot]);
            subtractRow(n, b[i], factor, b[pivot]);
        }
    }
}

void SmallMatrix::printMatrix(const char* name, Index n, const double* const* m)
{
    if (n < 1) {
        return;
    }
    printHeader(name);
    for (Index i = 0; i < n; ++i) {
        printElements(n, m[i]);
    }
    std::printf("\n");
}

void SmallMatrix::printMatrixPermuted(const char* name, Index n, const double* const* m,
                                      const Index* perm)
{
    if (n < 1) {
        return;
    }
    printHeader(name);
    for (Index i = 0; i < n; ++i) {
        printElements(n, m[perm[i]]);
    }
    std::printf("\n");
}

void SmallMatrix::printVector(const char* name, Index n, const double* v)
{
    if (n < 1) {
        return;
    }
    printHeader(name);
    printElements(n, v);
    std::printf("\n");
}

void SmallMatrix::printIndexVector(const char* name, Index n, const Index* p)
{
    if (n < 1) {
        return;
    }
    printHeader(name);
    for (Index i = 0; i < n; ++i) {
        std::printf("%d ", p[i]);
    }
    std::printf("\n# \n");
}

void SmallMatrix::printVectorPermuted(const char* name, Index n, const double* v, const Index* perm)
{
    if (n < 1) {
        return;
    }
    printHeader(name);
    for (Index i = 0; i < n; ++i) {
        std::printf("%g ", v[perm[i]]);
    }
    std::printf("\n# \n");
}

} // namespace analysis
