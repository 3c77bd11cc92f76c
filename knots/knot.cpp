#include "knots/knot.hpp"

#include "knots/alexander.hpp"
#include "knots/jones.hpp"
#include "knots/names.hpp"
#include "knots/simplify.hpp"
#include "knots/table.hpp"

#include <algorithm>
#include <array>
#include <iterator>

namespace loopwise::knots {
namespace {

const char* words(PolygonFault fault) {
    switch (fault) {
    case PolygonFault::few_beads:
        return "fewer than three beads";
    case PolygonFault::not_finite:
        return "coordinates that are not finite";
    case PolygonFault::repeated_beads:
        return "repeated beads";
    case PolygonFault::touching:
        return "the polygon meets itself, or nearly";
    case PolygonFault::none:
        break;
    }
    return "";
}

KnotName fault_name(PolygonFault fault) {
    KnotName result;
    result.fault = fault;
    return result;
}

/// A diagram of at most two crossings needs no polynomial.
constexpr int surely_unknotted = 2;

KnotName unknot(int crossings) {
    KnotName result;
    result.status = KnotStatus::named;
    result.names = {"0_1"};
    result.proven = true;
    result.crossings = crossings;
    result.jones = result.alexander = Laurent::one();
    return result;
}

/// Of a diagram that no move makes smaller.
KnotName name_of(const Diagram& diagram) {
    if (diagram.size() <= surely_unknotted) return unknot(diagram.size());
    KnotName result;
    result.crossings = diagram.size();
    result.status = KnotStatus::too_complex;
    std::optional<Laurent> v = jones(diagram);
    std::optional<Laurent> delta = v ? alexander(diagram) : std::nullopt;
    if (!v || !delta) return result;
    result.names = names_of(*v, *delta, diagram.size());
    if (result.names.empty())
        result.status = *v == Laurent::one() ? KnotStatus::too_complex : KnotStatus::unknown;
    else
        result.status = result.names.size() == 1 ? KnotStatus::named : KnotStatus::several;
    result.proven = !result.names.empty() && (diagram.size() <= table_crossings || *v == Laurent::one());
    result.jones = *std::move(v);
    result.alexander = *std::move(delta);
    return result;
}

/// A diagram's signed Gauss code from the start that makes it the smallest: equal for equal diagrams on the sphere,
/// which the code determines.
constexpr int largest_code = 20;
/// Then a memory starts anew.
constexpr std::size_t most_remembered = 10'000;

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

std::string KnotName::text() const {
    switch (status) {
    case KnotStatus::named:
    case KnotStatus::several: {
        std::string all;
        for (const std::string& name : names) all.append(all.empty() ? "" : " or ").append(name);
        return all;
    }
    case KnotStatus::unknown:
        return "unknown: " + knots::text(jones);
    case KnotStatus::too_complex:
        return "not named: " + std::to_string(crossings) + " crossings";
    case KnotStatus::bad_polygon:
        break;
    }
    return std::string("not named: ") + words(fault);
}

KnotName knot_of(Diagram diagram) {
    simplify(diagram, table_crossings);
    return name_of(diagram);
}

KnotName knot_of(std::span<const ChainAtom> loop) {
    const View view = reduced_view(loop);
    return view.fault == PolygonFault::none ? name_of(view.diagram) : fault_name(view.fault);
}

const KnotName& KnotNamer::name(std::span<const ChainAtom> loop) {
    const View view = reduced_view(loop);
    if (view.fault != PolygonFault::none) return last_ = fault_name(view.fault);
    if (view.diagram.size() <= surely_unknotted || view.diagram.size() > largest_code)
        return last_ = name_of(view.diagram);
    std::string code = code_of(view.diagram);
    const auto known = known_.find(code);
    if (known != known_.end()) return known->second;
    if (known_.size() >= most_remembered) known_.clear();
    return known_.emplace(std::move(code), name_of(view.diagram)).first->second;
}

} // namespace loopwise::knots
