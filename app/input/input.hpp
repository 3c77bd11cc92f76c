// From files to chains of C-alpha atoms.
#pragma once

#include "survey/molecule.hpp"

namespace loopwise {

/// The chains of a file: PDB or mmCIF by its extension, gzipped or not, otherwise chain text.
/// None is empty and all coordinates are finite. Throws std::runtime_error with the reason.
std::vector<NamedChain> read_chains(const std::string& path);

/// Cuts the chain to the stretch between two residues. Throws std::runtime_error when it lacks them.
void cut(NamedChain& chain, int first, int last);

/// The kinds of files that read_chains() takes.
const char* readable_formats();

} // namespace loopwise
