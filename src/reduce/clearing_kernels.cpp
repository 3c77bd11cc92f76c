// The versions of find_doubts_plain() for the instruction sets of x86-64. Function attributes allow the
// instructions, so no file needs flags of its own; what runs is chosen by what the processor has.
#include "reduce/clearing.hpp"

#include <array>
#include <limits>

#if defined(__x86_64__)
#include <immintrin.h>

namespace loopwise {
namespace {

namespace sse2 {
#define LANES 4
#define LOOPWISE_TARGET
#define GREATER(a, b) static_cast<std::uint64_t>(_mm_movemask_ps(_mm_cmpgt_ps(a, b)))
#define FUSED(a, b, c) ((a) * (b) + (c))
#include "reduce/clearing_kernel.inl"
#undef FUSED
#undef LANES
#undef LOOPWISE_TARGET
#undef GREATER
} // namespace sse2

namespace avx2 {
#define LANES 8
#define LOOPWISE_TARGET __attribute__((target("avx2,fma")))
#define GREATER(a, b) static_cast<std::uint64_t>(_mm256_movemask_ps(_mm256_cmp_ps(a, b, _CMP_GT_OQ)))
#define FUSED(a, b, c) _mm256_fmadd_ps(a, b, c)
#include "reduce/clearing_kernel.inl"
#undef FUSED
#undef LANES
#undef LOOPWISE_TARGET
#undef GREATER
} // namespace avx2

namespace avx512 {
#define LANES 16
#define LOOPWISE_TARGET __attribute__((target("avx512f")))
#define GREATER(a, b) static_cast<std::uint64_t>(_mm512_cmp_ps_mask(a, b, _CMP_GT_OQ))
#define FUSED(a, b, c) _mm512_fmadd_ps(a, b, c)
#include "reduce/clearing_kernel.inl"
#undef FUSED
#undef LANES
#undef LOOPWISE_TARGET
#undef GREATER
} // namespace avx512

} // namespace

std::span<const InstructionSet> instruction_sets() {
    static constexpr std::array<InstructionSet, 4> all{{{"plain", find_doubts_plain, find_doubts_plain},
                                                        {"sse2", sse2::find_doubts, find_doubts_plain},
                                                        {"avx2", avx2::find_doubts, find_doubts_fused},
                                                        {"avx512", avx512::find_doubts, find_doubts_fused}}};
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return std::span(all).first(2);
    if (!__builtin_cpu_supports("avx512f")) return std::span(all).first(3);
    return all;
}

} // namespace loopwise

#else

namespace loopwise {

std::span<const InstructionSet> instruction_sets() {
    static constexpr std::array<InstructionSet, 1> plain{{{"plain", find_doubts_plain, find_doubts_plain}}};
    return plain;
}

} // namespace loopwise

#endif
