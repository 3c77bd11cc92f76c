// Residues, bonds and gaps in words.
#pragma once

#include "polymer/bonds.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace loopwise::words {

using Residues = std::vector<polymer::ResidueId>;

/// "52-121".
std::string range(const polymer::ResidueId& first, const polymer::ResidueId& last);

/// The residues that a bond joins: "52-61".
std::string bond_range(const polymer::OddBond& bond, const Residues& residues);

/// The residues of every bond, its length, and how many residues are missing: "52-61 (7.3, 8 missing)".
std::string bonds_text(const std::vector<polymer::OddBond>& bonds, const Residues& residues,
                       std::string_view separator);

/// "no gap", "1 gap", "2 gaps".
std::string number_of_gaps(const polymer::Bonds& bonds);

/// A warning that the chain's gaps were crossed by straight lines; empty if there are none.
std::string gap_warning(const polymer::Bonds& bonds);

} // namespace loopwise::words
