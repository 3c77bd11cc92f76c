#include "app/commands/inputs.hpp"

#include "polymer/confidence.hpp"
#include "read/cut.hpp"
#include "read/read.hpp"
#include "survey/plan.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <thread>

namespace loopwise::app {
namespace {

void add_chains(const std::string& option, read::Selection& selection) {
    for (std::string_view names = option;;) {
        const std::size_t comma = names.find(',');
        selection.chains.emplace_back(names.substr(0, comma));
        if (selection.chains.back().empty()) refuse_usage("--chain: expected a chain name");
        if (comma == std::string_view::npos) return;
        names.remove_prefix(comma + 1);
    }
}

} // namespace

void Selecting::cut(polymer::NamedChain& chain) const {
    read::cut(chain, first, last);
    if (least_confidence) polymer::drop_below(chain, *least_confidence);
}

void declare_selecting(CommandLine& line, Selecting& into) {
    line.values({"--chain", "NAME,...", "Only the chains with these names"},
                [&into](const std::string& names) { add_chains(names, into.selection); });
    line.value({"--model", "N|all", "The model with this number, or all (default: the first)"},
               [&into](const std::string& model) {
                   if (model != read::every_model && !decimal<std::uint32_t>(model))
                       refuse_usage("--model: expected a number or all, not '" + model + "'");
                   into.selection.model = model;
               });
    line.text({"--atom", "NAME", "The atom of a residue to take (default CA)"}, into.selection.atom);
    const auto residue = [&line](const ValueOption& option, std::optional<polymer::ResidueId>& id) {
        line.value(option, [&id](const std::string& text) { id = polymer::ResidueId::parse(text); });
    };
    residue({"--first", "ID", "Cut every chain: first residue, such as 82 or 82A"}, into.first);
    residue({"--last", "ID", "Cut every chain: last residue"}, into.last);
    const auto confidence = [&](const char* name, bool is, const char* help) {
        line.flag(
            name, [&into, is] { into.selection.confidence = is; }, help);
    };
    confidence("--confidence", true, "The B column is the confidence of a prediction (default: as the file says)");
    confidence("--no-confidence", false, "The B column is no confidence, whatever the file says");
    line.exclusive({"--confidence", "--no-confidence"});
    line.number<double>({"--min-confidence", "X", "Leave out residues below this confidence, 0 to 100"},
                        {0.0, polymer::full_confidence}, into.least_confidence);
}

void declare_inputs(CommandLine& line, Inputs& into) {
    line.files(into.files, read::readable_formats());
    declare_selecting(line, into);
    declare_formats(line, into.format);
}

void declare_threads(CommandLine& line, unsigned& into) {
    into = std::max(1U, std::thread::hardware_concurrency());
    line.number<unsigned>({"--threads", "N", "Threads (default: all); the output is the same for any number"},
                          {1, survey::most_threads}, into);
}

std::string label_of(const polymer::Molecule& molecule) {
    return words::printable(molecule.file + (molecule.model.empty() ? "" : ", model " + molecule.model));
}

std::string label_of(const polymer::Molecule& molecule, const polymer::NamedChain& chain) {
    return label_of(molecule) + (chain.name.empty() ? "" : ": chain " + words::printable(chain.name));
}

void tell_notes_in_chains(polymer::Molecule& molecule) {
    for (polymer::NamedChain& chain : molecule.chains)
        chain.notes.insert(chain.notes.begin(), molecule.notes.begin(), molecule.notes.end());
}

} // namespace loopwise::app
