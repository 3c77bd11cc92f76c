#include "fingerprint/knot_numbers.hpp"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <tuple>

namespace loopwise::fingerprint {

std::string counted_name(const knots::KnotName& name) {
    const bool has_name =
        name.status != knots::KnotStatus::bad_polygon && name.status != knots::KnotStatus::too_complex;
    return has_name ? name.text() : unnamed;
}

KnotCounts::const_iterator most_frequent(const KnotCounts& counts) {
    const auto rank = [](const auto& entry) {
        return std::tuple{entry.second, entry.first != unnamed, entry.first != unknot_name};
    };
    return std::max_element(counts.begin(), counts.end(),
                            [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
}

std::uint16_t KnotNumbers::number_of(const std::string& name) {
    const std::scoped_lock lock(mutex_);
    const auto [entry, is_new] = numbers_.try_emplace(name, static_cast<std::uint16_t>(numbers_.size()));
    if (is_new && numbers_.size() > std::numeric_limits<std::uint16_t>::max())
        throw std::length_error("more different knots than can be numbered");
    return entry->second;
}

std::pair<std::vector<std::string>, std::vector<std::uint16_t>> KnotNumbers::sorted() const {
    std::vector<std::string> names{unknot_name};
    std::vector<std::uint16_t> place(numbers_.size());
    for (const auto& [name, number] : numbers_) {
        if (name == unknot_name) continue;
        place[number] = static_cast<std::uint16_t>(names.size());
        names.push_back(name);
    }
    return {names, place};
}

} // namespace loopwise::fingerprint
