// PDB files.
#pragma once

#include "read/atoms.hpp"

namespace loopwise::read {

/// The atoms of use in a PDB file with line feeds as line ends. Throws std::runtime_error with the line and
/// the reason when a field is no number, and when the file shows that it is cut off.
FileAtoms read_pdb(std::string_view text, const Selection& selection);

/// Whether a text without a telling name is such a file.
bool looks_like_pdb(std::string_view text);

} // namespace loopwise::read
