// What is surveyed: chains with the names that people know them by.
#pragma once

#include "libloopwise.h"

#include <string>
#include <vector>

namespace loopwise {

struct NamedChain {
    std::string name; ///< as the file has it; chain text has no names
    Chain beads;
    std::vector<std::string> labels; ///< one for each bead: its identifier, or residue number and letter
};

/// What is surveyed at once: one chain, or all components of a structure.
struct Molecule {
    std::string file;
    std::vector<NamedChain> chains;
};

/// The identifiers of the beads as their labels.
std::vector<std::string> labels_of(const Chain& beads);

} // namespace loopwise
