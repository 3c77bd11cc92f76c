#include "polymer/molecule.hpp"

#include <algorithm>

namespace loopwise::polymer {
namespace {

constexpr std::size_t fewest_beads_of_ring = 4; // a triangle and its first bead again

void number_from(Chain& chain, std::int32_t first) {
    for (ChainAtom& bead : chain) bead.id = first++;
}

} // namespace

bool is_ring(const NamedChain& chain) {
    const Chain& beads = chain.beads;
    return beads.size() >= fewest_beads_of_ring && beads.front().x == beads.back().x &&
           beads.front().y == beads.back().y && beads.front().z == beads.back().z;
}

void drop_repeated_end(NamedChain& ring) {
    ring.beads.pop_back();
    ring.residues.pop_back();
    if (!ring.confidence.empty()) ring.confidence.pop_back();
}

bool number_by_residues(NamedChain& chain) {
    const bool all = std::all_of(chain.residues.begin(), chain.residues.end(),
                                 [](const ResidueId& residue) { return residue.number().has_value(); });
    if (!all) {
        number_from(chain.beads, 1);
        return false;
    }
    for (std::size_t i = 0; i < chain.beads.size(); ++i) chain.beads[i].id = *chain.residues[i].number();
    return true;
}

void number_by_position(Chain& chain) { number_from(chain, 0); }

std::vector<ResidueId> residues_of(const Chain& beads) {
    std::vector<ResidueId> residues;
    residues.reserve(beads.size());
    for (const ChainAtom& bead : beads) residues.emplace_back(bead.id);
    return residues;
}

} // namespace loopwise::polymer
