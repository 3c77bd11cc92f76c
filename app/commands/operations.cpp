#include "commands/operations.hpp"

#include "chain_text.hpp"
#include "commands/files.hpp"

#include <algorithm>
#include <iostream>

namespace loopwise {
namespace {

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
    std::vector<NamedChain> chains =
        chains_asked_for(given.file == "-" ? "/dev/stdin" : given.file, given.chain);
    if (chains.size() == 1) return std::move(chains.front());
    std::string names;
    for (const NamedChain& named : chains) names += ' ' + named.name;
    throw std::runtime_error("has several chains, name one with --chain:" + names);
}

bool is_pdb(const ChainArguments& given) {
    return given.pdb || given.output.ends_with(".pdb") || given.output.ends_with(".ent");
}

} // namespace

void declare(CLI::App& app, ChainArguments& into) {
    app.add_option("FILE", into.file, readable_formats() + std::string("; - reads text from standard input"))
        ->required();
    app.add_option("--chain", into.chain, "The chain of this name")->option_text("NAME");
    app.add_option("-o,--output", into.output,
                   "Write to this file, whole or not at all (default: standard output)")
        ->option_text("FILE");
    app.add_flag("--pdb", into.pdb,
                 "Write PDB with CONECT records (default where the output ends in .pdb or .ent)");
}

int edit_chain(const ChainArguments& given, const std::function<bool(Chain&)>& edit) {
    Progress progress(1);
    Complaints complaints(progress);
    complaints.attempt(given.file, [&] {
        const NamedChain before = only_chain(given);
        NamedChain after{before.name, before.beads, {}};
        const bool loop = edit(after.beads);
        after.labels = labels_after(before, after.beads);
        const std::string text = is_pdb(given) ? pdb_text(after, loop) : plain_text(after.beads);
        if (given.output.empty())
            std::cout << text;
        else
            complaints.attempt(given.output, [&] { write_whole(given.output, text); });
    });
    return complaints.any() || !written_to_stdout() ? exit_failure : 0;
}

} // namespace loopwise
