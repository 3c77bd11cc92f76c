// From files to chains.
#pragma once

#include "polymer/molecule.hpp"
#include "read/selection.hpp"

namespace loopwise::read {

/// The molecules of a PDB file, an mmCIF file or a chain text, gzipped or not; of the standard input for
/// words::standard_input. One molecule for each selected model. No chain is empty, coordinates are at most
/// largest_coordinate, and neighbouring beads are at different places. The identifiers of beads are those of
/// polymer::number_by_residues(). Throws std::runtime_error with the reason.
std::vector<polymer::Molecule> read_molecules(const std::string& path, const Selection& selection);

/// The same for the bytes of a file of that name.
std::vector<polymer::Molecule> molecules_in(const std::string& path, std::string bytes, const Selection& selection);

/// Beyond it a bond of a few angstroms would be lost in rounding.
inline constexpr double largest_coordinate = 1e9;

/// The formats of read_molecules(), for help texts.
const char* readable_formats();

} // namespace loopwise::read
