// Identifiers of atoms: queries, and the numbering of atoms that a closure adds.
#pragma once

#include "libloopwise.h"

namespace loopwise::model {

/// id + step, wrapping around in two's complement instead of overflowing.
constexpr std::int32_t id_after(std::int32_t id, std::uint32_t step = 1) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(id) + step);
}

} // namespace loopwise::model
