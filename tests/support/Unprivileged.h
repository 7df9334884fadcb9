// Tests of permissions: root may read and write all, so they run as nobody.
#pragma once

#include <unistd.h>

namespace tests
{

/// While it lives, the process has no more rights than user 65534, when it had
/// those of root; any other user keeps what he has. The real user changes too,
/// since access(2) asks for that one; the groups stay.
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

    /// Whether permissions mean anything now.
    bool holds() const { return ::geteuid() != 0; }

private:
    bool dropped = false;
};

} // namespace tests
