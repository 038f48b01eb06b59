#include "desktop/platform/WideRegisters.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace corvane::desktop {

#if defined(__x86_64__)

namespace {

[[gnu::target("avx")]] void ClearUpperHalves() {
    _mm256_zeroupper();
}

} // namespace

void ClearWideRegisters() {
    if (__builtin_cpu_supports("avx"))
        ClearUpperHalves();
}

#else

void ClearWideRegisters() {}

#endif

} // namespace corvane::desktop
