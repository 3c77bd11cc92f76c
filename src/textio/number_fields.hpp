// Reading the numbers of a line.
#pragma once

#include "libloopwise.h"

#include <string_view>

namespace loopwise::textio {

/// Reads identifier, x, y and z of a line as a stream extracts them under the global locale. The first field
/// that is not a number ends the line, with the value that the extraction stores.
void read_fields(std::string_view line, ChainAtom& atom);

/// The same for lines that begin with four plain decimal numbers, under the classic locale. Returns false,
/// with the atom unchanged, for all other lines.
bool read_plain_fields(std::string_view line, ChainAtom& atom);

} // namespace loopwise::textio
