#include "fingerprint/knot_numbers.hpp"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <tuple>

namespace loopwise::fingerprint {

const knots::KnotType& counted_as(const knots::KnotType& knot) {
    static const knots::KnotType unnamed;
    return knot.has_name() ? knot : unnamed;
}

const survey::KnotCount& most_frequent(const KnotCounts& counts) {
    const auto rank = [](const survey::KnotCount& count) {
        return std::tuple{count.closures, count.knot.has_name(), !count.knot.is_unknot()};
    };
    return *std::max_element(counts.begin(), counts.end(), [&](const survey::KnotCount& a, const survey::KnotCount& b) {
        return rank(a) != rank(b) ? rank(a) < rank(b) : b.knot < a.knot;
    });
}

std::uint16_t KnotNumbers::number_of(const knots::KnotType& knot) {
    const std::scoped_lock lock(mutex_);
    const auto [entry, is_new] = numbers_.try_emplace(knot, static_cast<std::uint16_t>(numbers_.size()));
    if (is_new && numbers_.size() > std::numeric_limits<std::uint16_t>::max())
        throw std::length_error("more different knots than can be numbered");
    return entry->second;
}

std::vector<knots::KnotType> KnotNumbers::by_number() const {
    std::vector<knots::KnotType> knots(numbers_.size());
    for (const auto& [knot, number] : numbers_) knots[number] = knot;
    return knots;
}

std::pair<std::vector<knots::KnotType>, std::vector<std::uint16_t>> KnotNumbers::sorted() const {
    std::vector<knots::KnotType> knots;
    for (const auto& [knot, number] : numbers_) knots.push_back(knot);
    std::sort(knots.begin(), knots.end(), [](const knots::KnotType& a, const knots::KnotType& b) {
        return a.is_unknot() || b.is_unknot() ? a.is_unknot() && !b.is_unknot() : a < b;
    });
    std::vector<std::uint16_t> place(knots.size());
    for (std::size_t i = 0; i < knots.size(); ++i) place[numbers_.at(knots[i])] = static_cast<std::uint16_t>(i);
    return {std::move(knots), std::move(place)};
}

} // namespace loopwise::fingerprint
