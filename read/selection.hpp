// What of a file is read.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace loopwise::read {

inline constexpr const char* every_model = "all";

struct Selection {
    std::vector<std::string> chains;  ///< names; empty: all chains
    std::string model;                ///< a number in the file, or every_model; empty: the first
    std::string atom = "CA";          ///< the atom that stands for a residue, the bead
    std::optional<bool> confidence{}; ///< whether the B column is one; none: as the file says

    bool is_of_amino_acids() const { return atom == "CA"; }
};

} // namespace loopwise::read
