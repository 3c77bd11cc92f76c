#include "read/bonded.hpp"

#include <algorithm>
#include <iterator>
#include <optional>

namespace loopwise::read {
namespace {

// A C-N bond is 1.33 angstroms long and an O3'-P bond 1.6; half as much again is no bond.
constexpr double longest_peptide_bond = 2.0, longest_phosphate_bond = 2.4;
constexpr double longest_step_of_amino_acids = 5.0, longest_step_of_others = 8.0;

/// The atoms that bond a residue to the next.
struct Joint {
    std::string_view from, to;
    double longest;
};
constexpr Joint joints[] = {{"C", "N", longest_peptide_bond}, {"O3'", "P", longest_phosphate_bond}};

/// The least distance from an atom of that name in one residue to one in another.
std::optional<double> least_distance(const Residue& a, std::string_view name_a, const Residue& b,
                                     std::string_view name_b) {
    std::optional<double> least;
    for (const FileAtom* from : a.atoms)
        for (const FileAtom* to : b.atoms)
            if (from->name == name_a && to->name == name_b) {
                const double d = Dist(from->place, to->place);
                least = std::min(d, least.value_or(d));
            }
    return least;
}

bool has_joint(const Residue& residue) {
    return std::any_of(residue.atoms.begin(), residue.atoms.end(),
                       [](const FileAtom* atom) { return shows_bonds(atom->name); });
}

} // namespace

double longest_step(const Selection& selection) {
    return selection.is_of_amino_acids() ? longest_step_of_amino_acids : longest_step_of_others;
}

bool are_bonded(const Residue& a, const Residue& b, const Selection& selection) {
    // A ligand without such atoms beside a residue that has them.
    if (has_joint(a) != has_joint(b) && (has_joint(a) ? b : a).bead->hetero) return false;
    for (const Joint& joint : joints)
        if (const auto d = least_distance(a, joint.from, b, joint.to)) return *d <= joint.longest;
    return Dist(a.bead->place, b.bead->place) <= longest_step(selection);
}

std::vector<std::size_t> bonded_runs(const std::vector<Residue>& residues, const Selection& selection) {
    std::vector<std::size_t> runs;
    for (std::size_t i = 0; i < residues.size(); ++i) {
        if (i == 0 || !are_bonded(residues[i - 1], residues[i], selection)) runs.push_back(0);
        ++runs.back();
    }
    return runs;
}

bool any_bonded(const std::vector<std::size_t>& runs) {
    return std::any_of(runs.begin(), runs.end(), [](std::size_t length) { return length > 1; });
}

bool shows_bonds(std::string_view atom) {
    return std::any_of(std::begin(joints), std::end(joints),
                       [&](const Joint& joint) { return atom == joint.from || atom == joint.to; });
}

} // namespace loopwise::read
