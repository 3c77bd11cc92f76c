// Chain text and XYZ files.
#pragma once

#include "polymer/molecule.hpp"

#include <string_view>

namespace loopwise::read {

/// The chain of a text: a line for each bead, of x y z, or of id x y z. Before them may stand a title, or,
/// as in XYZ files, how many they are and a title; then a line may also be the name of an atom and x y z.
/// Lines may end in any way. Throws std::runtime_error with the line and the reason.
polymer::Molecule read_chain_text(std::string_view text);

} // namespace loopwise::read
