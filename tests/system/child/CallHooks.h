// Something happens to a file at a chosen call that reads or writes it.
//
// The program takes the place of open64(), read(), write() and close() for the
// libraries that it is linked with, the toolkit among them.
#pragma once

#include <functional>
#include <string>

namespace hooks
{

enum class Call {
    Open,  ///< just before the file is opened
    Read,  ///< just before a read
    Write, ///< just before a write
    Close, ///< just after the file is closed
};

/// What happens: 0 lets the call go on, any other number is the error (errno)
/// that the call fails with. Ignored for Call::Close.
using Action = std::function<int()>;

/// Runs @p action at the calls of this kind on the file of this name, from the
/// @p number -th one on (counted from 1) and once, or at each of them if
/// @p isRepeated. The name is compared as given to the system.
void at(Call call, const std::string& path, int number, bool isRepeated, Action action);

/// How many calls of this kind files with a hook have seen in all.
int seen(Call call);

} // namespace hooks
