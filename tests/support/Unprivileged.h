// Drops root's rights for tests of file permissions.
#pragma once

#include <unistd.h>

namespace tests
{

/// During its lifetime a process of root has the rights of user 65534 (nobody); for any
/// other user nothing changes. It also changes the real user id, because access(2) checks
/// that one. The groups do not change.
class Unprivileged
{
public:
    Unprivileged()
    {
        if (::geteuid() == 0) {
            constexpr uid_t nobody = 65534;
            dropped = ::setresuid(nobody, nobody, 0) == 0;
        }
    }
    ~Unprivileged()
    {
        if (dropped) {
            [[maybe_unused]] const int result = ::setresuid(0, 0, 0);
        }
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    /// Whether file permissions apply to this process now.
    bool holds() const { return ::geteuid() != 0; }

private:
    bool dropped = false;
};

} // namespace tests
