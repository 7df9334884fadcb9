// Simulates a lack of memory.
#pragma once

#include <QtGlobal>

#include <utility>

namespace fuzz
{

/// The free memory in bytes that data::canAllocate() assumes in a fuzz target. It is
/// simulated, because the allocator of AddressSanitizer is very slow for large blocks, and
/// ends the process instead of returning null.
inline constexpr qint64 plentyOfMemory = qint64{1} << 40;
inline qint64 freeMemory = plentyOfMemory; // bytes

/// The largest request to data::canAllocate() so far; -1 if there was no request.
inline qint64 peakRequest = -1; // bytes

/// Limits the simulated free memory during the lifetime of this object. The limit is
/// compared with the whole request to data::canAllocate(), which includes the reserve that
/// the program keeps free, so a result of peakRequestOf() can be used as the limit.
class LimitedMemory
{
public:
    explicit LimitedMemory(qint64 bytes) { freeMemory = bytes; }
    ~LimitedMemory() { freeMemory = plentyOfMemory; }
    Q_DISABLE_COPY_MOVE(LimitedMemory)
};

/// Runs @p action and returns its largest request in bytes; -1 if it requests no memory. Does
/// not change the free memory, so no LimitedMemory may exist during the call. With exactly the
/// returned amount of free memory, the action must have the same result; with less, it must
/// fail.
template <typename Action>
qint64 peakRequestOf(Action&& action)
{
    peakRequest = -1;
    std::forward<Action>(action)();
    return peakRequest;
}

/// A number of bytes below @p most: @p most - 1 if @p isClose or if @p most is below 2,
/// otherwise half of @p most.
inline qint64 tooLittle(qint64 most, bool isClose)
{
    return isClose || most < 2 ? most - 1 : most / 2;
}

} // namespace fuzz
