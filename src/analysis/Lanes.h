// Vectors of four doubles (SIMD), and kernels compiled for several instruction sets.
//
// An operation on lanes is the same operation on each of four doubles, and the order of
// operations is as written in the source code. A fast path built from lanes is therefore
// bit-identical to the loop over single pixels. No version of a kernel contracts a multiplication
// and an addition into a fused multiply-add, so the results do not depend on the instruction set.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace analysis
{

/// Four doubles, one for each of four pixels; operations apply to each separately. The
/// result of a comparison is a mask for the conditional operator.
///
/// Functions with lanes as arguments or results by value must always be inlined,
/// because the calling convention for lanes depends on the instruction set.
using Lanes [[gnu::vector_size(32)]] = double;
/// Four 64-bit integers: the mask of a comparison, or the bits of four doubles.
using LaneBits [[gnu::vector_size(32)]] = std::int64_t;

inline constexpr int laneCount = 4;

/// Number of pixels that a map calculation processes at a time, a multiple of
/// laneCount. All their values fit into the level 1 cache.
inline constexpr int blockPixels = 64;

/// One value for each pixel of a block.
using Block = std::array<double, blockPixels>;

/// A non-owning view of a block.
using BlockView = std::span<const double, blockPixels>;

/// Reads four doubles; @p from needs no alignment.
[[gnu::always_inline]] inline Lanes loadLanes(const double* from)
{
    Lanes lanes;
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

/// Writes four doubles; @p to needs no alignment.
[[gnu::always_inline]] inline void storeLanes(double* to, Lanes lanes)
{
    std::memcpy(to, &lanes, sizeof lanes);
}

/// @p value in all four lanes.
[[gnu::always_inline]] inline Lanes allLanes(double value)
{
    return Lanes{value, value, value, value};
}

/// Instruction sets that kernels are compiled for.
enum class Instructions {
    Baseline, ///< available on every processor of the architecture
    Wide,     ///< AVX2: four doubles in one register
};

/// The instruction sets of this processor, the fastest last; never empty.
const std::vector<Instructions>& availableInstructions();

/// The last of availableInstructions().
Instructions fastestInstructions();

namespace detail
{

#if defined(__x86_64__)
template <class Kernel>
[[gnu::target("avx2"), gnu::noinline]] void runWide(const Kernel& kernel)
{
    kernel();
}
#endif

} // namespace detail

/// Calls @p kernel in the version compiled for @p instructions.
///
/// Only inlined code is compiled for the instruction set: mark the kernel's call
/// operator, and every function that it calls, with gnu::always_inline.
///
/// @param instructions  one of availableInstructions()
template <class Kernel>
void runKernel(Instructions instructions, const Kernel& kernel)
{
#if defined(__x86_64__)
    if (instructions == Instructions::Wide) {
        detail::runWide(kernel);
        return;
    }
#endif
    static_cast<void>(instructions);
    kernel();
}

} // namespace analysis
