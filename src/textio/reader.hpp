// Reading chains from text without messages.
#pragma once

#include "libloopwise.h"

#include <optional>
#include <string_view>

namespace loopwise::textio {

struct Reading {
    Chain chain;                          ///< empty when an atom repeats the one before
    std::optional<std::int32_t> repeated; ///< the identifier of that atom
};

/// Reads a file like ChainRead(). Returns nothing when it cannot be opened. Allocates.
std::optional<Reading> read_file(const char* name);

/// Reads a text like ChainRead_fromString(). Allocates.
Reading read_text(std::string_view text);

} // namespace loopwise::textio
