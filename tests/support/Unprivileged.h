// Temporarily gives up root's rights, for tests of file permissions.
#pragma once

#include <unistd.h>

namespace tests
{

/// Changes the user of a root process to 65534 (nobody) during its lifetime. No effect
/// for any other user. The real user id changes too, because access(2) checks it. The
/// group ids do not change.
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

    /// Whether file permissions apply to this process now, that is, whether its user is not
    /// root.
    bool holds() const { return ::geteuid() != 0; }

private:
    bool dropped = false;
};

} // namespace tests
