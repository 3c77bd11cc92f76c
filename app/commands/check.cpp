// `loopwise check`: looks for gaps.
#include "app/commands/command.hpp"
#include "app/commands/run.hpp"
#include "app/report/confidence_values.hpp"
#include "app/report/json_values.hpp"
#include "polymer/bonds.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

#include <algorithm>

namespace loopwise::app {
namespace {

class CheckEntry final : public Entry {
  public:
    CheckEntry(const polymer::Molecule& molecule, const polymer::NamedChain& chain)
        : molecule_(molecule), chain_(chain), bonds_(polymer::bonds_of(chain)),
          confidence_(polymer::confidence_of(chain.confidence)) {}

    /// A cis peptide is no fault.
    bool is_sound() const {
        return bonds_.gaps.empty() &&
               std::all_of(bonds_.close.begin(), bonds_.close.end(),
                           [](const polymer::OddBond& bond) { return polymer::may_be_cis(bond.length); });
    }

    std::string text() const override {
        std::string text = label_of(molecule_, chain_) + ": " + words::counted(chain_.beads.size(), "bead") + ", " +
                           words::number_of_gaps(bonds_) + '\n';
        for (const std::string& note : chain_.notes) text += "  note: " + note + '\n';
        text += confidence_line(confidence_);
        for (const polymer::OddBond& gap : bonds_.gaps) text += line("gap", gap) + '\n';
        for (const polymer::OddBond& bond : bonds_.close)
            text += line("short", bond) + (polymer::may_be_cis(bond.length) ? ", as short as a cis peptide\n" : "\n");
        return text;
    }
    Json json() const override {
        return {{"file", molecule_.file},
                {"model", text_or_null(molecule_.model)},
                {"chain", chain_.name},
                {"beads", chain_.beads.size()},
                {"notes", chain_.notes},
                {"gaps", bonds_json(bonds_.gaps, chain_.residues)},
                {"short_bonds", bonds_json(bonds_.close, chain_.residues)},
                {"sound", is_sound()},
                {"confidence", confidence_json(confidence_)}};
    }
    std::vector<Row> rows() const override {
        Row row{molecule_.file,
                molecule_.model,
                chain_.name,
                std::to_string(chain_.beads.size()),
                words::bonds_text(bonds_.gaps, chain_.residues, " "),
                std::to_string(bonds_.missing()),
                words::bonds_text(bonds_.close, chain_.residues, " "),
                words::yes_or_no(is_sound()),
                words::joined(chain_.notes, "; ")};
        return {extended(std::move(row), confidence_row(confidence_))};
    }

  private:
    std::string line(const char* what, const polymer::OddBond& bond) const {
        return std::string("  ") + what + ": " + chain_.residues[bond.bead].text() + " to " +
               chain_.residues[bond.bead + 1].text() + ", " + words::general(bond.length) +
               (bond.missing > 0 ? ", " + std::to_string(bond.missing) + " missing" : "");
    }

    const polymer::Molecule& molecule_;
    const polymer::NamedChain& chain_;
    polymer::Bonds bonds_;
    std::optional<polymer::Confidence> confidence_;
};

int run(const Inputs& given) {
    Run run(given, {"check",
                    "",
                    {},
                    extended({"file", "model", "chain", "beads", "gaps", "missing", "short_bonds", "sound", "notes"},
                             confidence_columns())});
    return run.each_chain([&](const polymer::Molecule& molecule, const polymer::NamedChain& chain) {
        const CheckEntry entry(molecule, chain);
        run.add(entry);
        if (!entry.is_sound()) run.fail();
    });
}

} // namespace

Action declare_check(CommandLine& line) {
    const auto given = std::make_shared<Inputs>();
    declare_inputs(line, *given);
    line.footer("Neighbours in a C-alpha trace should be 3.4 to 4.2 apart. In any other chain a gap is longer\n"
                "than 1.5 times the median bond. The exit status is 1 also if a chain has a gap or neighbours\n"
                "that are too close, unless they are as close as in a cis peptide (2.7 to 3.4).");
    return [given] { return run(*given); };
}

} // namespace loopwise::app
