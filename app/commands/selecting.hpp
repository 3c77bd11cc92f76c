// Options that select chains, a model and residues of a file.
#pragma once

#include "read/cut.hpp"
#include "read/read.hpp"

#include <CLI/CLI.hpp>

namespace loopwise::app {

struct Selecting {
    std::vector<std::string> chains; ///< names; one text may hold several, separated by commas
    std::string model, atom = read::Selection{}.atom;
    std::optional<polymer::ResidueId> first, last; ///< of the subchain that every chain is cut to
};

void declare_selecting(CLI::App& app, Selecting& into);

/// Refuses invalid names and numbers.
read::Selection selection_of(const Selecting& given);

} // namespace loopwise::app
