// What the subcommands for single operations on a chain have in common.
#pragma once

#include "app/commands/command.hpp"
#include "app/commands/selecting.hpp"

namespace loopwise::app {

/// Where a chain comes from and where it goes.
struct ChainArguments {
    std::string file, output;
    Selecting selecting;
    bool pdb = false;
    bool tells_gaps = false;      ///< whether gaps of the chain matter for what is done
    bool tells_open_ends = false; ///< whether the chain should be a loop
};

void declare(CLI::App& app, ChainArguments& into);

/// Reads the chain, has it edited and writes it. `edit` says whether it is a loop then; what it throws is told.
/// Labels follow the beads: beads that are new are labelled by their identifiers.
int edit_chain(const ChainArguments& given, const std::function<bool(Chain&)>& edit);

} // namespace loopwise::app
