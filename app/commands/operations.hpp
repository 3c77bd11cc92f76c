// Subcommands that edit one chain.
#pragma once

#include "app/commands/command.hpp"
#include "app/commands/selecting.hpp"

namespace loopwise::app {

/// The input and output of a chain.
struct ChainArguments {
    std::string file, output;
    Selecting selecting;
    bool pdb = false;
    bool tells_gaps = false;      ///< whether gaps could change the result
    bool tells_open_ends = false; ///< whether the chain should be closed
};

void declare(CLI::App& app, ChainArguments& into);

/// Reads the chain, calls `edit` and writes the chain. `edit` returns whether the chain is a loop; what it
/// throws is reported. Beads keep their residues; the residue of a new bead is its identifier.
int edit_chain(const ChainArguments& given, const std::function<bool(Chain&)>& edit);

} // namespace loopwise::app
