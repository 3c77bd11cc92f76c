#include "commands/operations.hpp"

#include "chain_text.hpp"
#include "commands/files.hpp"
#include "outputs.hpp"
#include "report/report.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iostream>

namespace loopwise {
namespace {

constexpr double longest_end_bond = 4.2; ///< of a C-alpha trace

bool same(const ChainAtom& a, const ChainAtom& b) {
    return a.id == b.id && a.x == b.x && a.y == b.y && a.z == b.z;
}

/// Beads go away or are appended, those that stay keep their order.
std::vector<std::string> labels_after(const NamedChain& before, const Chain& now) {
    std::vector<std::string> labels;
    std::size_t i = 0;
    for (const ChainAtom& bead : now) {
        const auto from = before.beads.begin() + static_cast<std::ptrdiff_t>(i);
        const auto found =
            std::find_if(from, before.beads.end(), [&](const ChainAtom& b) { return same(b, bead); });
        if (found == before.beads.end()) {
            labels.push_back(std::to_string(bead.id));
        } else {
            i = static_cast<std::size_t>(found - before.beads.begin());
            labels.push_back(before.labels[i++]);
        }
    }
    return labels;
}

NamedChain only_chain(const ChainArguments& given) {
    std::vector<Molecule> molecules = read_molecules(given.file, selection_of(given.selecting));
    if (molecules.size() > 1) throw std::runtime_error("has several models, name one with --model");
    std::vector<NamedChain>& chains = molecules.front().chains;
    tell_notes_in_chains(molecules.front());
    for (const NamedChain& chain : chains)
        for (const std::string& note : chain.notes)
            std::cerr << "loopwise: " << given.file << ": note: " << note << '\n';
    if (chains.size() == 1) {
        cut(chains.front(), given.selecting.first, given.selecting.last);
        return std::move(chains.front());
    }
    std::string names;
    for (const NamedChain& named : chains) names += ' ' + named.name;
    throw std::runtime_error("has several chains, name one with --chain:" + names);
}

void tell_gaps(const std::string& file, const NamedChain& chain) {
    const std::string warning = gap_warning(bonds_of(chain));
    if (!warning.empty()) std::cerr << "loopwise: " << file << ": note: " << warning << '\n';
}

/// A protein's trace as it stands in its file, with an ordinary bond at its end, where a closure leaves a long one.
void tell_open_ends(const std::string& file, const NamedChain& chain) {
    const Chain& beads = chain.beads;
    if (beads.size() < 3) return;
    const auto is_bond = [](const ChainAtom& a, const ChainAtom& b) {
        return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z) < longest_end_bond;
    };
    if (is_bond(beads[beads.size() - 2], beads.back()) && !is_bond(beads.back(), beads.front()))
        std::cerr << "loopwise: " << file
                  << ": note: taken as a loop: a straight line joins its ends; loopwise close closes a chain"
                     ", --open leaves it open\n";
}

/// A closure numbers what it appends after the beads that are there, so these get the numbers of their labels.
void number_by_labels(NamedChain& chain) {
    for (std::size_t i = 0; i < chain.beads.size(); ++i) {
        const std::string& label = chain.labels[i];
        const auto [end, error] =
            std::from_chars(label.data(), label.data() + label.size(), chain.beads[i].id);
        if (error != std::errc()) throw std::runtime_error("label " + label + " is no number of 32 bits");
    }
}

std::string extension_of(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    return extension;
}

bool is_pdb(const ChainArguments& given) {
    const std::string extension = extension_of(given.output);
    return given.pdb || extension == ".pdb" || extension == ".ent";
}

/// A file is what its name says.
void refuse_other_formats(const std::string& output) {
    const std::string extension = extension_of(output);
    for (const char* const other : {".cif", ".mmcif", ".gz", ".xyz", ".svg", ".html", ".json", ".csv"})
        if (extension == other)
            refuse_usage("--output: chain text or PDB is written, no " + std::string(other) + " file");
}

} // namespace

void declare(CLI::App& app, ChainArguments& into) {
    app.add_option("FILE", into.file, readable_formats())->required();
    declare_selecting(app, into.selecting);
    app.add_option("-o,--output", into.output,
                   "Write to this file, whole or not at all (default: standard output)")
        ->option_text("FILE");
    app.add_flag("--pdb", into.pdb,
                 "Write PDB with CONECT records (default where the output ends in .pdb or .ent)");
}

int edit_chain(const ChainArguments& given, const std::function<bool(Chain&)>& edit) {
    refuse_other_formats(given.output);
    refuse_harmful_outputs({given.file}, {{given.output, ""}});
    Progress progress(1);
    Complaints complaints(progress);
    complaints.attempt(given.file, [&] {
        NamedChain before = only_chain(given);
        if (given.tells_gaps) tell_gaps(given.file, before);
        if (given.tells_open_ends) tell_open_ends(given.file, before);
        number_by_labels(before);
        NamedChain after{before.name, before.beads, {}, before.kind, {}};
        const bool loop = edit(after.beads);
        after.labels = labels_after(before, after.beads);
        const std::string text = is_pdb(given) ? pdb_text(after, loop) : plain_text(after.beads);
        if (given.output.empty())
            std::cout << text;
        else
            complaints.attempt(given.output, [&] { write_whole(given.output, text); });
    });
    return complaints.exit_status();
}

} // namespace loopwise
