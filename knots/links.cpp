#include "knots/links.hpp"

#include "knots/braid.hpp"
#include "knots/jones.hpp"
#include "knots/simplify.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace loopwise::knots {
namespace {

struct TableLink {
    std::string name;
    Laurent jones;
    int linking_number; ///< its absolute value
};

/// From the shortest braids of the links in Rolfsen's table, both hands where the polynomials tell them apart.
std::vector<TableLink> computed() {
    struct Row {
        const char* name;
        int strands;
        std::array<signed char, 6> word;
    };
    constexpr std::array<Row, 4> rows{{{"0^2_1", 2, {}},
                                       {"2^2_1", 2, {1, 1}},
                                       {"4^2_1", 2, {1, 1, 1, 1}},
                                       {"5^2_1", 3, {1, -2, 1, -2, -2}}}};
    std::vector<TableLink> table;
    for (const Row& row : rows) {
        const Diagram diagram = closed_braid(row.strands, row.word);
        const Laurent own = *jones(diagram), other = mirrored(own);
        const int number = std::abs(diagram.linking_number(0, 1));
        if (own == other) {
            table.push_back({row.name, own, number});
            continue;
        }
        const bool right = own.twice_lowest + own.twice_highest() > 0;
        table.push_back({std::string("+").append(row.name), right ? own : other, number});
        table.push_back({std::string("-").append(row.name), right ? other : own, number});
    }
    return table;
}

/// All links of two loops with no more crossings are in the table, are sums of a Hopf link and a trefoil, or fall
/// apart, and their polynomials differ.
constexpr int table_link_crossings = 5;

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

/// Two loops without a crossing between them.
KnotName apart(const Diagram& diagram) {
    KnotName one = knot_of(only(diagram, 0));
    const KnotName other = knot_of(only(diagram, 1));
    if (one.names.empty()) return one;
    if (other.names.empty()) return other;
    const std::string first = one.text(), second = other.text();
    const bool unknots = first == "0_1" && second == "0_1";
    one.status = KnotStatus::named;
    one.names = {unknots ? "0^2_1" : std::string(first).append(", ").append(second).append(" apart")};
    one.proven = one.proven && other.proven;
    one.crossings += other.crossings;
    one.alexander = {};
    const std::optional<Laurent> v = jones(diagram);
    one.jones = v ? *v : Laurent{};
    return one;
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
    KnotName result;
    result.crossings = diagram.size();
    result.status = KnotStatus::too_complex;
    const std::optional<Laurent> v = jones(diagram);
    if (!v) return result;
    const int number = std::abs(diagram.linking_number(0, 1));
    for (const TableLink& link : table)
        if (link.jones == *v && link.linking_number == number) result.names.push_back(link.name);
    result.status = result.names.empty() ? KnotStatus::unknown : KnotStatus::named;
    result.proven = !result.names.empty() && diagram.size() <= table_link_crossings;
    result.jones = *v;
    return result;
}

KnotName link_of(std::span<const ChainAtom> one, std::span<const ChainAtom> other) {
    const std::array<std::span<const ChainAtom>, 2> loops{without_copy_of_first(one),
                                                          without_copy_of_first(other)};
    View view = project_diagram(loops);
    if (view.fault == PolygonFault::none) return link_of(std::move(view.diagram));
    KnotName result;
    result.fault = view.fault;
    return result;
}

} // namespace loopwise::knots
