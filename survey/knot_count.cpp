#include "survey/knot_count.hpp"

#include <algorithm>

namespace loopwise::survey {

void count(std::vector<KnotCount>& counts, const knots::KnotType& knot) {
    const auto known = std::find_if(counts.begin(), counts.end(), [&](const KnotCount& k) { return k.knot == knot; });
    KnotCount& entry = known == counts.end() ? counts.emplace_back(KnotCount{knot}) : *known;
    ++entry.closures;
    const bool unknown = knot.status == knots::KnotStatus::unknown;
    if (unknown && std::find(entry.jones.begin(), entry.jones.end(), knot.jones) == entry.jones.end())
        entry.jones.push_back(knot.jones);
}

void sort(std::vector<KnotCount>& counts) {
    std::sort(counts.begin(), counts.end(), [](const KnotCount& a, const KnotCount& b) {
        return a.closures != b.closures ? a.closures > b.closures : a.knot < b.knot;
    });
}

std::size_t closures_of(const std::vector<KnotCount>& counts, const knots::KnotType& knot) {
    const auto known = std::find_if(counts.begin(), counts.end(), [&](const KnotCount& k) { return k.knot == knot; });
    return known == counts.end() ? 0 : known->closures;
}

std::size_t all_closures(const std::vector<KnotCount>& counts) {
    std::size_t closures = 0;
    for (const KnotCount& count : counts) closures += count.closures;
    return closures;
}

} // namespace loopwise::survey
