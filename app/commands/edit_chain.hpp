// What the subcommands have in common that edit one chain: it is read, edited and written.
#pragma once

#include "app/commands/inputs.hpp"

namespace loopwise::app {

/// Where a chain comes from and where it goes.
struct ChainArguments : Selecting {
    std::string file, output;
    bool pdb = false;
    bool tells_gaps = false;      ///< a closure crosses them
    bool tells_open_ends = false; ///< the chain is taken for a loop
};

void declare(CommandLine& line, ChainArguments& into);

/// Reads the chain, lets edit(chain) change it and writes it. `edit` returns whether the chain is a loop after that;
/// what it throws is told. Beads keep their residues; new beads are numbered by their identifiers.
int edit_chain(const ChainArguments& given, const std::function<bool(Chain&)>& edit);

} // namespace loopwise::app
