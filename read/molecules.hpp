// From the atoms of a file to molecules: models and chains are selected.
#pragma once

#include "read/atoms.hpp"

namespace loopwise::read {

/// One molecule for each selected model, with the selected chains in the order of the file. Throws
/// std::runtime_error with the reason if the file lacks one.
std::vector<polymer::Molecule> molecules_of(const FileAtoms& file, const Selection& selection);

/// Removes the chains that are not selected. Throws std::runtime_error with the reason if one is missing.
void select_chains(std::vector<polymer::NamedChain>& chains, const Selection& selection);

} // namespace loopwise::read
