// Hooks that run an action at a chosen system call on a chosen file.
//
// This executable defines open64(), read(), write() and close(), which replace the C
// library's functions for all libraries linked to it, including Qt.
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

/// Runs at a call. It returns 0 to let the call proceed, or the errno with which the call
/// fails. The result is ignored for Call::Close.
using Action = std::function<int()>;

/// Runs @p action at the call with this @p number (counted from 1) of this kind on the
/// file @p path; if @p isRepeated, also at every later call. The path is compared as a string
/// with the path that is passed to open64().
void at(Call call, const std::string& path, int number, bool isRepeated, Action action);

/// The number of calls of this kind on all files that have a hook.
int seen(Call call);

} // namespace hooks
