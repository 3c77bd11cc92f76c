// Cutting a chain to a subchain by residues.
#pragma once

#include "polymer/molecule.hpp"

#include <optional>

namespace loopwise::read {

/// Cuts the chain to the subchain between two residues, both included, in either order; without one, to the end
/// of the chain. A number stands for all residues of that number, 52A too, or the nearest one inside. An
/// insertion code means one residue. Throws std::runtime_error if the chain lacks it.
void cut(polymer::NamedChain& chain, const std::optional<polymer::ResidueId>& first,
         const std::optional<polymer::ResidueId>& last);

} // namespace loopwise::read
