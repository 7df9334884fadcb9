// Memory that runs out when a target wants it to.
#pragma once

#include <QtGlobal>

#include <utility>

namespace fuzz
{

/// What the product is told to be free when it asks before it allocates. Here it is
/// a number: to ask the sanitizers' allocator takes as long as to read many files.
inline constexpr qint64 plentyOfMemory = qint64{1} << 40;
inline qint64 freeMemory = plentyOfMemory; // bytes

/// The most that the product has asked for at once; below 0 while it has not asked.
inline qint64 mostAsked = -1; // bytes

/// Leaves only @p bytes free while it lives. What the product asks for counts whole,
/// with what it wants to keep free beside: mostAskedBy() tells how much that is.
class LittleMemory
{
public:
    explicit LittleMemory(qint64 bytes) { freeMemory = bytes; }
    ~LittleMemory() { freeMemory = plentyOfMemory; }
    Q_DISABLE_COPY_MOVE(LittleMemory)
};

/// The most bytes that the product asks for at once in @p action, with plenty free.
/// With as many free the action must succeed, with any fewer it must fail.
template <typename Action>
qint64 mostAskedBy(Action&& action)
{
    mostAsked = -1;
    std::forward<Action>(action)();
    return mostAsked;
}

/// A number of bytes below @p most, close to it or about half of it.
inline qint64 tooLittle(qint64 most, bool isClose)
{
    return isClose || most < 2 ? most - 1 : most / 2;
}

} // namespace fuzz
