#include "analysis/SmallMatrix.h"

#include "analysis/Elimination.h"

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

template <class T>
T* newArray(Index n)
{
    return n < 1 ? nullptr : new T[static_cast<std::size_t>(n)];
}

/// View of a matrix or a vector whose rows are reordered by a permutation.
template <class Element>
struct Permuted {
    Element* rows;
    const Index* perm;

    Element& operator[](Index i) const { return rows[perm[i]]; }
};

/// Splits the combined factors: moves the upper triangle of @p work to @p u, and replaces it
/// in @p work by a unit diagonal and zeros.
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

/// The unused row with the largest absolute value on the diagonal; the first unused row if
/// all these values are NaN.
Index freeDiagonalPivot(Index n, const double* const* a, const std::vector<bool>& used)
{
    Index chosen = -1;
    Index firstFree = -1;
    double best = belowAnyMagnitude;
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

void printElement(double value)
{
    std::printf("%g ", value);
}

void printElement(Index value)
{
    std::printf("%d ", value);
}

template <class Vector>
void printElements(Index n, const Vector& v)
{
    for (Index j = 0; j < n; ++j) {
        printElement(v[j]);
    }
    std::printf("\n# ");
}

/// Prints the first @p rows rows of @p m, each with @p n elements.
template <class Matrix>
void printRows(const char* name, Index rows, Index n, const Matrix& m)
{
    if (n < 1) {
        return;
    }
    std::printf("# %s = \n# ", name);
    for (Index i = 0; i < rows; ++i) {
        printElements(n, m[i]);
    }
    std::printf("\n");
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
        const Permuted<double* const> work{l, perm};
        std::swap(perm[c], perm[pivotPosition<std::int64_t>(c, IndexRange{c, n}, work)]);
        eliminateColumn(c, IndexRange{c + 1, n}, work,
                        [&](Index k, double factor) { work[k][c] = factor; });
    }
    splitFactors(n, l, u, perm);
}

void SmallMatrix::forwardSolve(Index n, const double* const* l, const double* b, double* y,
                               const Index* perm)
{
    copyVector(n, b, y);
    const Permuted<double> inOrder{y, perm};
    for (Index i = 0; i + 1 < n; ++i) {
        inOrder[i] /= l[perm[i]][i];
        substituteUnknown(i, IndexRange{i + 1, n}, Permuted<const double* const>{l, perm}, inOrder);
    }
}

void SmallMatrix::backSolve(Index n, const double* const* u, const double* y, double* x,
                            const Index* perm)
{
    copyVector(n, y, x);
    const Permuted<double> inOrder{x, perm};
    for (Index i = std::max(n, 0) - 1; i >= 0; --i) {
        inOrder[i] /= u[perm[i]][i];
        substituteUnknown(i, IndexRange{0, i}, Permuted<const double* const>{u, perm}, inOrder);
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
    printRows(name, n, n, m);
}

void SmallMatrix::printMatrixPermuted(const char* name, Index n, const double* const* m,
                                      const Index* perm)
{
    printRows(name, n, n, Permuted<const double* const>{m, perm});
}

void SmallMatrix::printVector(const char* name, Index n, const double* v)
{
    printRows(name, 1, n, &v);
}

void SmallMatrix::printIndexVector(const char* name, Index n, const Index* p)
{
    printRows(name, 1, n, &p);
}

void SmallMatrix::printVectorPermuted(const char* name, Index n, const double* v, const Index* perm)
{
    const Permuted<const double> inOrder{v, perm};
    printRows(name, 1, n, &inOrder);
}

} // namespace analysis
