// Hooks that run an action at a chosen system call on a chosen file.
//
// This executable defines open64(), read(), write() and close(). Calls from Qt and other
// libraries reach these functions instead of the C library's.
#pragma once

#include <functional>
#include <string>

namespace hooks
{

enum class Call {
    Open,  ///< the action runs just before the file is opened
    Read,  ///< the action runs just before a read
    Write, ///< the action runs just before a write
    Close, ///< the action runs just after the file is closed
};

/// A function that a hook runs. It returns 0 if the call may proceed, or the errno with which
/// the call fails. For Call::Close the return value is ignored.
using Action = std::function<int()>;

/// Runs @p action at the call with this @p number (counted from 1) of this kind on the
/// file @p path; if @p isRepeated, also at every later call. The path is compared as a string
/// with the path that is passed to open64().
void at(Call call, const std::string& path, int number, bool isRepeated, Action action);

/// The number of calls of this kind on all files that have a hook.
int seen(Call call);

} // namespace hooks
