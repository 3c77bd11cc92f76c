#include "read/atoms.hpp"

#include "read/refusal.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <span>

namespace loopwise::read {
namespace {

// A C-N bond is 1.33 angstroms long and an O3'-P bond 1.6; half as much again is none.
constexpr double longest_peptide_bond = 2.0, longest_phosphate_bond = 2.4;
// Neighbours, where those atoms are not given.
constexpr double longest_step_of_amino_acids = 5.0, longest_step_of_others = 8.0;

/// The atoms by which a polymer goes on from a residue to the next.
struct Joint {
    std::string_view from, to;
    double longest;
};
constexpr Joint joints[] = {{"C", "N", longest_peptide_bond}, {"O3'", "P", longest_phosphate_bond}};

double distance(const PointR3& a, const PointR3& b) { return Dist(a, b); }

struct Residue {
    std::span<const FileAtom* const> atoms;
    const FileAtom* bead = nullptr; ///< null where the residue lacks it
};

using Atoms = std::vector<const FileAtom*>;

/// A chain of a model, or a molecule of that name after its TER.
struct Group {
    std::string chain;
    Atoms atoms;
};

std::string title_of(const FileAtom& atom) { return atom.residue_name + " " + atom.residue.text(); }

bool is_bead(const FileAtom& atom, const Selection& selection) {
    return atom.name == atom_name(selection.atom);
}

bool stand_for_amino_acids(const Selection& selection) { return selection.atom == "CA"; }

polymer::BeadKind kind_of(const Selection& selection) {
    if (stand_for_amino_acids(selection)) return polymer::BeadKind::amino_acids;
    const std::string name = atom_name(selection.atom);
    return name == "P" || name.ends_with('\'') ? polymer::BeadKind::nucleotides : polymer::BeadKind::any;
}

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

/// The atom of the highest occupancy; the first of equals.
const FileAtom* bead_of(std::span<const FileAtom* const> atoms, const Selection& selection) {
    const FileAtom* best = nullptr;
    for (const FileAtom* atom : atoms) {
        if (!is_bead(*atom, selection)) continue;
        if (best != nullptr && atom->location.empty() && best->location.empty())
            refuse("residue " + title_of(*atom) + " of chain " + shown(atom->chain) + " has two atoms " +
                   atom->name);
        if (best == nullptr || atom->occupancy > best->occupancy) best = atom;
    }
    return best;
}

/// Those that have a bead, in the order of the file.
std::vector<Residue> residues_of(const Atoms& atoms, const Selection& selection) {
    std::vector<Residue> residues;
    for (std::size_t i = 0, next = 0; i < atoms.size(); i = next) {
        while (next < atoms.size() && atoms[next]->residue == atoms[i]->residue) ++next;
        const std::span<const FileAtom* const> own(atoms.data() + i, next - i);
        if (const FileAtom* bead = bead_of(own, selection)) residues.push_back({own, bead});
    }
    return residues;
}

/// The least distance from an atom of that name in one residue to one in another.
std::optional<double> least_distance(const Residue& a, std::string_view name_a, const Residue& b,
                                     std::string_view name_b) {
    std::optional<double> least;
    for (const FileAtom* from : a.atoms)
        for (const FileAtom* to : b.atoms)
            if (from->name == name_a && to->name == name_b) {
                const double d = distance(from->place, to->place);
                least = std::min(d, least.value_or(d));
            }
    return least;
}

bool are_bonded(const Residue& a, const Residue& b, const Selection& selection) {
    for (const Joint& joint : joints)
        if (const auto d = least_distance(a, joint.from, b, joint.to)) return *d <= joint.longest;
    return distance(a.bead->place, b.bead->place) <=
           (stand_for_amino_acids(selection) ? longest_step_of_amino_acids : longest_step_of_others);
}

/// The bonded stretches: for each residue the number of its stretch.
std::vector<std::size_t> subchains_of(const std::vector<Residue>& residues, const Selection& selection) {
    std::vector<std::size_t> lengths;
    for (std::size_t i = 0; i < residues.size(); ++i) {
        if (i == 0 || !are_bonded(residues[i - 1], residues[i], selection)) lengths.push_back(0);
        ++lengths.back();
    }
    return lengths;
}

void note_left_out(polymer::NamedChain& chain, const FileAtom& bead) {
    chain.notes.push_back(title_of(bead) +
                          " is bonded to no other residue: left out, as no TER makes it a part");
}

/// Removes residues that are hardly parts of a polymer: single ones that are no ATOM, or that come last.
std::vector<Residue> polymer_of(std::vector<Residue> residues, const Selection& selection,
                                polymer::NamedChain& chain) {
    if (residues.empty() || residues.front().bead->polymer == FileAtom::Polymer::yes) return residues;
    const std::vector<std::size_t> lengths = subchains_of(residues, selection);
    if (*std::max_element(lengths.begin(), lengths.end()) < 2) { // a bead or a coarse trace: no bond tells
        const bool hetero = std::all_of(residues.begin(), residues.end(),
                                        [](const Residue& residue) { return residue.bead->hetero; });
        return hetero ? std::vector<Residue>{} : residues;
    }
    std::size_t last = lengths.size();
    while (lengths[last - 1] == 1) --last;
    std::vector<Residue> kept;
    std::size_t first = 0;
    for (std::size_t i = 0; i < lengths.size(); first += lengths[i++]) {
        const FileAtom& bead = *residues[first].bead;
        if (lengths[i] == 1 && (bead.hetero || i >= last))
            note_left_out(chain, bead);
        else
            kept.insert(kept.end(), residues.begin() + static_cast<std::ptrdiff_t>(first),
                        residues.begin() + static_cast<std::ptrdiff_t>(first + lengths[i]));
    }
    return kept;
}

/// A molecule after the TER of its chain is one of its own if it is bonded and not of HETATM alone.
bool is_polymer_after_another(const std::vector<Residue>& residues, const Selection& selection) {
    if (residues.empty()) return false;
    if (residues.front().bead->polymer == FileAtom::Polymer::yes) return true;
    const std::vector<std::size_t> lengths = subchains_of(residues, selection);
    return *std::max_element(lengths.begin(), lengths.end()) > 1 &&
           std::any_of(residues.begin(), residues.end(),
                       [](const Residue& residue) { return !residue.bead->hetero; });
}

class Assembly {
  public:
    explicit Assembly(const Selection& selection) : selection_(selection) {}

