#include "knots/knot.hpp"

#include "knots/factors.hpp"
#include "knots/names.hpp"
#include "knots/simplify.hpp"
#include "knots/table.hpp"

#include <algorithm>
#include <array>

namespace loopwise::knots {
namespace {

/// A diagram of at most two crossings is one of the unknot, whatever the crossings are.
constexpr int surely_unknotted = 2;

const KnotName& unknot(int crossings) {
    static const auto names = [] {
        std::array<KnotName, surely_unknotted + 1> unknots;
        for (int n = 0; n <= surely_unknotted; ++n)
            unknots[static_cast<std::size_t>(n)] = {KnotType::unknot(), n, invariants_of(Diagram{})};
        return unknots;
    }();
    return names[static_cast<std::size_t>(crossings)];
}

/// Attempts at random to find fewer crossings or more factors, where a name is not certain without.
constexpr int attempts = 4000;

KnotName name_of(const std::vector<Factor>& factors, bool tried);

/// Names a diagram of one factor that no move makes smaller.
KnotName name_of(const Diagram& diagram, bool tried) {
    const int crossings = diagram.size();
    if (crossings <= surely_unknotted) return unknot(crossings);
    KnotName name{KnotType::too_complex(crossings), crossings, invariants_of(diagram)};
    const Laurent* const v = find_polynomial(name.invariants, "jones");
    const Laurent* const delta = find_polynomial(name.invariants, "alexander");
    const bool known = v && delta, like_unknot = known && *v == Laurent::one();
    std::vector<KnotSum> candidates;
    if (known) candidates = candidates_of(*v, *delta, crossings, is_alternating(diagram));
    const bool complete = crossings <= table_crossings;
    const bool certain = known && (complete || like_unknot != candidates.empty());
    if (!certain && !tried) {
        const std::vector<Factor> factors = factors_of(diagram, table_crossings, attempts);
        if (factors.size() != 1 || factors.front().diagram.size() < crossings) return name_of(factors, true);
    }
    if (!known || (like_unknot && candidates.empty())) return name;
    if (!like_unknot && !candidates.empty() && (!complete || candidates.size() > 1))
        exclude(candidates, diagram, complete);
    name.type = candidates.empty() ? KnotType::unknown(*v) : KnotType::named(std::move(candidates), certain);
    return name;
}

/// Names a connected sum.
KnotName name_of(const std::vector<Factor>& factors, bool tried) {
    KnotName name = unknot(0);
    for (const Factor& factor : factors) {
        KnotName other = name_of(factor.diagram, tried);
        if (&factor == &factors.front())
            name = std::move(other);
        else
            name = {KnotType::sum(name.type, other.type), name.crossings + other.crossings,
                    product(name.invariants, other.invariants)};
    }
    const Laurent* const v = find_polynomial(name.invariants, "jones");
    if (name.type.status == KnotStatus::unknown && v) name.type.jones = *v;
    return name;
}

KnotName name_of(Diagram diagram) {
    if (diagram.size() < fewest_in_sum) return name_of(diagram, false);
    return name_of(factors_of(std::move(diagram), table_crossings), false);
}

/// Larger diagrams seldom come twice.
constexpr int largest_code = 20;
/// A memory of more diagrams is emptied.
constexpr std::size_t most_remembered = 10'000;

/// A diagram's signed Gauss code from the start that makes it the smallest. Diagrams have the same code where they are
/// the same on the sphere, and nowhere else.
std::string code_of(const Diagram& diagram) {
    std::string best;
    std::array<signed char, largest_code> number;
    for (Dart start = 0; start < 4 * diagram.size(); ++start) {
        if (!diagram.is_out(start)) continue;
        std::string code;
        number.fill(-1);
        signed char next = 0;
        Dart d = start;
        do {
            const Dart in = diagram.across(d);
            signed char& n = number[static_cast<std::size_t>(crossing_of(in))];
            if (n < 0) n = next++;
            code += static_cast<char>(4 * n + 2 * (is_under(in) ? 1 : 0) + (diagram.at(in).sign > 0 ? 1 : 0));
            d = opposite(in);
        } while (d != start);
        if (best.empty() || code < best) best = std::move(code);
    }
    return best;
}

/// The diagram to name, or the fault of the polygon.
View reduced_view(std::span<const ChainAtom> loop) {
    const std::array<std::span<const ChainAtom>, 1> loops{without_copy_of_first(loop)};
    View view = project_diagram(loops);
    if (view.fault == PolygonFault::none) simplify(view.diagram, table_crossings);
    return view;
}

} // namespace

KnotName knot_of(Diagram diagram) {
    simplify(diagram, table_crossings);
    return name_of(std::move(diagram));
}

KnotName knot_of(std::span<const ChainAtom> loop) {
    View view = reduced_view(loop);
    return view.fault == PolygonFault::none ? name_of(std::move(view.diagram))
                                            : KnotName{KnotType::no_polygon(view.fault)};
}

const KnotName& KnotNamer::name(std::span<const ChainAtom> loop) {
    const View view = reduced_view(loop);
    if (view.fault != PolygonFault::none) return last_ = KnotName{KnotType::no_polygon(view.fault)};
    if (view.diagram.size() <= surely_unknotted) return unknot(view.diagram.size());
    if (view.diagram.size() > largest_code) return last_ = name_of(view.diagram);
    std::string code = code_of(view.diagram);
    const auto known = known_.find(code);
    if (known != known_.end()) return known->second;
    if (known_.size() >= most_remembered) known_.clear();
    return known_.emplace(std::move(code), name_of(view.diagram)).first->second;
}

} // namespace loopwise::knots
