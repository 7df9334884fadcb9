// Root may read everything; a test of permissions looks with other eyes.
#pragma once

#include <unistd.h>

namespace tests
{

/// While it lives, a process that root runs has the rights of nobody; any
/// other process keeps its own. Both user ids change: some questions for
/// permission look at the real one.
class AsNobody
{
public:
    AsNobody()
        : wasRoot(::geteuid() == 0)
        , ok(!wasRoot || ::setresuid(nobody, nobody, 0) == 0)
    {
    }
    ~AsNobody()
    {
        if (wasRoot && ::setresuid(0, 0, 0) != 0) {
            ::_exit(1); // no test may go on with the wrong rights
        }
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

    /// Whether the rights are those of an ordinary user now.
    bool works() const { return ok; }

private:
    static constexpr uid_t nobody = 65534;
    const bool wasRoot;
    const bool ok;
};

} // namespace tests
