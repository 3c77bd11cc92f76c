// `loopwise check`: looks for gaps.
#include "app/commands/command.hpp"
#include "app/commands/files.hpp"
#include "app/commands/selecting.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"

#include <iostream>

namespace loopwise::app {
namespace {

struct Arguments {
    std::vector<std::string> files;
    Selecting selecting;
};

/// Whether the chain has neither a gap nor two neighbours that are too close.
bool check(const std::string& label, const polymer::NamedChain& chain) {
    const polymer::Bonds bonds = polymer::bonds_of(chain);
    std::cout << label << ": " << words::counted(chain.beads.size(), "bead") << ", "
              << words::number_of_gaps(bonds) << '\n';
    for (const std::string& note : chain.notes) std::cout << "  note: " << note << '\n';
    for (const auto& [list, what] : {std::pair{&bonds.gaps, "gap"}, {&bonds.close, "short"}})
        for (const polymer::OddBond& bond : *list) {
            std::cout << "  " << what << ": " << chain.residues[bond.bead].text() << " to "
                      << chain.residues[bond.bead + 1].text() << ", " << words::general(bond.length);
            if (bond.missing > 0) std::cout << ", " << bond.missing << " missing";
            if (list == &bonds.close && polymer::may_be_cis(bond.length))
                std::cout << ", as short as a cis peptide";
            std::cout << '\n';
        }
    return bonds.gaps.empty() && bonds.close.empty();
}

int run(const Arguments& given) {
    refuse_second_input(given.files);
    Progress progress(given.files.size());
    ErrorReporter errors(progress);
    bool sound = true;
    for (const std::string& file : given.files)
        errors.attempt(file, [&] {
            for (polymer::Molecule& molecule : read::read_molecules(file, selection_of(given.selecting))) {
                tell_notes_in_chains(molecule);
                for (polymer::NamedChain& chain : molecule.chains) {
                    read::cut(chain, given.selecting.first, given.selecting.last);
                    sound &= check(label_of(molecule, chain), chain);
                }
            }
        });
    const int status = errors.exit_status();
    return sound ? status : exit_failure;
}

} // namespace

Action declare_check(CLI::App& app) {
    const auto given = std::make_shared<Arguments>();
    app.add_option("FILE", given->files, read::readable_formats())->required()->option_text("...");
    declare_selecting(app, given->selecting);
    app.footer(
        "Neighbours of a C-alpha trace should be 3.4 to 4.2 apart; any other chain is its own measure.\n"
        "Exit status 1 also where a chain has a gap or neighbours that are too close.");
    return [given] { return run(*given); };
}

} // namespace loopwise::app
