#include "read/chains.hpp"

#include "read/bonded.hpp"

#include <algorithm>
#include <map>

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

polymer::BeadKind kind_of(const Selection& selection) {
    if (selection.is_of_amino_acids()) return polymer::BeadKind::amino_acids;
    const std::string name = atom_name(selection.atom);
    return name == "P" || name.ends_with('\'') ? polymer::BeadKind::nucleotides : polymer::BeadKind::any;
}

bool is_of_polymer(const std::vector<Residue>& residues) {
    return residues.front().bead->polymer == FileAtom::Polymer::yes;
}

bool all_hetero(const std::vector<Residue>& residues) {
    return std::all_of(residues.begin(), residues.end(), [](const Residue& residue) { return residue.bead->hetero; });
}

/// Skips residues that are bonded to no other, by the rule of chains_of().
std::vector<Residue> polymer_of(std::vector<Residue> residues, const Selection& selection, polymer::NamedChain& chain) {
    if (residues.empty() || is_of_polymer(residues)) return residues;
    const std::vector<std::size_t> runs = bonded_runs(residues, selection);
    if (!any_bonded(runs)) return all_hetero(residues) ? std::vector<Residue>{} : residues;
    std::size_t last = runs.size();
    while (runs[last - 1] == 1) --last;
    std::vector<Residue> kept;
    auto from = residues.begin();
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto to = from + static_cast<std::ptrdiff_t>(runs[i]);
        if (runs[i] == 1 && (from->bead->hetero || i >= last))
            chain.notes.push_back(from->bead->title() + " skipped: not bonded to the chain, and no TER record");
        else
            kept.insert(kept.end(), from, to);
        from = to;
    }
    return kept;
}

bool is_chain_of_its_own(const std::vector<Residue>& residues, const Selection& selection) {
    if (residues.empty()) return false;
    if (is_of_polymer(residues)) return true;
    return any_bonded(bonded_runs(residues, selection)) && !all_hetero(residues);
}

class Assembly {
  public:
    explicit Assembly(const Selection& selection) : selection_(selection) {}

    void add(const Group& group) {
        Atoms of_polymer;
        for (const FileAtom* atom : group.atoms)
            if (atom->polymer != FileAtom::Polymer::no) of_polymer.push_back(atom);
        std::vector<Residue> residues = residues_of(of_polymer, selection_);
        const std::size_t part = parts_[group.chain] + 1;
        if (part > 1 && !is_chain_of_its_own(residues, selection_)) {
            ++parts_[group.chain];
            note_ligands(group.chain, residues);
            return;
        }
        polymer::NamedChain chain{group.chain, {}, {}, kind_of(selection_)};
        residues = polymer_of(std::move(residues), selection_, chain);
        if (residues.empty()) {
            if (is_worth_a_note(of_polymer)) without_bead_ += (without_bead_.empty() ? "" : ", ") + group.chain;
            return;
        }
        ++parts_[group.chain];
        if (part > 1) {
            chain.name.append(".").append(std::to_string(part));
            chain.notes.push_back("second chain named " + group.chain + ": read as " + chain.name);
        }
        const FileAtom &first = *residues.front().atoms.front(), &last = *residues.back().atoms.back();
        (first.of_segment ? chain.in_file.segment : chain.in_file.chain) = group.chain;
        chain.in_file.first_serial = first.serial;
        chain.in_file.last_serial = last.last_serial;
        for (const Residue& residue : residues) {
            const PointR3& place = residue.bead->place;
            chain.beads.push_back({place.x, place.y, place.z, 0});
            chain.residues.push_back(residue.bead->residue);
            chain.confidence.push_back(residue.bead->b_value);
        }
        chains_.push_back(std::move(chain));
    }

    std::vector<polymer::NamedChain> chains(std::vector<std::string>& notes) {
        if (!without_bead_.empty()) notes.push_back("chain " + without_bead_ + " skipped: no atom " + selection_.atom);
        for (polymer::NamedChain& chain : chains_)
            for (const polymer::NamedChain& other : chains_)
                if (&other != &chain && other.in_file.chain == chain.in_file.chain &&
                    other.in_file.segment == chain.in_file.segment)
                    chain.in_file.is_part = true;
        return std::move(chains_);
    }

  private:
    void note_ligands(const std::string& chain, const std::vector<Residue>& residues) {
        const auto named = std::find_if(chains_.rbegin(), chains_.rend(),
                                        [&](const polymer::NamedChain& known) { return known.name == chain; });
        if (named == chains_.rend()) return;
        for (const Residue& residue : residues)
            if (!residue.bead->hetero)
                named->notes.push_back(residue.bead->title() + " skipped: after the end of the chain");
    }

    /// A polymer without its beads is: a protein has N atoms, a nucleic acid P or O3'. Ligands are not.
    static bool is_worth_a_note(const Atoms& atoms) {
        return std::any_of(atoms.begin(), atoms.end(), [](const FileAtom* atom) {
            return !atom->hetero && (atom->name == "N" || atom->name == "O3'" || atom->name == "P");
        });
    }

    const Selection& selection_;
    std::vector<polymer::NamedChain> chains_;
    std::map<std::string, std::size_t> parts_; // by chain name
    std::string without_bead_;                 // names of chains
};

} // namespace

std::vector<polymer::NamedChain> chains_of(const Atoms& atoms, const Selection& selection,
                                           std::vector<std::string>& notes) {
    Assembly assembly(selection);
    for (const Group& group : groups_of(atoms)) assembly.add(group);
    return assembly.chains(notes);
}

} // namespace loopwise::read
