// The options that choose what of a file is worked on; most subcommands have them.
#pragma once

#include "read/cut.hpp"
#include "read/read.hpp"

#include <CLI/CLI.hpp>

namespace loopwise::app {

struct Selecting {
    std::vector<std::string> chains; ///< names, also several with commas between
    std::string model, atom = read::Selection{}.atom;
    std::optional<polymer::ResidueId> first, last; ///< of the subchain that every chain is cut to
};

void declare_selecting(CLI::App& app, Selecting& into);

/// Refuses a command line whose names or numbers cannot be.
read::Selection selection_of(const Selecting& given);

} // namespace loopwise::app
