// PDB and mmCIF files, through gemmi.
#ifndef CLOSURE_SURVEY_COORDINATES_HPP
#define CLOSURE_SURVEY_COORDINATES_HPP

#include "input.hpp"

/// The chains of the file's first model that have C-alpha atoms: the first alternate location of each
/// residue of a polymer, with its residue number. Throws with the reason.
std::vector<NamedChain> read_coordinates(const std::string& path, bool pdb);

#endif
