#include "words/residues.hpp"

#include "words/numbers.hpp"
#include "words/text.hpp"

namespace loopwise::words {

std::string range(const polymer::ResidueId& first, const polymer::ResidueId& last) {
    return first.text() + '-' + last.text();
}

std::string bond_range(const polymer::OddBond& bond, const Residues& residues) {
    return range(residues[bond.bead], residues[bond.bead + 1]);
}

std::string bonds_text(const std::vector<polymer::OddBond>& bonds, const Residues& residues,
                       std::string_view separator) {
    constexpr int digits = 3;
    std::vector<std::string> texts;
    for (const polymer::OddBond& bond : bonds)
        texts.push_back(bond_range(bond, residues) + " (" + general(bond.length, digits) +
                        (bond.missing > 0 ? ", " + std::to_string(bond.missing) + " missing)" : ")"));
    return joined(texts, separator);
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
