// The instruction set that all kernels use, chosen when the first one runs.
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace loopwise::model {

/// In order of speed. Plain C++ runs on every processor.
#if defined(__x86_64__)
enum class InstructionSet : std::size_t { plain, sse2, avx2, avx512 };
constexpr std::size_t all_instruction_sets = 4;
#elif defined(__aarch64__)
enum class InstructionSet : std::size_t { plain, neon };
constexpr std::size_t all_instruction_sets = 2;
#else
enum class InstructionSet : std::size_t { plain };
constexpr std::size_t all_instruction_sets = 1;
#endif

const char* name(InstructionSet set);

/// Whether the set rounds a product and a sum once.
bool fuses(InstructionSet set);

/// The sets that this processor has, the plain one first and the fastest last.
std::span<const InstructionSet> available_instruction_sets();

/// The fastest set. A build with tests takes the one that the environment variable LOOPWISE_INSTRUCTIONS
/// names, if the processor has it.
InstructionSet chosen_instruction_set();

/// The versions of a kernel, one for each set.
template <class Kernel> using Versions = std::array<Kernel, all_instruction_sets>;

template <class Kernel> Kernel version_for(const Versions<Kernel>& versions, InstructionSet set) {
    return versions[static_cast<std::size_t>(set)];
}

} // namespace loopwise::model
