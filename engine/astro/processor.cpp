#include "engine/astro/processor.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include <immintrin.h>

namespace glintara {

namespace {

// The rest of the program is built for any x86-64 processor, so the instruction stands in a function of its own.
__attribute__((target("avx"), noinline)) void ZeroUpperHalves() { _mm256_zeroupper(); }

}  // namespace

void ClearUpperHalves() {
    static const bool hasAvx = __builtin_cpu_supports("avx") != 0;
    if (hasAvx) ZeroUpperHalves();
}

}  // namespace glintara

#else

namespace glintara {

void ClearUpperHalves() {}

}  // namespace glintara

#endif
