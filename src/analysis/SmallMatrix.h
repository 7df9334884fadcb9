// Dense real linear systems of a few unknowns, with the size given at run time.
#pragma once

#include <cstdint>

namespace analysis
{

/// LU decomposition by Gaussian elimination with partial pivoting, an elimination with
/// diagonal pivoting, and helper functions for matrices and vectors.
///
/// A matrix is an array of n pointers to rows of n doubles, with element i, j at m[i][j]. A
/// vector is an array of n doubles. The caller owns the result of a new...() function and
/// releases it with the matching free...() function. With n below 1 every function is a no-op:
/// new...() then returns null and hasNaN...() returns 0. Inputs and outputs of a function must
/// not overlap, unless its description allows it.
///
/// To solve a system a x = b, call luDecompose(), forwardSolve() and backSolve() in this order.
/// Rows are not swapped; a permutation states their order: unknown k is x[perm[k]].
class SmallMatrix
{
public:
    /// Allocates a matrix with undefined contents.
    static double** newMatrix(std::int32_t n);

    /// Allocates a vector with undefined contents.
    static double* newVector(std::int32_t n);

    /// Allocates a vector of indices with undefined contents.
    static std::int32_t* newIndexVector(std::int32_t n);

    /// Releases a matrix from newMatrix() with the same @p n. Null is a no-op.
    static void freeMatrix(std::int32_t n, double** m);

    /// Releases a vector from newVector(). Null is a no-op.
    static void freeVector(double* v);

    /// Releases a vector from newIndexVector(). Null is a no-op.
    static void freeIndexVector(std::int32_t* p);

    /// Sets all elements of a matrix to zero.
    static void clearMatrix(std::int32_t n, double* const* m);

    /// Sets all elements of a vector to zero.
    static void clearVector(std::int32_t n, double* v);

    /// Sets all elements of a vector of indices to zero.
    static void clearIndexVector(std::int32_t n, std::int32_t* p);

    /// Sets @p m to the identity matrix.
    static void setIdentity(std::int32_t n, double* const* m);

    /// Copies all elements of a matrix.
    static void copyMatrix(std::int32_t n, const double* const* from, double* const* to);

    /// Copies all elements of a vector.
    static void copyVector(std::int32_t n, const double* from, double* to);

    /// Not the matrix product, on purpose: sets every element of row i of @p c to diagonal
    /// element i of the product a b, that is the sum over k of b[k][i] * a[i][k].
    static void multiplyMatrices(std::int32_t n, const double* const* a, const double* const* b,
                                 double* const* c);

    /// The matrix-vector product: out = a v.
    static void multiplyMatrixVector(std::int32_t n, const double* const* a, const double* v,
                                     double* out);

    /// Returns 1 if any element of the matrix is NaN, otherwise 0.
    static int hasNaNMatrix(std::int32_t n, const double* const* m);

    /// Returns 1 if any element of the vector is NaN, otherwise 0.
    static int hasNaNVector(std::int32_t n, const double* v);

    /// LU decomposition of @p a with partial pivoting: row perm[i] of @p a is row i of the
    /// product of both factors.
    ///
    /// The pivot of a column is the element with the largest absolute value in the remaining
    /// rows. Of equal values, the first is chosen, and NaN is never chosen over a number. If
    /// the pivot is 0, the divisor of the elimination is 1.0 instead, but the diagonal element
    /// of @p u stays 0. A singular matrix therefore raises no error, and backSolve() returns
    /// infinities or NaN.
    ///
    /// @param a          the matrix; left unchanged
    /// @param[out] l     unit lower triangular factor, with row i at l[perm[i]]
    /// @param[out] u     upper triangular factor, with row i at u[perm[i]]
    /// @param[out] perm  the permutation of the rows, n values
    static void luDecompose(std::int32_t n, const double* const* a, double* const* l,
                            double* const* u, std::int32_t* perm);

    /// Forward substitution: solves l y = b, where @p l and @p perm are from luDecompose().
    /// Element i of the solution is y[perm[i]].
    static void forwardSolve(std::int32_t n, const double* const* l, const double* b, double* y,
                             const std::int32_t* perm);

    /// Back substitution: solves u x = y, where @p u and @p perm are from luDecompose() and @p y
    /// is from forwardSolve(). Unknown k is x[perm[k]].
    static void backSolve(std::int32_t n, const double* const* u, const double* y, double* x,
                          const std::int32_t* perm);

    /// Gaussian elimination with diagonal pivoting, in place, on two matrices side by side.
    ///
    /// Each of n rounds chooses the unused row with the largest absolute value on the diagonal
    /// of @p a (the first unused row if all are NaN) and marks it as used. If the diagonal
    /// element is 0, the round ends. Otherwise the row is divided by the diagonal element in
    /// both matrices, and multiples of it are subtracted from the rows that are still unused,
    /// so that their element in the pivot column becomes 0. Unlike in the Gauss-Jordan method,
    /// rows used earlier are left unchanged on purpose, so @p a does not become the identity.
    static void gaussJordan(std::int32_t n, double* const* a, double* const* b);

    /// Prints a matrix to the standard output for debugging. Lines begin with "# ", which
    /// plotting programs read as comments.
    static void printMatrix(const char* name, std::int32_t n, const double* const* m);

    /// Prints a matrix like printMatrix(), with row perm[i] as row i.
    static void printMatrixPermuted(const char* name, std::int32_t n, const double* const* m,
                                    const std::int32_t* perm);

    /// Prints a vector in the format of printMatrix().
    static void printVector(const char* name, std::int32_t n, const double* v);

    /// Prints a vector of indices in the format of printMatrix().
    static void printIndexVector(const char* name, std::int32_t n, const std::int32_t* p);

    /// Prints a vector like printVector(), with element perm[i] as element i.
    static void printVectorPermuted(const char* name, std::int32_t n, const double* v,
                                    const std::int32_t* perm);
};

} // namespace analysis
