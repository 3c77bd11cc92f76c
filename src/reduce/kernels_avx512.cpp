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
    /// For a plain shuffle GCC uses an instruction that needs a vector of indices and overwrites an operand.
    static Floats following(Floats these, Floats next) {
        return reinterpret_cast<Floats>(
            _mm512_maskz_alignr_epi32(0xFFFF, reinterpret_cast<__m512i>(next), reinterpret_cast<__m512i>(these), 1));
    }
    static void keep(Floats& a) { asm("" : "+v"(a)); }

    /// Transposes rows of x, y, z and zero, eight atoms at a time. The loop of Lanes takes a third longer.
    static void put_positions(const Frame& frame, std::span<const ChainAtom> atoms, float* x, float* y, float* z) {
        const auto [cx, cy, cz] = frame.centre;
        const __m512d scale = _mm512_set1_pd(frame.scale);
        const __m512d scaled_centre = __m512d{cx, cy, cz, 0, cx, cy, cz, 0} * scale;
        std::size_t j = 0;
        for (; j + 8 <= atoms.size(); j += 8) {
            const Floats a = four_rows(&atoms[j], scale, scaled_centre);
            const Floats b = four_rows(&atoms[j + 4], scale, scaled_centre);
            const auto xs = shuffled<0, 4, 8, 12, 16, 20, 24, 28>(a, b);
            const auto ys = shuffled<1, 5, 9, 13, 17, 21, 25, 29>(a, b);
            const auto zs = shuffled<2, 6, 10, 14, 18, 22, 26, 30>(a, b);
            __builtin_memcpy(x + j, &xs, sizeof xs);
            __builtin_memcpy(y + j, &ys, sizeof ys);
            __builtin_memcpy(z + j, &zs, sizeof zs);
        }
        Lanes::put_positions(frame, atoms.subspan(j), x + j, y + j, z + j);
    }

  private:
    static Floats four_rows(const ChainAtom* atoms, __m512d scale, __m512d scaled_centre) {
        static_assert(sizeof(ChainAtom) == 4 * sizeof(double));
        constexpr __mmask8 coordinates = 0b01110111;
        const auto two_rows = [&](const ChainAtom* from) {
            const __m512d rows = _mm512_loadu_pd(&from->x);
            return __builtin_convertvector(_mm512_maskz_fmsub_pd(coordinates, rows, scale, scaled_centre), __m256);
        };
        return Lanes<8>::shuffled<0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15>(two_rows(atoms),
                                                                                        two_rows(atoms + 2));
    }
};

} // namespace

extern constexpr Kernels avx512_kernels = FilterKernels<Avx512>::table();

} // namespace loopwise::reduce

#if defined(__clang__)
#pragma clang attribute pop
#endif
#endif
