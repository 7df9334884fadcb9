#include "support/FuzzTarget.h"
void fuzz::tryInput(const QByteArray& bytes)
{
    FUZZ_REQUIRE(bytes.size() < 4097);
}
