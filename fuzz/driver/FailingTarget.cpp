// A target that fails for some inputs, for the test of the driver.
#include "support/FuzzTarget.h"

void fuzz::tryInput(const QByteArray& bytes)
{
    FUZZ_REQUIRE(!bytes.contains("bad"));
}
