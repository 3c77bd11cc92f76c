// What is surveyed: chains with the names that people know them by.
#pragma once

#include "libloopwise.h"

#include <string>
#include <vector>

namespace loopwise::polymer {

/// What the beads of a chain stand for.
enum class BeadKind { any, amino_acids, nucleotides };

struct NamedChain {
    std::string name; ///< as the file has it; chain text has no names
    Chain beads;
    std::vector<std::string> labels; ///< one for each bead: its identifier, or residue number and letter
    BeadKind kind = BeadKind::any;
    std::vector<std::string> notes{}; ///< what its reader had to decide, for people to judge
};

/// What is surveyed at once: one chain, or all components of a structure.
struct Molecule {
    std::string file;
    std::vector<NamedChain> chains;
    std::string model{};              ///< empty where the file has but one
    std::vector<std::string> notes{}; ///< about the whole
};

/// Two neighbours of a chain that are no ordinary bond apart.
struct OddBond {
    std::size_t bead = 0; ///< the first of the two
    double length = 0.0;
    std::size_t missing = 0; ///< residues that the numbers between the two labels leave out
};

struct Bonds {
    double longest = 0.0;       ///< what still counts as a bond
    std::vector<OddBond> gaps;  ///< the longer ones: something is missing
    std::vector<OddBond> close; ///< those too short between C-alpha atoms; see may_be_cis()
};

/// The bonds of a C-alpha trace, which is a chain of amino acids or one whose middle bond is like one, are
/// 3.4 to 4.2 angstroms long. Any other chain is its own measure: a gap is 1.5 times its middle bond.
Bonds bonds_of(const NamedChain& chain);

/// Whether a bond of a C-alpha trace may be that of a cis peptide, about 3.0 angstroms long.
bool may_be_cis(double length);

/// Whether the chain is stored as a ring: its first bead once more at its end.
bool is_ring(const NamedChain& chain);

/// Removes the repeated bead of a ring.
void drop_repeated_end(NamedChain& ring);

/// The identifiers of the beads as their labels.
std::vector<std::string> labels_of(const Chain& beads);

} // namespace loopwise::polymer
