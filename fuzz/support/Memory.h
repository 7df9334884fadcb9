// Simulates a lack of memory.
#pragma once

#include <QtGlobal>

#include <utility>

namespace fuzz
{

/// The free memory in bytes that data::canAllocate() assumes in a fuzz target. It is
/// simulated, because one query of the sanitizers' allocator is as slow as reading many
/// files.
inline constexpr qint64 plentyOfMemory = qint64{1} << 40;
inline qint64 freeMemory = plentyOfMemory; // bytes

/// The largest request to data::canAllocate() so far; -1 if there was no request.
inline qint64 peakRequest = -1; // bytes

/// Limits the simulated free memory to @p bytes during the lifetime of this object. A
/// request to data::canAllocate() includes the reserve that the product keeps free, both
/// here and in peakRequestOf(), so their numbers can be compared.
class LimitedMemory
{
public:
    explicit LimitedMemory(qint64 bytes) { freeMemory = bytes; }
    ~LimitedMemory() { freeMemory = plentyOfMemory; }
    Q_DISABLE_COPY_MOVE(LimitedMemory)
};

/// Runs @p action with enough free memory and returns its largest request in bytes; -1 if it
/// requests no memory. With exactly this much free memory the action must succeed; with
/// less free memory it must fail.
template <typename Action>
qint64 peakRequestOf(Action&& action)
{
    peakRequest = -1;
    std::forward<Action>(action)();
    return peakRequest;
}

/// A number of bytes below @p most: @p most - 1 if @p isClose, otherwise half of @p most.
inline qint64 tooLittle(qint64 most, bool isClose)
{
    return isClose || most < 2 ? most - 1 : most / 2;
}

} // namespace fuzz
