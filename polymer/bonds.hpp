// The bonds of a chain, and its gaps.
#pragma once

#include "polymer/molecule.hpp"

namespace loopwise::polymer {

/// Lengths of a bond between C-alpha atoms, in angstroms; as CheckDistancesBetweenAtoms().
inline constexpr double shortest_trace_bond = 3.4, longest_trace_bond = 4.2;
inline constexpr double usual_trace_bond = 3.8;

/// Two neighbours in a chain whose distance is not that of a bond.
struct OddBond {
    std::size_t bead = 0; ///< the first of the two
    double length = 0.0;
    std::size_t missing = 0; ///< residue numbers that the two leave out
};

struct Bonds {
    double longest = 0.0;       ///< of a bond; longer ones are gaps
    std::vector<OddBond> gaps;  ///< residues are missing here
    std::vector<OddBond> close; ///< shorter than a bond between C-alpha atoms; see may_be_cis()
    double usual = 0.0;         ///< a C-alpha trace: 3.8 angstroms; other chains: the median bond

    /// Residue numbers that all gaps leave out.
    std::size_t missing() const;
};

/// The rule of bonds. In a C-alpha trace, which is a chain of amino acids or one whose median bond has the
/// length of one, a bond is 3.4 to 4.2 angstroms long. In any other chain a gap is longer than 1.5 times the
/// median bond.
Bonds bonds_of(const NamedChain& chain);

/// Whether a short bond of a C-alpha trace may be that of a cis peptide, which is about 3.0 angstroms long.
bool may_be_cis(double length);

} // namespace loopwise::polymer
