// Dense real linear systems of a few unknowns, with the size set at run time.
#pragma once

#include <cstdint>

namespace analysis
{

/// LU decomposition with partial pivoting, and the small change around it.
///
/// A matrix is an array of n pointers to rows of n doubles, element i, j being
/// m[i][j]; a vector is an array of n doubles. What the new...() operations
/// give belongs to the caller, who returns it through the matching free...().
/// With n below 1 every operation does nothing: new...() then gives
/// a null pointer and hasNaN...() gives 0. Unless it says otherwise, an
/// operation may not write to what it reads from.
///
/// A system a x = b is solved by luDecompose(), forwardSolve() and backSolve(),
/// in this order. Rows are never moved: unknown k is x[perm[k]].
class SmallMatrix
{
public:
    /// Storage with undefined contents.
    static double** newMatrix(std::int32_t n);
    static double* newVector(std::int32_t n);
    static std::int32_t* newIndexVector(std::int32_t n);

    /// Releases what the matching new...() gave, for the same @p n; null is
    /// taken.
    static void freeMatrix(std::int32_t n, double** m);
    static void freeVector(double* v);
    static void freeIndexVector(std::int32_t* p);

    /// Set all elements to zero.
    static void clearMatrix(std::int32_t n, double* const* m);
    static void clearVector(std::int32_t n, double* v);
    static void clearIndexVector(std::int32_t n, std::int32_t* p);

    /// Zeros with ones on the diagonal.
    static void setIdentity(std::int32_t n, double* const* m);

    static void copyMatrix(std::int32_t n, const double* const* from, double* const* to);
    static void copyVector(std::int32_t n, const double* from, double* to);

    /// Not the matrix product: every element of row i of @p c becomes the i-th
    /// diagonal element of the product a b, the sum over k of b[k][i] * a[i][k].
    static void multiplyMatrices(std::int32_t n, const double* const* a, const double* const* b,
                                 double* const* c);

    /// out = a v.
    static void multiplyMatrixVector(std::int32_t n, const double* const* a, const double* v,
                                     double* out);

    /// 1 if some element is NaN, else 0.
    static int hasNaNMatrix(std::int32_t n, const double* const* m);
    static int hasNaNVector(std::int32_t n, const double* v);

    /// Factorises @p a, which is left unchanged, into l u.
    ///
    /// @param l     unit lower triangle, its row i at l[perm[i]]
    /// @param u     upper triangle, its row i at u[perm[i]]
    /// @param perm  the order of the rows, n values
    ///
    /// The pivot of a column is its largest absolute value among the rows that
    /// are left, the first of equal ones; NaN is never chosen over a number. A
    /// pivot of 0 divides as 1.0 but stays 0 in @p u, so a singular system
    /// gives infinities or NaN in backSolve(), and no error.
    static void luDecompose(std::int32_t n, const double* const* a, double* const* l,
                            double* const* u, std::int32_t* perm);

    /// Solves l y = b; element i of the solution is y[perm[i]].
    static void forwardSolve(std::int32_t n, const double* const* l, const double* b, double* y,
                             const std::int32_t* perm);

    /// Solves u x = y; unknown k is x[perm[k]].
    static void backSolve(std::int32_t n, const double* const* u, const double* y, double* x,
                          const std::int32_t* perm);

    /// Eliminates in place in two matrices side by side.
    ///
    /// In each of n rounds the free row with the largest absolute value on the
    /// diagonal of @p a (the first free one when all are NaN) is used up. With
    /// 0 on the diagonal the round does nothing else. Otherwise that row of
    /// both matrices is divided by the diagonal element, and cleared out of
    /// the rows still free; rows used earlier are left, so @p a does not
    /// become the identity.
    static void gaussJordan(std::int32_t n, double* const* a, double* const* b);

    /// Debugging output to the standard output, as comment lines for plotting
    /// programs; the permuted forms print element or row perm[i] at place i.
    static void printMatrix(const char* name, std::int32_t n, const double* const* m);
    static void printMatrixPermuted(const char* name, std::int32_t n, const double* const* m,
                                    const std::int32_t* perm);
    static void printVector(const char* name, std::int32_t n, const double* v);
    static void printIndexVector(const char* name, std::int32_t n, const std::int32_t* p);
    static void printVectorPermuted(const char* name, std::int32_t n, const double* v,
                                    const std::int32_t* perm);
};

} // namespace analysis
