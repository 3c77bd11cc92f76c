#include "read/residues.hpp"

#include "read/refusal.hpp"
#include "words/text.hpp"

namespace loopwise::read {
namespace {

const FileAtom* bead_of(std::span<const FileAtom* const> atoms, const Selection& selection) {
    const FileAtom* best = nullptr;
    for (const FileAtom* atom : atoms) {
        if (atom->name != atom_name(selection.atom)) continue;
        if (best != nullptr && atom->location.empty() && best->location.empty())
            refuse("chain " + words::quoted(atom->chain) + ", residue " + atom->title() + ": two atoms " + atom->name +
                   " that are not alternate locations");
        if (best == nullptr || atom->occupancy > best->occupancy) best = atom;
    }
    return best;
}

} // namespace

std::vector<Residue> residues_of(const Atoms& atoms, const Selection& selection) {
    std::vector<Residue> residues;
    for (std::size_t i = 0, next = 0; i < atoms.size(); i = next) {
        while (next < atoms.size() && atoms[next]->residue == atoms[i]->residue) ++next;
        const std::span<const FileAtom* const> own(atoms.data() + i, next - i);
        if (const FileAtom* bead = bead_of(own, selection)) residues.push_back({own, bead});
    }
    return residues;
}

} // namespace loopwise::read
