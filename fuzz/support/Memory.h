// Memory that runs out when a target wants it to.
#pragma once

#include <QtGlobal>

namespace fuzz
{

/// What the product is told to be free when it asks before it allocates. Here it is
/// a number: to ask the sanitizers' allocator takes as long as to read many files.
inline constexpr qint64 plentyOfMemory = qint64{1} << 40;
inline qint64 freeMemory = plentyOfMemory; // bytes

/// Leaves only @p bytes free while it lives.
class LittleMemory
{
public:
    explicit LittleMemory(qint64 bytes) { freeMemory = bytes; }
    ~LittleMemory() { freeMemory = plentyOfMemory; }
    Q_DISABLE_COPY_MOVE(LittleMemory)
};

} // namespace fuzz
