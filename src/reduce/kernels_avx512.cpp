// The kernels for AVX-512.
#include "src/reduce/kernels.hpp"

#if defined(__x86_64__)
#include <immintrin.h>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f"))), apply_to = function)
#else
#pragma GCC target("avx512f")
#endif
#include "src/reduce/filter_kernels.hpp"

namespace loopwise::reduce {
namespace {

struct Avx512 : Lanes<16> {
    static Floats multiply_add(Floats a, Floats b, Floats c) { return _mm512_fmadd_ps(a, b, c); }
    static std::uint32_t greater(Floats a, Floats b) { return _mm512_cmp_ps_mask(a, b, _CMP_GT_OQ); }
    /// Of a shuffle GCC makes one that needs a row of numbers and overwrites one of the two.
    static Floats following(Floats these, Floats next) {
        return reinterpret_cast<Floats>(_mm512_maskz_alignr_epi32(0xFFFF, reinterpret_cast<__m512i>(next),
                                                                  reinterpret_cast<__m512i>(these), 1));
    }
    static void keep(Floats& a) { asm("" : "+v"(a)); }
};

} // namespace

extern constexpr Kernels avx512_kernels = FilterKernels<Avx512>::table();

} // namespace loopwise::reduce

#if defined(__clang__)
#pragma clang attribute pop
#endif
#endif
