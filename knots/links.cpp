#include "knots/links.hpp"

#include "knots/braid.hpp"
#include "knots/simplify.hpp"
#include "knots/table.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace loopwise::knots {
namespace {

struct TableLink {
    PrimeKnot link;
    Laurent jones;
    int linking_number; ///< its absolute value
};

/// Both hands of the links to table_link_crossings in Rolfsen's table, from their shortest braids.
std::vector<TableLink> computed() {
    struct Row {
        int crossings, strands;
        std::array<signed char, 6> word;
    };
    constexpr std::array<Row, 4> rows{{{0, 2, {}}, {2, 2, {1, 1}}, {4, 2, {1, 1, 1, 1}}, {5, 3, {1, -2, 1, -2, -2}}}};
    std::vector<TableLink> table;
    for (const Row& row : rows) {
        const Diagram diagram = closed_braid(row.strands, row.word);
        const int number = std::abs(diagram.linking_number(0, 1));
        for (auto& [hand, polynomial] : by_hand(*jones(diagram)))
            table.push_back({{row.crossings, 1, hand, 2}, std::move(polynomial), number});
    }
    return table;
}

/// The diagram of one of the loops alone.
Diagram only(Diagram diagram, int loop) {
    for (int c = 0; c < diagram.size(); ++c) {
        const Crossing& crossing = diagram.crossings[static_cast<std::size_t>(c)];
        if (crossing.under != loop || crossing.over != loop) diagram.dissolve(c);
    }
    diagram.renumber();
    for (Crossing& c : diagram.crossings) c.under = c.over = 0;
    diagram.loops = 1;
    return diagram;
}

/// Names two loops that come apart: without a crossing between them.
KnotName apart(const Diagram& diagram) {
    KnotName one = knot_of(only(diagram, 0)), other = knot_of(only(diagram, 1));
    if (!one.type.has_name()) return one;
    if (!other.type.has_name()) return other;
    return {KnotType::apart(std::move(one.type), std::move(other.type)), one.crossings + other.crossings,
            invariants_of(diagram)};
}

} // namespace

Linking linking_of(std::span<const std::span<const ChainAtom>> loops) {
    Linking result;
    if (loops.size() < 2) return result;
    std::vector<std::span<const ChainAtom>> polygons;
    for (const auto loop : loops) polygons.push_back(without_copy_of_first(loop));
    const View view = project_diagram(polygons);
    result.fault = view.fault;
    if (view.fault != PolygonFault::none) return result;
    const std::size_t count = loops.size();
    std::vector<int> sums(count * count, 0);
    for (const Crossing& c : view.diagram.crossings) {
        const auto low = static_cast<std::size_t>(std::min(c.under, c.over));
        const auto high = static_cast<std::size_t>(std::max(c.under, c.over));
        sums[low * count + high] += c.sign;
    }
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = i + 1; j < count; ++j) result.numbers.push_back(sums[i * count + j] / 2);
    return result;
}

KnotName link_of(Diagram diagram) {
    simplify(diagram, 0);
    const bool meet = std::any_of(diagram.crossings.begin(), diagram.crossings.end(),
                                  [](const Crossing& c) { return c.under != c.over; });
    if (!meet) return apart(diagram);
    static const std::vector<TableLink> table = computed();
    KnotName name{KnotType::too_complex(diagram.size()), diagram.size(), invariants_of(diagram)};
    const Laurent* const v = find_polynomial(name.invariants, "jones");
    if (!v) return name;
    const int number = std::abs(diagram.linking_number(0, 1));
    std::vector<KnotSum> candidates;
    for (const TableLink& known : table)
        if (known.jones == *v && known.linking_number == number) candidates.push_back({known.link});
    name.type = candidates.empty() ? KnotType::unknown(*v)
                                   : KnotType::named(std::move(candidates), diagram.size() <= table_link_crossings);
    return name;
}

KnotName link_of(std::span<const ChainAtom> one, std::span<const ChainAtom> other) {
    const std::array<std::span<const ChainAtom>, 2> loops{without_copy_of_first(one), without_copy_of_first(other)};
    View view = project_diagram(loops);
    if (view.fault == PolygonFault::none) return link_of(std::move(view.diagram));
    return {KnotType::no_polygon(view.fault)};
}

} // namespace loopwise::knots
