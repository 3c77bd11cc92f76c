// mmCIF files, parsed by gemmi.
#pragma once

#include "read/atoms.hpp"

namespace loopwise::read {

/// The atoms that is_of_use() keeps in an mmCIF file. Lines must end in line feeds. Throws std::runtime_error
/// with the reason if the file is invalid or truncated.
FileAtoms read_mmcif(std::string_view text, const Selection& selection);

/// Whether the text is mmCIF, whatever the name of its file.
bool looks_like_mmcif(std::string_view text);

} // namespace loopwise::read
