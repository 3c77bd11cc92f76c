// `loopwise knot`: names closed polygons as they are.
#include "app/commands/command.hpp"
#include "app/commands/run.hpp"
#include "app/report/knot_entry.hpp"
#include "polymer/bonds.hpp"
#include "survey/methods.hpp"
#include "words/residues.hpp"

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

struct Arguments : Inputs {
    std::optional<std::size_t> open;
    bool link = false;
};

/// Closes the chain where that is asked for, and names it.
PolygonEntry named(const polymer::Molecule& molecule, polymer::NamedChain& chain, const Arguments& given) {
    PolygonEntry entry(molecule, chain);
    if (given.open) entry.warning = words::gap_warning(polymer::bonds_of(chain));
    if (polymer::is_ring(chain))
        polymer::drop_repeated_end(chain);
    else if (given.open)
        survey::Method::standard()->close_chain(chain.beads, {.closure = *given.open});
    if (chain.beads.size() >= fewest_beads)
        entry.name = knots::knot_of(chain.beads);
    else
        entry.name.type = knots::KnotType::no_polygon(knots::PolygonFault::triangle);
    return entry;
}

LinkEntry linked(const polymer::Molecule& molecule) {
    LinkEntry entry(molecule);
    std::vector<std::span<const ChainAtom>> loops;
    for (const polymer::NamedChain& chain : molecule.chains) loops.emplace_back(chain.beads);
    if (loops.size() > 1) entry.name = knots::link_of(loops);
    const knots::Linking linking = knots::linking_of(loops);
    std::size_t pair = 0;
    for (std::size_t i = 0; i < loops.size(); ++i)
        for (std::size_t j = i + 1; j < loops.size() && pair < linking.pairs.size(); ++j, ++pair)
            entry.pairs.push_back({i, j, linking.pairs[pair], linking.numbers[pair]});
    return entry;
}

int run(const Arguments& given) {
    Run run(given, knot_head());
    return run.each_molecule([&](polymer::Molecule& molecule) {
        tell_notes_in_chains(molecule);
        for (polymer::NamedChain& chain : molecule.chains) {
            given.cut(chain);
            const PolygonEntry entry = named(molecule, chain, given);
            run.add(entry);
            if (entry.name.type.status == knots::KnotStatus::no_polygon) run.fail();
        }
        if (given.link) run.add(linked(molecule));
    });
}

} // namespace

Action declare_knot(CommandLine& line) {
    const auto given = std::make_shared<Arguments>();
    declare_inputs(line, *given);
    line.number<std::size_t>({"--open", "0..399", "Close every chain by moving both ends out along this direction"},
                             {0, survey::Method::standard()->most_closures - 1}, given->open);
    line.flag("--link", given->link, "Also say how the chains of a file are linked");
    line.footer(footer);
    return [given] { return run(*given); };
}

} // namespace loopwise::app
