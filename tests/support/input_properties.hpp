// What holds for every file that the program is given, each stated once; see properties.hpp.
#pragma once

#include <cstddef>
#include <string>

namespace properties {

/// What the program takes of a file is sound: beads with residues, in range, no neighbours at one place. The text
/// up to `cut` is refused, noted or a part of the chain, and all of it where the beads are counted.
void takes_text(const std::string& bytes, std::size_t cut);

/// The same of PDB and mmCIF. What was taken is written as a whole file of either format and cut off at `cut`: the
/// program refuses it, or takes the same chains.
void takes_structure(const std::string& bytes, std::size_t cut);

} // namespace properties
