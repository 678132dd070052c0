#pragma once

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace brimwick {

#if defined(__x86_64__)

namespace vector_registers {
[[gnu::target("avx")]] inline void clearUpperHalves() {
    _mm256_zeroupper();
}
} // namespace vector_registers

/// To be called when a thread with much to compute starts. A thread inherits the registers of the one that
/// started it; where code of a library has left something in the upper halves of the wide ones, every
/// instruction that writes only the lower half waits for the one before.
inline void clearWideRegisters() {
    if (__builtin_cpu_supports("avx") != 0) vector_registers::clearUpperHalves();
}

#else

inline void clearWideRegisters() {}

#endif

} // namespace brimwick
