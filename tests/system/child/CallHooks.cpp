#include "CallHooks.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <map>
#include <vector>

#include <dlfcn.h>
#include <sys/types.h>

namespace
{

using hooks::Call;

struct Hook {
    Call call;
    std::string path;
    int number;
    bool isRepeated;
    hooks::Action action;
    int seen = 0;
};

struct State {
    std::vector<Hook> hooks;
    std::map<int, std::string> files; ///< path by file descriptor
    std::array<int, 4> seen{};
    bool isActing =
        false; ///< true while an action runs; file calls made by the action trigger no hooks
};

/// Null until the first hook is set, because libraries make these calls before main() starts.
State* state = nullptr;

bool hasHook(const std::string& path)
{
    for (const Hook& hook : state->hooks) {
        if (hook.path == path) {
            return true;
        }
    }
    return false;
}

/// Counts the call and runs its hooks. Returns 0 if the call may proceed, or the errno with
/// which it fails.
int runHooks(Call call, const std::string& path)
{
    int error = 0;
    ++state->seen[static_cast<std::size_t>(call)];
    state->isActing = true;
    for (Hook& hook : state->hooks) {
        if (hook.call != call || hook.path != path) {
            continue;
        }
        ++hook.seen;
        if (hook.seen == hook.number || (hook.isRepeated && hook.seen > hook.number)) {
            error = hook.action();
        }
    }
    state->isActing = false;
    return error;
}

/// Runs the hooks of a call on an open file, given by its descriptor. Returns the
/// result of runHooks() for the path of the file, or 0 if the file has no hook.
int runHooks(Call call, int descriptor)
{
    if (state == nullptr || state->isActing) {
        return 0;
    }
    const auto file = state->files.find(descriptor);
    return file == state->files.end() ? 0 : runHooks(call, file->second);
}

template <typename Function>
Function* nextFunction(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

void hooks::at(Call call, const std::string& path, int number, bool isRepeated, Action action)
{
    if (state == nullptr) {
        state = new State; // never deleted, because files are closed even after main()
    }
    state->hooks.push_back({call, path, number, isRepeated, std::move(action)});
}

int hooks::seen(Call call)
{
    return state == nullptr ? 0 : state->seen[static_cast<std::size_t>(call)];
}

extern "C" int open64(const char* path, int flags, ...)
{
    static auto* const next = nextFunction<int(const char*, int, ...)>("open64");
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    if (state == nullptr || state->isActing || !hasHook(path)) {
        return next(path, flags, mode);
    }
    if (const int error = runHooks(Call::Open, std::string(path))) {
        errno = error;
        return -1;
    }
    const int descriptor = next(path, flags, mode);
    if (descriptor >= 0) {
        state->files[descriptor] = path;
    }
    return descriptor;
}

extern "C" ssize_t read(int descriptor, void* out, std::size_t size)
{
    static auto* const next = nextFunction<ssize_t(int, void*, std::size_t)>("read");
    if (const int error = runHooks(Call::Read, descriptor)) {
        errno = error;
        return -1;
    }
    return next(descriptor, out, size);
}

extern "C" ssize_t write(int descriptor, const void* bytes, std::size_t size)
{
    static auto* const next = nextFunction<ssize_t(int, const void*, std::size_t)>("write");
    if (const int error = runHooks(Call::Write, descriptor)) {
        errno = error;
        return -1;
    }
    return next(descriptor, bytes, size);
}

extern "C" int close(int descriptor)
{
    static auto* const next = nextFunction<int(int)>("close");
    const int result = next(descriptor);
    runHooks(Call::Close, descriptor);
    if (state != nullptr && !state->isActing) {
        state->files.erase(descriptor);
    }
    return result;
}
