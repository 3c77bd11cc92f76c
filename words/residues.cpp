#include "words/residues.hpp"

#include "words/numbers.hpp"

namespace loopwise::words {

std::string range(const polymer::ResidueId& first, const polymer::ResidueId& last) {
    return first.text() + '-' + last.text();
}

std::string bond_text(const polymer::OddBond& bond, const Residues& residues) {
    constexpr int digits = 3;
    return range(residues[bond.bead], residues[bond.bead + 1]) + " (" + general(bond.length, digits) +
           (bond.missing > 0 ? ", " + std::to_string(bond.missing) + " missing)" : ")");
}

std::string gaps_text(const polymer::Bonds& bonds, const Residues& residues, const char* separator) {
    std::string text;
    for (const polymer::OddBond& gap : bonds.gaps)
        text += (text.empty() ? "" : separator) + bond_text(gap, residues);
    return text;
}

std::string number_of_gaps(const polymer::Bonds& bonds) {
    return bonds.gaps.empty() ? "no gap" : counted(bonds.gaps.size(), "gap");
}

std::string gap_warning(const polymer::Bonds& bonds) {
    if (bonds.gaps.empty()) return "";
    return counted(bonds.gaps.size(), "gap") +
           (bonds.gaps.size() == 1 ? " crossed by a straight line" : " crossed by straight lines") +
           (bonds.missing() > 0 ? " (" + counted(bonds.missing(), "residue") + " missing)" : "") +
           ": missing residues could change the result";
}

} // namespace loopwise::words
