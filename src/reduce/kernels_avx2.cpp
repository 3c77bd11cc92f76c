// The kernels for AVX2.
#include "src/reduce/kernels.hpp"

#if defined(__x86_64__)
#include <immintrin.h>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2,fma"))), apply_to = function)
#else
#pragma GCC target("avx2,fma")
#endif
#include "src/reduce/filter_kernels.hpp"

namespace loopwise::reduce {
namespace {

struct Avx2 : Lanes<8> {
    static Floats multiply_add(Floats a, Floats b, Floats c) { return _mm256_fmadd_ps(a, b, c); }
    static std::uint32_t greater(Floats a, Floats b) {
        return static_cast<std::uint32_t>(_mm256_movemask_ps(_mm256_cmp_ps(a, b, _CMP_GT_OQ)));
    }
    static Floats following(Floats these, Floats next) { return shuffled<1, 2, 3, 4, 5, 6, 7, 8>(these, next); }
    static void keep(Floats& a) { asm("" : "+x"(a)); }
};

} // namespace

extern constexpr Kernels avx2_kernels = FilterKernels<Avx2>::table();

} // namespace loopwise::reduce

#if defined(__clang__)
#pragma clang attribute pop
#endif
#endif
