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

struct Watch {
    std::vector<Hook> hooks;
    std::map<int, std::string> files; ///< by descriptor
    std::array<int, 4> seen{};
    bool isActing = false; ///< the calls of an action are left alone
};

/// None before the first hook: the libraries call long before main().
Watch* watch = nullptr;

bool isWatched(const std::string& path)
{
    for (const Hook& hook : watch->hooks) {
        if (hook.path == path) {
            return true;
        }
    }
    return false;
}

/// The error that the call has to fail with, or 0.
int happen(Call call, const std::string& path)
{
    int error = 0;
    ++watch->seen[static_cast<std::size_t>(call)];
    watch->isActing = true;
    for (Hook& hook : watch->hooks) {
        if (hook.call != call || hook.path != path) {
            continue;
        }
        ++hook.seen;
        if (hook.seen == hook.number || (hook.isRepeated && hook.seen > hook.number)) {
            error = hook.action();
        }
    }
    watch->isActing = false;
    return error;
}

/// The same for an open file; 0 for one that nobody watches.
int happen(Call call, int descriptor)
{
    if (watch == nullptr || watch->isActing) {
        return 0;
    }
    const auto file = watch->files.find(descriptor);
    return file == watch->files.end() ? 0 : happen(call, file->second);
}

template <typename Function>
Function* real(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

void hooks::at(Call call, const std::string& path, int number, bool isRepeated, Action action)
{
    if (watch == nullptr) {
        watch = new Watch; // to the end: files are closed after main(), too
    }
    watch->hooks.push_back({call, path, number, isRepeated, std::move(action)});
}

int hooks::seen(Call call)
{
    return watch == nullptr ? 0 : watch->seen[static_cast<std::size_t>(call)];
}

extern "C" int open64(const char* path, int flags, ...)
{
    static auto* const next = real<int(const char*, int, ...)>("open64");
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    if (watch == nullptr || watch->isActing || !isWatched(path)) {
        return next(path, flags, mode);
    }
    if (const int error = happen(Call::Open, std::string(path))) {
        errno = error;
        return -1;
    }
    const int descriptor = next(path, flags, mode);
    if (descriptor >= 0) {
        watch->files[descriptor] = path;
    }
    return descriptor;
}

extern "C" ssize_t read(int descriptor, void* out, std::size_t size)
{
    static auto* const next = real<ssize_t(int, void*, std::size_t)>("read");
    if (const int error = happen(Call::Read, descriptor)) {
        errno = error;
        return -1;
    }
    return next(descriptor, out, size);
}

extern "C" ssize_t write(int descriptor, const void* bytes, std::size_t size)
{
    static auto* const next = real<ssize_t(int, const void*, std::size_t)>("write");
    if (const int error = happen(Call::Write, descriptor)) {
        errno = error;
        return -1;
    }
    return next(descriptor, bytes, size);
}

extern "C" int close(int descriptor)
{
    static auto* const next = real<int(int)>("close");
    const int result = next(descriptor);
    happen(Call::Close, descriptor);
    if (watch != nullptr && !watch->isActing) {
        watch->files.erase(descriptor);
    }
    return result;
}
