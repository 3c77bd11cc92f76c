#include "app/commands/edit_chain.hpp"

#include "app/errors.hpp"
#include "polymer/bonds.hpp"
#include "read/read.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"
#include "write/chain_text.hpp"
#include "write/whole_file.hpp"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace loopwise::app {
namespace {

bool same(const ChainAtom& a, const ChainAtom& b) { return a.id == b.id && a.x == b.x && a.y == b.y && a.z == b.z; }

/// The residues of the beads after an edit that removes beads or appends some.
std::vector<polymer::ResidueId> residues_after(const polymer::NamedChain& before, const Chain& now) {
    std::vector<polymer::ResidueId> residues;
    std::size_t i = 0;
    for (const ChainAtom& bead : now) {
        const auto from = before.beads.begin() + static_cast<std::ptrdiff_t>(i);
        const auto found = std::find_if(from, before.beads.end(), [&](const ChainAtom& b) { return same(b, bead); });
        if (found == before.beads.end()) {
            residues.emplace_back(bead.id);
        } else {
            i = static_cast<std::size_t>(found - before.beads.begin());
            residues.push_back(before.residues[i++]);
        }
    }
    return residues;
}

polymer::NamedChain only_chain(const ChainArguments& given) {
    std::vector<polymer::Molecule> molecules = read::read_molecules(given.file, given.selection);
    if (molecules.size() > 1) throw std::runtime_error("several models; choose one with --model");
    std::vector<polymer::NamedChain>& chains = molecules.front().chains;
    tell_notes_in_chains(molecules.front());
    for (const polymer::NamedChain& chain : chains)
        for (const std::string& note : chain.notes)
            std::cerr << "loopwise: " << given.file << ": note: " << note << '\n';
    if (chains.size() == 1) {
        given.cut(chains.front());
        return std::move(chains.front());
    }
    std::vector<std::string> names;
    for (const polymer::NamedChain& named : chains) names.push_back(named.name);
    throw std::runtime_error("several chains; choose one with --chain from " + words::listed(names));
}

void tell_gaps(const std::string& file, const polymer::NamedChain& chain) {
    const std::string warning = words::gap_warning(polymer::bonds_of(chain));
    if (!warning.empty()) std::cerr << "loopwise: " << file << ": note: " << warning << '\n';
}

/// An open chain ends with a bond of ordinary length, a closed one with a long segment.
void tell_open_ends(const std::string& file, const polymer::NamedChain& chain) {
    const Chain& beads = chain.beads;
    if (beads.size() < 3) return;
    const auto is_bond = [](const ChainAtom& a, const ChainAtom& b) {
        return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z) < polymer::longest_trace_bond;
    };
    if (is_bond(beads[beads.size() - 2], beads.back()) && !is_bond(beads.back(), beads.front()))
        std::cerr << "loopwise: " << file
                  << ": note: the chain is open; its ends are joined by a straight line. Use `loopwise close` or"
                     " `--open`\n";
}

/// Chain text is written with the numbers of the residues as ids.
void refuse_unnumbered(const polymer::NamedChain& chain) {
    for (const polymer::ResidueId& residue : chain.residues)
        if (!residue.number()) throw std::runtime_error("residue " + residue.text() + ": not a number of 32 bits");
}

using words::extension_of;

bool is_pdb(const ChainArguments& given) {
    const std::string extension = extension_of(given.output);
    return given.pdb || extension == ".pdb" || extension == ".ent";
}

/// The extension of the output must fit its format.
void refuse_other_formats(const std::string& output) {
    const std::string extension = extension_of(output);
    for (const char* const other : {".cif", ".mmcif", ".gz", ".xyz", ".svg", ".html", ".json", ".csv"})
        if (extension == other) refuse_usage("--output: expected chain text or PDB, not " + std::string(other));
}

} // namespace

void declare(CommandLine& line, ChainArguments& into) {
    line.file(into.file, read::readable_formats());
    declare_selecting(line, into);
    line.text({"-o,--output", "FILE", "Write to this file, whole or not at all (default: -, the standard output)"},
              into.output);
    line.flag("--pdb", into.pdb, "Write PDB with CONECT records (default if the output ends in .pdb or .ent)");
}

int edit_chain(const ChainArguments& given, const std::function<bool(Chain&)>& edit) {
    refuse_other_formats(given.output);
    const std::string path = given.output == words::standard_output ? "" : given.output;
    write::refuse_harmful_outputs({given.file}, {{path, ""}});
    Progress progress(1);
    ErrorReporter errors(progress);
    errors.attempt(given.file, [&] {
        polymer::NamedChain before = only_chain(given);
        if (given.tells_gaps) tell_gaps(given.file, before);
        if (given.tells_open_ends) tell_open_ends(given.file, before);
        refuse_unnumbered(before);
        polymer::NamedChain after{before.name, before.beads, {}, before.kind, {}};
        const bool loop = edit(after.beads);
        after.residues = residues_after(before, after.beads);
        const std::string text = is_pdb(given) ? write::pdb_text(after, loop) : write::plain_text(after.beads);
        if (path.empty())
            std::cout << text;
        else
            errors.attempt(path, [&] { write::write_whole(path, text); });
    });
    return errors.exit_status();
}

} // namespace loopwise::app
