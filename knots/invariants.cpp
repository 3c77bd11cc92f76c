#include "knots/invariants.hpp"

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

const Laurent* find_polynomial(std::span<const ComputedInvariant> computed, std::string_view key) {
    for (const auto& [invariant, value] : computed)
        if (invariant->key == key) return std::get_if<Laurent>(&value);
    return nullptr;
}

} // namespace loopwise::knots
