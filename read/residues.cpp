#include "read/residues.hpp"

#include "read/refusal.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <map>

namespace loopwise::read {
namespace {

const FileAtom* bead_of(const Atoms& atoms, const std::string& name) {
    const FileAtom* best = nullptr;
    for (const FileAtom* atom : atoms) {
        if (atom->name != name) continue;
        if (best != nullptr && atom->location.empty() && best->location.empty())
            refuse("chain " + words::quoted(atom->chain) + ", residue " + atom->title() + ": two atoms " + atom->name +
                   " that are not alternate locations");
        if (best == nullptr || atom->occupancy > best->occupancy) best = atom;
    }
    return best;
}

/// Whether the beads of two blocks of atoms are at locations of which none is that of the other block.
bool are_alternate(const Atoms& known, const Atoms& block, const std::string& name) {
    bool any = false;
    for (const FileAtom* a : known)
        for (const FileAtom* b : block) {
            if (a->name != name || b->name != name) continue;
            if (a->location == b->location) return false;
            any = true;
        }
    return any;
}

/// Puts blocks of atoms that follow each other in a file together to residues.
class Sequence {
  public:
    explicit Sequence(std::string name) : name_(std::move(name)) {}

    void add(Atoms block) {
        const FileAtom& atom = *block.front();
        const auto [known, is_new] = known_.try_emplace({atom.residue, atom.position}, entries_.size());
        if (!is_new && are_alternate(entries_[known->second].atoms, block, name_)) {
            last_ = known->second;
            // One by one: g++ 14 warns of insert() here, without reason.
            for (const FileAtom* more : block) entries_[last_].atoms.push_back(more);
            return;
        }
        known->second = entries_.size();
        // A residue that only one of the alternate locations has follows the one before it there.
        const bool within = is_new && !atom.location.empty() && last_ + 1 < entries_.size() &&
                            atom.residue < entries_[last_ + 1].atoms.front()->residue;
        const std::size_t after = within ? entries_[last_].after : entries_.size();
        last_ = entries_.size();
        entries_.push_back({std::move(block), after});
    }

    std::vector<Residue> residues() {
        std::stable_sort(entries_.begin(), entries_.end(),
                         [](const Entry& a, const Entry& b) { return a.after < b.after; });
        std::vector<Residue> residues;
        for (Entry& entry : entries_)
            if (const FileAtom* bead = bead_of(entry.atoms, name_)) residues.push_back({std::move(entry.atoms), bead});
        return residues;
    }

  private:
    struct Entry {
        Atoms atoms;
        std::size_t after; ///< its place, or that of the one that it follows
    };

    std::string name_;
    std::vector<Entry> entries_;
    std::map<std::pair<polymer::ResidueId, std::string>, std::size_t> known_; // the last of each identifier
    std::size_t last_ = 0;                                                    // that a block was added to
};

} // namespace

std::vector<Residue> residues_of(const Atoms& atoms, const Selection& selection) {
    Sequence sequence(atom_name(selection.atom));
    for (std::size_t i = 0, next = 0; i < atoms.size(); i = next) {
        while (next < atoms.size() && atoms[next]->residue == atoms[i]->residue &&
               atoms[next]->position == atoms[i]->position)
            ++next;
        sequence.add(
            Atoms(atoms.begin() + static_cast<std::ptrdiff_t>(i), atoms.begin() + static_cast<std::ptrdiff_t>(next)));
    }
    return sequence.residues();
}

} // namespace loopwise::read
