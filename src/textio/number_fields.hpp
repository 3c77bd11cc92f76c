// Reading the numbers of a line.
#pragma once

#include "libloopwise.h"

#include <string_view>

namespace loopwise::textio {

/// Reads identifier, x, y and z of a line into the atom as a stream of the line would extract them under
/// the global locale: the first field that does not read ends it, with what the extraction stores then.
void read_fields(std::string_view line, ChainAtom& atom);

/// The same for lines of four plain decimal numbers and nothing unusual, under the classic locale.
/// False, with the atom as it was, for all others.
bool read_plain_fields(std::string_view line, ChainAtom& atom);

} // namespace loopwise::textio
