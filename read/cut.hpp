// Cutting a chain at residues.
#pragma once

#include "polymer/molecule.hpp"

#include <optional>

namespace loopwise::read {

/// Cuts the chain to the subchain from one residue to another, both included, in either order. Without one,
/// the subchain ends where the chain does. A number includes all residues of that number, such as 52A; if it
/// lies in a gap, the subchain ends before the gap. With an insertion code it is one residue. Throws
/// std::runtime_error if the chain lacks it or has it twice, or if a number between the two is not in their range.
void cut(polymer::NamedChain& chain, const std::optional<polymer::ResidueId>& first,
         const std::optional<polymer::ResidueId>& last);

} // namespace loopwise::read
