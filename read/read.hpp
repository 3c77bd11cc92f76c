// From files to chains with one bead for each residue, or whatever else their beads are.
#pragma once

#include "polymer/molecule.hpp"
#include "read/selection.hpp"

namespace loopwise::read {

/// What is read of a file: PDB, mmCIF or chain text, by its name or else its content, gzipped or not; the
/// standard input for standard_input. One molecule for each model asked for. No chain is empty; coordinates are
/// finite and no larger than largest_coordinate; no two neighbours are at one place. Throws
/// std::runtime_error with the reason.
std::vector<polymer::Molecule> read_molecules(const std::string& path, const Selection& selection);

/// The same from what a file of that name holds.
std::vector<polymer::Molecule> molecules_in(const std::string& path, std::string bytes,
                                            const Selection& selection);

/// Beyond it nothing of the field is, and a bond of a few units would be lost in rounding.
inline constexpr double largest_coordinate = 1e9;

/// The kinds of files that read_molecules() takes.
const char* readable_formats();

} // namespace loopwise::read
