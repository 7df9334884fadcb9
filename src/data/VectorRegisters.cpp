#include "data/VectorRegisters.h"

#if defined(__x86_64__)

#include <immintrin.h>

namespace
{

__attribute__((target("avx"))) void clearUpperHalves()
{
    _mm256_zeroupper();
}

} // namespace

void data::clearUpperVectorHalves()
{
    static const bool hasWideRegisters = __builtin_cpu_supports("avx") != 0;
    if (hasWideRegisters) {
        clearUpperHalves();
    }
}

#else

void data::clearUpperVectorHalves() {}

#endif
