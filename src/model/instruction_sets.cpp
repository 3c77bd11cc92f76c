#include "src/model/instruction_sets.hpp"

#if defined(LOOPWISE_CHOOSE_INSTRUCTIONS)
#include <cstdlib>
#include <string_view>
#endif

namespace loopwise::model {

const char* name(InstructionSet set) {
    constexpr std::array names{"plain", "sse2", "avx2", "avx512"};
    return names[static_cast<std::size_t>(set)];
}

std::span<const InstructionSet> available_instruction_sets() {
    static constexpr std::array all{InstructionSet::plain, InstructionSet::sse2, InstructionSet::avx2,
                                    InstructionSet::avx512};
#if defined(__x86_64__)
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return std::span(all).first(2);
    if (!__builtin_cpu_supports("avx512f")) return std::span(all).first(3);
    return all;
#else
    return std::span(all).first(1);
#endif
}

InstructionSet chosen_instruction_set() {
    static const InstructionSet chosen = [] {
        const std::span<const InstructionSet> available = available_instruction_sets();
#if defined(LOOPWISE_CHOOSE_INSTRUCTIONS)
        if (const char* const wanted = std::getenv("LOOPWISE_INSTRUCTIONS"))
            for (const InstructionSet set : available)
                if (std::string_view(wanted) == name(set)) return set;
#endif
        return available.back();
    }();
    return chosen;
}

} // namespace loopwise::model
