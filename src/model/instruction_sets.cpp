#include "src/model/instruction_sets.hpp"

#if defined(LOOPWISE_CHOOSE_INSTRUCTIONS)
#include <cstdlib>
#include <string_view>
#endif

namespace loopwise::model {

namespace {

#if defined(__x86_64__)
constexpr std::array<const char*, all_instruction_sets> names{"plain", "sse2", "avx2", "avx512"};
constexpr std::size_t first_that_fuses = 2;
#else
constexpr std::array<const char*, 2> names{"plain", "neon"};
constexpr std::size_t first_that_fuses = 1;
#endif

} // namespace

const char* name(InstructionSet set) { return names[static_cast<std::size_t>(set)]; }

bool fuses(InstructionSet set) { return static_cast<std::size_t>(set) >= first_that_fuses; }

std::span<const InstructionSet> available_instruction_sets() {
    static constexpr auto all = [] {
        std::array<InstructionSet, all_instruction_sets> sets{};
        for (std::size_t i = 0; i < sets.size(); ++i) sets[i] = static_cast<InstructionSet>(i);
        return sets;
    }();
#if defined(__x86_64__)
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return std::span(all).first(2);
    if (!__builtin_cpu_supports("avx512f")) return std::span(all).first(3);
#endif
    return all;
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
