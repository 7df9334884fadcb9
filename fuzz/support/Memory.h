// Simulated lack of memory.
#pragma once

#include <QtGlobal>

#include <utility>

namespace fuzz
{

/// The free memory that data::canAllocate() assumes in a fuzz target. It is a plain
/// number, because asking the sanitizers' allocator takes as long as reading many files.
inline constexpr qint64 plentyOfMemory = qint64{1} << 40;
inline qint64 freeMemory = plentyOfMemory; // bytes

/// The largest amount that the product has asked for; below 0 if it has not asked.
inline qint64 peakRequest = -1; // bytes

/// Limits the free memory to @p bytes during its lifetime. The limit applies to the whole
/// request, including the reserve that the product wants to keep free; peakRequestOf()
/// measures such a request.
class LimitedMemory
{
public:
    explicit LimitedMemory(qint64 bytes) { freeMemory = bytes; }
    ~LimitedMemory() { freeMemory = plentyOfMemory; }
    Q_DISABLE_COPY_MOVE(LimitedMemory)
};

/// The largest request (bytes) that the product makes in @p action with plenty of free
/// memory. With this much free memory the action must succeed; with less it must fail.
template <typename Action>
qint64 peakRequestOf(Action&& action)
{
    peakRequest = -1;
    std::forward<Action>(action)();
    return peakRequest;
}

/// A number of bytes below @p most: one less, or about half of it.
inline qint64 tooLittle(qint64 most, bool isClose)
{
    return isClose || most < 2 ? most - 1 : most / 2;
}

} // namespace fuzz
