// PDB and mmCIF files, through gemmi.
#pragma once

#include "survey/molecule.hpp"

namespace loopwise {

/// The chains of the file's first model that have C-alpha atoms: the first alternate location of each
/// residue of a polymer, with its residue number. Throws with the reason.
std::vector<NamedChain> read_coordinates(const std::string& path, bool pdb);

} // namespace loopwise
