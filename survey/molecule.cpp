#include "survey/molecule.hpp"

namespace loopwise {

std::vector<std::string> labels_of(const Chain& beads) {
    std::vector<std::string> labels;
    labels.reserve(beads.size());
    for (const ChainAtom& bead : beads) labels.push_back(std::to_string(bead.id));
    return labels;
}

} // namespace loopwise
