// A fuzz target that fails for some inputs. Driver.sh uses it to test the driver.
#include "support/FuzzTarget.h"

void fuzz::tryInput(const QByteArray& bytes)
{
    FUZZ_REQUIRE(!bytes.contains("bad"));
}
