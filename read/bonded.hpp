// Which residues are bonded to each other.
#pragma once

#include "read/residues.hpp"

namespace loopwise::read {

/// The longest distance of bonded beads.
double longest_step(const Selection& selection);

/// Two neighbours are bonded if C and N are at most 2.0 angstroms apart, or O3' and P 2.4. If these atoms are
/// not given, the beads decide: C-alpha atoms at most 5.0 apart, others 8.0.
bool are_bonded(const Residue& a, const Residue& b, const Selection& selection);

/// The length of each run of bonded residues, in order. The lengths add up to all residues.
std::vector<std::size_t> bonded_runs(const std::vector<Residue>& residues, const Selection& selection);

/// Whether a bond from residue to residue ends at atoms of this name.
bool shows_bonds(std::string_view atom);

/// Whether some residue is bonded to the next.
bool any_bonded(const std::vector<std::size_t>& runs);

} // namespace loopwise::read
