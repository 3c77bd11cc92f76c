// Periodic boxes, and chains that they cut.
#pragma once

#include "polymer/molecule.hpp"

#include <array>
#include <optional>

namespace loopwise::read {

/// The three edges of a periodic box.
using Box = std::array<PointR3, 3>;

/// The box with edges of three lengths, in angstroms, and three angles in degrees; none where they mean no box.
std::optional<Box> box_with(const std::array<double, 6>& cell);

/// Whether the chain has gaps, and all of them are bonds between a residue and the next in another copy of the box.
bool is_wrapped(const polymer::NamedChain& chain, const Box& box);

} // namespace loopwise::read
