#include "read/chains.hpp"

#include "read/bonded.hpp"
#include "read/draft.hpp"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace loopwise::read {
namespace {

/// Atoms with one chain name and one part.
struct Group {
    std::string chain;
    Atoms atoms;
};

std::vector<Group> groups_of(const Atoms& atoms) {
    std::vector<Group> groups;
    std::map<std::pair<std::string, std::string>, std::size_t> known;
    for (const FileAtom* atom : atoms) {
        const auto [place, is_new] = known.try_emplace({atom->chain, atom->part}, groups.size());
        if (is_new) groups.push_back({atom->chain, {}});
        groups[place->second].atoms.push_back(atom);
    }
    return groups;
}

/// Splits residues where their numbers begin again without a bond: there another molecule begins.
std::vector<std::vector<Residue>> pieces_of(std::vector<Residue> residues, const Selection& selection) {
    std::vector<std::size_t> starts{0};
    std::set<polymer::ResidueId> known;
    std::size_t fall = 0; // where the numbers last fell without a bond
    const auto closes_ring = [&](std::size_t i) {
        const PointR3 &first = residues[starts.back()].bead->place, &place = residues[i].bead->place;
        return i + 1 == residues.size() && place.x == first.x && place.y == first.y && place.z == first.z;
    };
    for (std::size_t i = 0; i < residues.size(); ++i) {
        if (i > starts.back() && residues[i].id() < residues[i - 1].id() && !closes_ring(i) &&
            !are_bonded(residues[i - 1], residues[i], selection))
            fall = i;
        if (known.insert(residues[i].id()).second || fall <= starts.back()) continue;
        starts.push_back(fall);
        known.clear();
        for (std::size_t k = fall; k <= i; ++k) known.insert(residues[k].id());
    }
    starts.push_back(residues.size());
    std::vector<std::vector<Residue>> pieces;
    for (std::size_t i = 0; i + 1 < starts.size(); ++i)
        pieces.emplace_back(std::make_move_iterator(residues.begin() + static_cast<std::ptrdiff_t>(starts[i])),
                            std::make_move_iterator(residues.begin() + static_cast<std::ptrdiff_t>(starts[i + 1])));
    return pieces;
}

class Assembly {
  public:
    explicit Assembly(const Selection& selection) : selection_(selection) {}

    void add(const Group& group) {
        Atoms of_polymer;
        for (const FileAtom* atom : group.atoms)
            if (atom->polymer != FileAtom::Polymer::no) of_polymer.push_back(atom);
        bool is_polymer = !of_polymer.empty() && of_polymer.front()->polymer == FileAtom::Polymer::yes;
        for (std::vector<Residue>& piece : pieces_of(residues_of(of_polymer, selection_), selection_)) {
            add(group.chain, std::move(piece), is_polymer);
            is_polymer = false; // of what follows the end of a chain bonds decide
        }
        if (latest_.contains(group.chain) || !is_worth_a_note(of_polymer)) return;
        without_bead_ += (without_bead_.empty() ? "" : ", ") + group.chain;
    }

    std::vector<polymer::NamedChain> chains(std::vector<std::string>& notes) {
        if (!without_bead_.empty()) notes.push_back("chain " + without_bead_ + " skipped: no atom " + selection_.atom);
        std::vector<polymer::NamedChain> chains;
        std::map<std::string, std::size_t> parts; // by name
        for (Draft& draft : drafts_) {
            draft.place_loose();
            const std::size_t part = ++parts[draft.name()];
            chains.push_back(std::move(draft).chain(part));
        }
        return chains;
    }

  private:
    void add(const std::string& name, std::vector<Residue> residues, bool is_polymer) {
        const auto latest = latest_.find(name);
        if (latest != latest_.end()) residues = drafts_[latest->second].add(std::move(residues), is_polymer);
        if (residues.empty()) return;
        Draft draft(name, selection_);
        draft.begin(std::move(residues), is_polymer || latest != latest_.end());
        if (draft.empty()) return;
        latest_[name] = drafts_.size();
        drafts_.push_back(std::move(draft));
    }

    /// A polymer without its beads is: a protein has N atoms, a nucleic acid P or O3'. Ligands are not.
    static bool is_worth_a_note(const Atoms& atoms) {
        return std::any_of(atoms.begin(), atoms.end(), [](const FileAtom* atom) {
            return !atom->hetero && (atom->name == "N" || atom->name == "O3'" || atom->name == "P");
        });
    }

    const Selection& selection_;
    std::vector<Draft> drafts_;
    std::map<std::string, std::size_t> latest_; // draft of a chain name
    std::string without_bead_;                  // names of chains
};

} // namespace

std::vector<polymer::NamedChain> chains_of(const Atoms& atoms, const Selection& selection,
                                           std::vector<std::string>& notes) {
    Assembly assembly(selection);
    for (const Group& group : groups_of(atoms)) assembly.add(group);
    return assembly.chains(notes);
}

} // namespace loopwise::read
