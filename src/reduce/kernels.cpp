// The kernels that every compiler option allows, and the choice among all kernels.
#include "src/reduce/kernels.hpp"

#if defined(__x86_64__)
#include <emmintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#endif
#include <cmath>

#include "src/reduce/filter_kernels.hpp"

namespace loopwise::reduce {
namespace {

/// For any processor: the compiler chooses the instructions.
struct Plain : Lanes<4> {
    static Floats multiply_add(Floats a, Floats b, Floats c) { return a * b + c; }
    static std::uint32_t greater(Floats a, Floats b) {
        const Ints bits = (a > b) & Ints{1, 2, 4, 8};
        return static_cast<std::uint32_t>(bits[0] | bits[1] | bits[2] | bits[3]);
    }
    static Floats following(Floats these, Floats next) { return shuffled<1, 2, 3, 4>(these, next); }
    static void keep(Floats&) {}
};
constexpr Kernels plain_kernels = FilterKernels<Plain>::table();

#if defined(__x86_64__)
struct Sse2 : Plain {
    static std::uint32_t greater(Floats a, Floats b) {
        return static_cast<std::uint32_t>(_mm_movemask_ps(_mm_cmpgt_ps(a, b)));
    }
    static void keep(Floats& a) { asm("" : "+x"(a)); }
};
constexpr Kernels sse2_kernels = FilterKernels<Sse2>::table();
#elif defined(__aarch64__)
struct Neon : Plain {
    static Floats multiply_add(Floats a, Floats b, Floats c) { return vfmaq_f32(c, a, b); }
    static std::uint32_t greater(Floats a, Floats b) {
        return vaddvq_u32(vandq_u32(vcgtq_f32(a, b), uint32x4_t{1, 2, 4, 8}));
    }
    static void keep(Floats& a) { asm("" : "+w"(a)); }
};
constexpr Kernels neon_kernels = FilterKernels<Neon>::table();
#endif

} // namespace

#if defined(__x86_64__)
extern const Kernels avx2_kernels, avx512_kernels;
#endif

const Kernels& kernels(model::InstructionSet set) {
    static constexpr model::Versions<const Kernels*> versions {
        &plain_kernels,
#if defined(__x86_64__)
            &sse2_kernels, &avx2_kernels, &avx512_kernels,
#elif defined(__aarch64__)
            &neon_kernels,
#endif
    };
    return *model::version_for(versions, set);
}

} // namespace loopwise::reduce
