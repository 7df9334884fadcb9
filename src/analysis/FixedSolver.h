// Small linear systems whose size is known to the compiler, for loops over
// pixels.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace analysis
{

/// The solution of a x = b, unknowns in the order of the columns of @p a.
///
/// Equal to the last bit to SmallMatrix's luDecompose(), forwardSolve() and
/// backSolve() read through the permutation, whatever the numbers: the same
/// operations in the same order, the same choice of pivots, a pivot of 0 that
/// divides as 1.0 in the elimination and as itself at the end. (Two NaN count
/// as equal.) So a singular system gives infinities or NaN, and no error.
///
/// Rows are moved here instead of being reached through a permutation, so that
/// every index is a constant once the loops are unrolled and the matrix can
/// stay in registers.
template <std::size_t N>
std::array<double, N> solveFixed(std::array<std::array<double, N>, N> a, std::array<double, N> b)
{
    for (std::size_t c = 0; c + 1 < N; ++c) {
        // Strictly larger: the first of equal values stays, and NaN is never
        // chosen over a number.
        std::size_t place = c;
        double best = -1e300;
        for (std::size_t k = c; k < N; ++k) {
            const double size = std::fabs(a[k][c]);
            if (size > best) {
                best = size;
                place = k;
            }
        }
        // Not a[place]: a variable index would keep the matrix in memory.
        for (std::size_t k = c + 1; k < N; ++k) {
            if (place == k) {
                std::swap(a[c], a[k]);
                std::swap(b[c], b[k]);
            }
        }
        const double divisor = a[c][c] == 0.0 ? 1.0 : a[c][c];
        for (std::size_t k = c + 1; k < N; ++k) {
            const double factor = a[k][c] / divisor;
            for (std::size_t j = c + 1; j < N; ++j) {
                a[k][j] -= a[c][j] * factor;
            }
            b[k] -= b[c] * factor;
        }
    }
    for (std::size_t i = N; i-- > 0;) {
        b[i] /= a[i][i];
        for (std::size_t k = i; k-- > 0;) {
            b[k] -= b[i] * a[k][i];
        }
    }
    return b;
}

} // namespace analysis
