// `loopwise knot`: names closed polygons as they are.
#include "app/commands/command.hpp"
#include "app/commands/files.hpp"
#include "app/commands/selecting.hpp"
#include "knots/links.hpp"
#include "survey/methods.hpp"
#include "words/residues.hpp"

#include <iostream>

namespace loopwise::app {
namespace {

constexpr const char* footer =
    R"(A chain is taken as a closed polygon: a segment joins its last bead to its first. Nothing is reduced.

Examples:
  loopwise knot ring.txt              the knot, the crossings and the polynomials of a ring
  loopwise knot --open 0 chain.txt    of a chain, closed along direction 0 of 400
  loopwise knot --link rings.pdb      how the rings of a file are linked)";

/// Three beads are always a triangle: probably a mistake.
constexpr std::size_t fewest_beads = 4;

struct Arguments {
    std::vector<std::string> files;
    Selecting selecting;
    std::optional<std::size_t> open;
    bool link = false;
};

void declare(CLI::App& app, Arguments& into) {
    app.add_option("FILE", into.files, read::readable_formats())->required()->option_text("...");
    app.add_option("--open", into.open, "Close every chain by moving both ends out along this direction")
        ->check(CLI::Range(std::size_t{0}, survey::Method::standard()->most_closures - 1))
        ->option_text("0..399");
    declare_selecting(app, into.selecting);
    app.add_flag("--link", into.link, "Also say how the chains of a file are linked");
    app.footer(footer);
}

void show(const std::string& label, const knots::KnotName& name) {
    std::cout << label << ": " << text(name.type) << '\n';
    if (name.type.status == knots::KnotStatus::no_polygon) return;
    std::cout << "  crossings: " << name.crossings << '\n';
    for (const auto& [invariant, value] : name.invariants)
        std::cout << "  " << invariant->name << ": " << text(value) << '\n';
}

void show_links(const std::string& file, const std::vector<polymer::NamedChain>& chains) {
    std::vector<std::span<const ChainAtom>> loops;
    for (const polymer::NamedChain& named : chains) loops.emplace_back(named.beads);
    if (loops.size() == 2)
        show(file + ": chains " + chains[0].name + " and " + chains[1].name,
             knots::link_of(loops[0], loops[1]));
    const knots::Linking linking = knots::linking_of(loops);
    std::size_t pair = 0;
    for (std::size_t i = 0; i < loops.size(); ++i)
        for (std::size_t j = i + 1; j < loops.size() && pair < linking.numbers.size(); ++j, ++pair)
            std::cout << "  linking number of " << chains[i].name << " and " << chains[j].name << ": "
                      << linking.numbers[pair] << '\n';
}

void show_notes(const std::string& label, const std::vector<std::string>& notes) {
    for (const std::string& note : notes) std::cout << label << ": note: " << note << '\n';
}

/// Whether every polygon of the molecule could be looked at.
bool one_molecule(polymer::Molecule& molecule, const Arguments& given) {
    show_notes(label_of(molecule), molecule.notes);
    bool good = true;
    for (polymer::NamedChain& named : molecule.chains) {
        show_notes(label_of(molecule), named.notes);
        read::cut(named, given.selecting.first, given.selecting.last);
        const std::string warning = words::gap_warning(polymer::bonds_of(named));
        if (polymer::is_ring(named))
            polymer::drop_repeated_end(named);
        else if (given.open)
            survey::Method::standard()->close_chain(named.beads, {.closure = *given.open});
        const std::string label = label_of(molecule, named);
        if (named.beads.size() < fewest_beads) {
            std::cout << label << ": not named: fewer than four beads\n";
            good = false;
            continue;
        }
        const knots::KnotName name = knots::knot_of(named.beads);
        show(label, name);
        if (given.open && !warning.empty()) std::cout << "  " << warning << '\n';
        good = good && name.type.status != knots::KnotStatus::no_polygon;
    }
    if (given.link) show_links(label_of(molecule), molecule.chains);
    return good;
}

bool one_file(const std::string& file, const Arguments& given) {
    bool good = true;
    for (polymer::Molecule& molecule : read::read_molecules(file, selection_of(given.selecting)))
        good = one_molecule(molecule, given) && good;
    return good;
}

int run(const Arguments& given) {
    refuse_second_input(given.files);
    Progress progress(given.files.size());
    ErrorReporter errors(progress);
    bool good = true;
    for (const std::string& file : given.files)
        errors.attempt(file, [&] { good = one_file(file, given) && good; });
    const int status = errors.exit_status();
    return good ? status : exit_failure;
}

} // namespace

Action declare_knot(CLI::App& command) {
    const auto given = std::make_shared<Arguments>();
    declare(command, *given);
    return [given] { return run(*given); };
}

} // namespace loopwise::app
