// Chain text and XYZ files.
#pragma once

#include "polymer/molecule.hpp"

#include <string_view>

namespace loopwise::read {

/// The chain of a text, or the chains 1, 2, ... that blank lines separate, with a line for each bead: x y z, or
/// id x y z. A title may precede them, or a count and a title as in XYZ files; then a line may also be the name of an
/// atom and x y z. Lines must end in line feeds. Throws std::runtime_error with the line and the reason.
polymer::Molecule read_chain_text(std::string_view text);

} // namespace loopwise::read
