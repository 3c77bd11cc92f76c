#include "knots/links.hpp"

#include "knots/braid.hpp"
#include "knots/braid_words.hpp"
#include "knots/factors.hpp"
#include "knots/simplify.hpp"
#include "knots/table.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>

namespace loopwise::knots {
namespace {

/// Of all pairs, without their signs, which depend on directions; in order.
std::vector<int> linking_numbers(const Diagram& diagram) {
    std::vector<int> numbers;
    for (int i = 0; i < diagram.loops; ++i)
        for (int j = i + 1; j < diagram.loops; ++j) numbers.push_back(std::abs(diagram.linking_number(i, j)));
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

struct TableLink {
    PrimeKnot link;
    Laurent jones;
    std::vector<int> numbers;
};

/// Both hands of the links of the table, and loops that are not linked.
const std::vector<TableLink>& link_table() {
    static const auto table = [] {
        std::vector<TableLink> links;
        const auto add = [&links](const LinkRow& row) {
            const Diagram diagram = closed_braid(row.strands, row.word);
            const Laurent own = *jones(diagram), mirror = mirrored(own);
            const std::vector<int> numbers = linking_numbers(diagram);
            const PrimeKnot link{row.crossings, row.number, Hand::none, row.loops};
            if (own == mirror) {
                links.push_back({link, own, numbers});
                return;
            }
            const bool right = hand_by(own) > 0;
            links.push_back({link, right ? own : mirror, numbers});
            links.back().link.hand = Hand::right;
            links.push_back({link, right ? mirror : own, numbers});
            links.back().link.hand = Hand::left;
        };
        for (const LinkRow& unlink : {LinkRow{0, 1, 2, 2, ""}, LinkRow{0, 1, 3, 3, ""}}) add(unlink);
        for (const LinkRow& row : link_rows) add(row);
        return links;
    }();
    return table;
}

/// Attempts at random to find fewer crossings or more factors, where a name is not certain without.
constexpr int attempts = 1000;

KnotType type_of(const std::vector<Factor>& factors, int loops, bool tried);

/// The type of a factor that no move makes smaller.
KnotType type_of(const Diagram& diagram, bool tried) {
    if (diagram.loops == 1) return knot_of(diagram).type;
    const std::optional<Laurent> v = jones(diagram);
    std::vector<KnotSum> candidates;
    if (v)
        for (const TableLink& known : link_table())
            if (known.jones == *v && known.link.loops == diagram.loops && known.numbers == linking_numbers(diagram))
                candidates.push_back({known.link});
    const bool certain = !candidates.empty() && diagram.size() <= table_link_crossings;
    if (!certain && !tried) {
        const std::vector<Factor> factors = factors_of(diagram, 0, attempts);
        if (factors.size() != 1 || factors.front().diagram.size() < diagram.size())
            return type_of(factors, diagram.loops, true);
    }
    if (!v) return KnotType::too_complex(diagram.size());
    return candidates.empty() ? KnotType::unknown(*v, diagram.loops) : KnotType::named(std::move(candidates), certain);
}

/// Loops that share factors, one after the other, are one piece; pieces come apart.
KnotType type_of(const std::vector<Factor>& factors, int loops, bool tried) {
    std::vector<std::size_t> piece(static_cast<std::size_t>(loops)); // of a loop: the first loop of its piece
    std::iota(piece.begin(), piece.end(), 0);
    for (const Factor& factor : factors)
        for (const int loop : factor.loops) {
            const auto [low, high] =
                std::minmax(piece[static_cast<std::size_t>(loop)], piece[static_cast<std::size_t>(factor.loops[0])]);
            std::replace(piece.begin(), piece.end(), std::size_t{high}, std::size_t{low});
        }
    std::vector<KnotType> types(piece.size(), KnotType::unknot());
    for (const Factor& factor : factors) {
        KnotType& type = types[piece[static_cast<std::size_t>(factor.loops[0])]];
        type = KnotType::sum(type, type_of(factor.diagram, tried));
    }
    std::vector<KnotType> apart;
    for (std::size_t loop = 0; loop < piece.size(); ++loop)
        if (piece[loop] == loop) apart.push_back(std::move(types[loop]));
    return KnotType::apart(std::move(apart));
}

/// The type of a diagram that no move makes smaller.
KnotType type_of(Diagram diagram) {
    const int loops = diagram.loops;
    return type_of(factors_of(std::move(diagram), 0), loops, false);
}

/// The diagram of two of the loops alone.
Diagram only(Diagram diagram, int one, int other) {
    for (int c = 0; c < diagram.size(); ++c) {
        const Crossing& crossing = diagram.crossings[static_cast<std::size_t>(c)];
        for (const int loop : {crossing.under, crossing.over})
            if (loop != one && loop != other) {
                diagram.dissolve(c);
                break;
            }
    }
    diagram.renumber();
    for (Crossing& c : diagram.crossings) c.under = c.under == other, c.over = c.over == other;
    diagram.loops = 2;
    return diagram;
}

View view_of(std::span<const std::span<const ChainAtom>> loops) {
    std::vector<std::span<const ChainAtom>> polygons;
    for (const auto loop : loops) polygons.push_back(without_copy_of_first(loop));
    View view = project_diagram(polygons);
    simplify(view.diagram, 0);
    return view;
}

} // namespace

KnotName link_of(Diagram diagram) {
    simplify(diagram, 0);
    KnotName name{KnotType{}, diagram.size(), invariants_of(diagram)};
    name.type = type_of(std::move(diagram));
    return name;
}

KnotName link_of(std::span<const std::span<const ChainAtom>> loops) {
    View view = view_of(loops);
    if (view.fault != PolygonFault::none) return {KnotType::no_polygon(view.fault)};
    return link_of(std::move(view.diagram));
}

Linking linking_of(std::span<const std::span<const ChainAtom>> loops) {
    Linking result;
    if (loops.size() < 2) return result;
    const View view = view_of(loops);
    result.all = KnotType::no_polygon(view.fault);
    if (view.fault != PolygonFault::none) return result;
    result.all = type_of(view.diagram);
    for (int i = 0; i < view.diagram.loops; ++i)
        for (int j = i + 1; j < view.diagram.loops; ++j) {
            result.pairs.push_back(loops.size() == 2 ? result.all : type_of(only(view.diagram, i, j)));
            result.numbers.push_back(view.diagram.linking_number(i, j));
        }
    return result;
}

} // namespace loopwise::knots
