// Simulates a lack of memory.
#pragma once

#include <QtGlobal>

#include <utility>

namespace fuzz
{

/// The free memory in bytes that data::canAllocate() assumes in a fuzz target. It is a
/// simulated number, because a query of the sanitizers' allocator takes as long as
/// reading many files.
inline constexpr qint64 plentyOfMemory = qint64{1} << 40;
inline qint64 freeMemory = plentyOfMemory; // bytes

/// The largest request of the product so far; negative if there was none.
inline qint64 peakRequest = -1; // bytes

/// Limits the free memory to @p bytes during its lifetime. The limit applies to complete
/// requests, which include the reserve that the product keeps free. peakRequestOf()
/// measures them in the same way.
class LimitedMemory
{
public:
    explicit LimitedMemory(qint64 bytes) { freeMemory = bytes; }
    ~LimitedMemory() { freeMemory = plentyOfMemory; }
    Q_DISABLE_COPY_MOVE(LimitedMemory)
};

/// The largest request (bytes) of the product in @p action if enough memory is free. With
/// exactly this much free memory the action must succeed; with less it must fail.
template <typename Action>
qint64 peakRequestOf(Action&& action)
{
    peakRequest = -1;
    std::forward<Action>(action)();
    return peakRequest;
}

/// A number of bytes below @p most: one byte less if @p isClose, otherwise half.
inline qint64 tooLittle(qint64 most, bool isClose)
{
    return isClose || most < 2 ? most - 1 : most / 2;
}

} // namespace fuzz
