#include "knots/invariants.hpp"

#include <algorithm>
#include <array>

namespace loopwise::knots {
namespace {

/// An invariant's function as the table has it.
template <auto function> std::optional<InvariantValue> value_of(const Diagram& diagram) {
    if (auto value = function(diagram)) return InvariantValue(*std::move(value));
    return {};
}

} // namespace

std::span<const Invariant> all_invariants() {
    static constexpr std::array table{
        Invariant{"jones", "Jones polynomial", value_of<jones>},
        Invariant{"alexander", "Alexander polynomial", value_of<alexander>},
    };
    return table;
}

std::string text(const InvariantValue& value) {
    if (const auto* polynomial = std::get_if<Laurent>(&value)) return text(*polynomial);
    return std::to_string(std::get<std::int64_t>(value));
}

std::vector<ComputedInvariant> invariants_of(const Diagram& diagram) {
    std::vector<ComputedInvariant> computed;
    for (const Invariant& invariant : all_invariants()) {
        std::optional<InvariantValue> value = invariant.of(diagram);
        if (value)
            computed.push_back({&invariant, *std::move(value)});
        else if (computed.empty())
            break;
    }
    return computed;
}

std::vector<ComputedInvariant> product(std::span<const ComputedInvariant> a, std::span<const ComputedInvariant> b) {
    std::vector<ComputedInvariant> both;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        const auto* const one = std::get_if<Laurent>(&a[i].value);
        const auto* const other = std::get_if<Laurent>(&b[i].value);
        if (!one || !other)
            both.push_back({a[i].invariant, std::get<std::int64_t>(a[i].value) + std::get<std::int64_t>(b[i].value)});
        else if (std::optional<Laurent> polynomial = product(*one, *other))
            both.push_back({a[i].invariant, *std::move(polynomial)});
        else
            break;
    }
    return both;
}

const Laurent* find_polynomial(std::span<const ComputedInvariant> computed, std::string_view key) {
    for (const auto& [invariant, value] : computed)
        if (invariant->key == key) return std::get_if<Laurent>(&value);
    return nullptr;
}

} // namespace loopwise::knots
