// Four doubles side by side, and code that is compiled for more than one
// processor.
//
// Each operation on lanes is the operation on doubles, four times over, in the
// order in which the source states it: a fast path built from them may differ
// from the simple loop over pixels in its speed alone. No multiplication is
// contracted with an addition in any version, so all versions give equal bits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace analysis
{

/// Four doubles, each with arithmetic of its own: one for each of four pixels.
/// Comparisons give a mask that the conditional operator takes.
///
/// Functions that take or return lanes by value are inlined always: how lanes
/// are passed between functions depends on the processor.
using Lanes [[gnu::vector_size(32)]] = double;
using LaneBits [[gnu::vector_size(32)]] = std::int64_t;

inline constexpr int laneCount = 4;

/// Pixels that a map calculation works on at a time: few enough for all of
/// their numbers to stay in the fastest cache, and whole lanes.
inline constexpr int blockPixels = 64;

/// One number for each pixel of a block.
using Block = std::array<double, blockPixels>;

/// The numbers of a block that lie elsewhere.
using BlockView = std::span<const double, blockPixels>;

[[gnu::always_inline]] inline Lanes loadLanes(const double* from)
{
    Lanes lanes;
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

[[gnu::always_inline]] inline void storeLanes(double* to, Lanes lanes)
{
    std::memcpy(to, &lanes, sizeof lanes);
}

/// The same number in all lanes.
[[gnu::always_inline]] inline Lanes allLanes(double value)
{
    return Lanes{value, value, value, value};
}

/// What a processor can calculate with.
enum class Instructions {
    Baseline, ///< what every processor of its kind has
    Wide,     ///< four doubles in one register (AVX2)
};

/// All that this processor has, the fastest one last.
const std::vector<Instructions>& availableInstructions();

/// The fastest that this processor has.
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

/// Calls @p kernel, compiled for @p instructions, which must be available. To be
/// so compiled, the kernel's call operator and all that it calls have to be
/// inlined; mark the operator with gnu::always_inline.
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
