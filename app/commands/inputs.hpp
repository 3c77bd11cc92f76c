// Which files a subcommand reads, and what of them.
#pragma once

#include "app/command_line.hpp"
#include "app/report/report.hpp"
#include "polymer/molecule.hpp"
#include "read/selection.hpp"

namespace loopwise::app {

struct Selecting {
    read::Selection selection;
    std::optional<polymer::ResidueId> first, last; ///< of the subchain that every chain is cut to

    std::optional<double> least_confidence; ///< of the residues that are kept

    /// Cuts the chain, then leaves out residues of a low confidence.
    void cut(polymer::NamedChain& chain) const;
};

struct Inputs : Selecting {
    std::vector<std::string> files;
    const Format* format = nullptr;
};

void declare_selecting(CommandLine& line, Selecting& into);
/// One or more files, the options above and one for each format of the report.
void declare_inputs(CommandLine& line, Inputs& into);

/// By default as many as the processor runs at once.
void declare_threads(CommandLine& line, unsigned& into);

/// What a chain is called in messages: the file, its model and its name.
std::string label_of(const polymer::Molecule& molecule);
std::string label_of(const polymer::Molecule& molecule, const polymer::NamedChain& chain);

/// Copies the notes about a file to each of its chains.
void tell_notes_in_chains(polymer::Molecule& molecule);

} // namespace loopwise::app
