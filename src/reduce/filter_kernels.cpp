// The versions of the filter for the instruction sets of x86-64. Function attributes allow the instructions,
// so no file needs flags of its own; what runs is chosen by what the processor has.
#include "src/reduce/filter.hpp"

#include <cmath>
#include <limits>

#if defined(__x86_64__)
#include <immintrin.h>

namespace loopwise::reduce {
namespace {

namespace sse2 {
#define LANES 4
#define FOLLOWING(these, next) __builtin_shufflevector(these, next, 1, 2, 3, 4)
#define LOOPWISE_TARGET
#define GREATER(a, b) static_cast<std::uint32_t>(_mm_movemask_ps(_mm_cmpgt_ps(a, b)))
#define FUSED(a, b, c) ((a) * (b) + (c))
#include "src/reduce/filter_kernel.inl"
#include "src/reduce/group_kernel.inl"
#undef LANES
#undef FOLLOWING
#undef LOOPWISE_TARGET
#undef GREATER
#undef FUSED
} // namespace sse2

namespace avx2 {
#define LANES 8
#define FOLLOWING(these, next) __builtin_shufflevector(these, next, 1, 2, 3, 4, 5, 6, 7, 8)
#define LOOPWISE_TARGET __attribute__((target("avx2,fma")))
#define GREATER(a, b) static_cast<std::uint32_t>(_mm256_movemask_ps(_mm256_cmp_ps(a, b, _CMP_GT_OQ)))
#define FUSED(a, b, c) _mm256_fmadd_ps(a, b, c)
#include "src/reduce/filter_kernel.inl"
#include "src/reduce/group_kernel.inl"
#undef LANES
#undef FOLLOWING
#undef LOOPWISE_TARGET
#undef GREATER
#undef FUSED
} // namespace avx2

namespace avx512 {
#define LANES 16
// Of a shuffle GCC makes one that needs a row of numbers and overwrites one of the two.
#define FOLLOWING(these, next)                                                                               \
    reinterpret_cast<Floats>(_mm512_maskz_alignr_epi32(0xFFFF, reinterpret_cast<__m512i>(next),              \
                                                       reinterpret_cast<__m512i>(these), 1))
#define LOOPWISE_TARGET __attribute__((target("avx512f")))
#define GREATER(a, b) static_cast<std::uint32_t>(_mm512_cmp_ps_mask(a, b, _CMP_GT_OQ))
#define FUSED(a, b, c) _mm512_fmadd_ps(a, b, c)
#include "src/reduce/filter_kernel.inl"
#include "src/reduce/group_kernel.inl"
#undef LANES
#undef FOLLOWING
#undef LOOPWISE_TARGET
#undef GREATER
#undef FUSED
} // namespace avx512

} // namespace

#define LOOPWISE_KERNELS(set)                                                                                \
    { set::find_candidates, set::find_segments, set::find_boxes, set::find_directions, set::put_positions }

Kernels kernels(model::InstructionSet set) {
    static const model::Versions<Kernels> versions{{statement(model::InstructionSet::plain),
                                                    LOOPWISE_KERNELS(sse2), LOOPWISE_KERNELS(avx2),
                                                    LOOPWISE_KERNELS(avx512)}};
    return model::version_for(versions, set);
}

} // namespace loopwise::reduce

#else

namespace loopwise::reduce {

Kernels kernels(model::InstructionSet set) { return statement(set); }

} // namespace loopwise::reduce

#endif