    std::vector<polymer::NamedChain> chains_of(const Atoms& atoms, std::vector<std::string>& notes) {
        for (const Group& group : groups_of(atoms)) add(group);
        if (!without_bead_.empty())
            notes.push_back("no atom " + selection_.atom + " in chain " + without_bead_ + ": left out");
        return std::move(chains_);
    }

  private:
    void add(const Group& group) {
        Atoms of_polymer;
        for (const FileAtom* atom : group.atoms)
            if (atom->polymer != FileAtom::Polymer::no) of_polymer.push_back(atom);
        std::vector<Residue> residues = residues_of(of_polymer, selection_);
        const std::size_t part = ++parts_[group.chain];
        if (part > 1 && !is_polymer_after_another(residues, selection_)) {
            note_ligands(group.chain, residues);
            return;
        }
        polymer::NamedChain chain{group.chain, {}, {}, kind_of(selection_)};
        residues = polymer_of(std::move(residues), selection_, chain);
        if (residues.empty()) {
            if (!of_polymer.empty()) note_without_bead(group.chain, of_polymer);
            --parts_[group.chain];
            return;
        }
        if (part > 1) {
            chain.name.append(".").append(std::to_string(part));
            chain.notes.push_back("chain " + group.chain + " begins once more after its end: chain " +
                                  chain.name);
        }
        for (const Residue& residue : residues) add(*residue.bead, chain);
        chains_.push_back(std::move(chain));
    }

    static void add(const FileAtom& bead, polymer::NamedChain& chain) {
        chain.beads.push_back({bead.place.x, bead.place.y, bead.place.z, 0});
        chain.residues.push_back(bead.residue);
    }

    void note_ligands(const std::string& chain, const std::vector<Residue>& residues) {
        const auto named =
            std::find_if(chains_.rbegin(), chains_.rend(),
                         [&](const polymer::NamedChain& known) { return known.name == chain; });
        if (named == chains_.rend()) return;
        for (const Residue& residue : residues)
            if (!residue.bead->hetero)
                named->notes.push_back(title_of(*residue.bead) +
                                       " comes after the end of the chain: left out");
    }

