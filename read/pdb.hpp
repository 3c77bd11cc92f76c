// PDB files.
#pragma once

#include "read/atoms.hpp"

namespace loopwise::read {

/// The atoms that is_of_use() keeps in a PDB file. Lines must end in line feeds. Throws std::runtime_error
/// with the line and the reason if a field is invalid or the file is truncated.
FileAtoms read_pdb(std::string_view text, const Selection& selection);

/// Whether the text is PDB, whatever the name of its file.
bool looks_like_pdb(std::string_view text);

} // namespace loopwise::read
