#include "survey/loop.hpp"

#include <algorithm>

namespace loopwise::survey {

std::size_t own_beads(const Chain& reduced, std::size_t beads_of_chain) {
    const auto appended = std::partition_point(reduced.begin(), reduced.end(), [&](const ChainAtom& bead) {
        return static_cast<std::size_t>(bead.id) < beads_of_chain;
    });
    return static_cast<std::size_t>(appended - reduced.begin());
}

Loop loop_at(const Chain& closed, std::span<const std::size_t> positions, std::size_t beads_of_chain) {
    Loop loop;
    for (const std::size_t position : positions) {
        loop.beads.push_back(closed.at(position));
        loop.beads.back().id = static_cast<std::int32_t>(position);
    }
    loop.own = own_beads(loop.beads, beads_of_chain);
    return loop;
}

} // namespace loopwise::survey