    /// Only whole polymers are worth a word: nucleotides have a P or an O3'.
    void note_without_bead(const std::string& chain, const Atoms& atoms) {
        const bool nucleic = std::any_of(atoms.begin(), atoms.end(), [](const FileAtom* atom) {
            return !atom->hetero && (atom->name == "O3'" || atom->name == "P");
        });
        const bool protein = std::any_of(atoms.begin(), atoms.end(), [](const FileAtom* atom) {
            return !atom->hetero && atom->name == "N";
        });
        if (nucleic || protein) without_bead_ += (without_bead_.empty() ? "" : ", ") + chain;
    }

    const Selection& selection_;
    std::vector<polymer::NamedChain> chains_;
    std::map<std::string, std::size_t> parts_; // of every chain
    std::string without_bead_;                 // chains
};

std::vector<std::string> models_of(const FileAtoms& file) {
    std::vector<std::string> models;
    for (const FileAtom& atom : file.atoms)
        if (models.empty() || models.back() != atom.model)
            if (std::find(models.begin(), models.end(), atom.model) == models.end())
                models.push_back(atom.model);
    return models;
}

/// Names in one line; of many only the first.
std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t most = 20;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
        text += (i == 0 ? "" : ", ") + (names[i].empty() ? "one without name" : names[i]);
    return names.size() > most ? text + " and " + std::to_string(names.size() - most) + " more" : text;
}

/// Keeps the chains asked for, in the order of the file.
void select_chains(std::vector<polymer::NamedChain>& chains, const Selection& selection) {
    if (selection.chains.empty()) return;
    std::vector<std::string> names;
    for (const polymer::NamedChain& chain : chains) names.push_back(chain.name);
    for (const std::string& name : selection.chains)
        if (std::find(names.begin(), names.end(), name) == names.end())
            refuse("has no chain " + shown(name) + "; there is " + listed(names));
    std::erase_if(chains, [&](const polymer::NamedChain& chain) {
        return std::find(selection.chains.begin(), selection.chains.end(), chain.name) ==
               selection.chains.end();
    });
}

polymer::Molecule molecule_of(const FileAtoms& file, const std::string& model, const Selection& selection) {
    Atoms atoms;
    for (const FileAtom& atom : file.atoms)
        if (atom.model == model) atoms.push_back(&atom);
    polymer::Molecule molecule;
    molecule.notes = file.notes;
    molecule.chains = Assembly(selection).chains_of(atoms, molecule.notes);
    if (molecule.chains.empty())
        refuse("holds no chain with an atom " + selection.atom +
               (stand_for_amino_acids(selection) ? "; for nucleic acids --atom P or --atom \"C4'\"" : ""));
    select_chains(molecule.chains, selection);
    return molecule;
}

} // namespace

std::string atom_name(std::string_view name) {
    std::string plain(name);
    std::replace(plain.begin(), plain.end(), '*', '\'');
    return plain;
}

bool is_of_use(std::string_view name, const Selection& selection) {
    return name == atom_name(selection.atom) ||
           std::any_of(std::begin(joints), std::end(joints),
                       [&](const Joint& j) { return name == j.from || name == j.to; });
}

std::vector<polymer::Molecule> molecules_of(const FileAtoms& file, const Selection& selection) {
    const std::vector<std::string> models = models_of(file);
    std::vector<std::string> asked = models;
    if (models.empty()) asked = {""};
    if (selection.model.empty())
        asked.resize(1);
    else if (selection.model != every_model) {
        if (std::find(models.begin(), models.end(), selection.model) == models.end())
            refuse("has no model " + selection.model + "; there is " + listed(models));
        asked = {selection.model};
    }
    std::vector<polymer::Molecule> molecules;
    for (const std::string& model : asked) {
        molecules.push_back(molecule_of(file, model, selection));
        if (models.size() == 1) continue;
        molecules.back().model = model;
        if (selection.model.empty())
            molecules.back().notes.push_back("model " + model + " of " + std::to_string(models.size()) +
                                             ": --model takes another, or all");
    }
    return molecules;
}

} // namespace loopwise::read
