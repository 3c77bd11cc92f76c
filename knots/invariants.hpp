// The invariants of diagrams. A new one takes a file of its own, its declaration here and a row in invariants.cpp;
// naming, reports and Python go through the table.
#pragma once

#include "knots/diagram.hpp"
#include "knots/laurent.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace loopwise::knots {

/// Limits of the polynomials: crossings of the diagram, and edges between the contracted part of the diagram and the
/// rest. A planar diagram of that many crossings rarely has so many edges there.
constexpr int most_crossings = 59;
constexpr int widest_front = 24;

/// The Jones polynomial, by Kauffman's bracket ("State models and the Jones polynomial", Topology 26, 1987): 1 for
/// the unknot, t + t^3 - t^4 for the right-handed trefoil. For links it does not depend on the directions of the
/// loops: the writhe leaves out crossings between different loops.
///
/// Nothing where the diagram exceeds the limits above, or where a coefficient leaves the 64-bit range on the way. The
/// time grows with the narrowest front found: about a tenth of a second at most.
std::optional<Laurent> jones(const Diagram& diagram);

/// The Alexander polynomial of a knot ("Topological invariants of knots and links", Trans. Amer. Math. Soc. 30, 1928),
/// symmetric in t and 1/t and 1 at t = 1: t^-1 - 1 + t for both trefoils. Exact for up to `most_crossings`
/// crossings; nothing for more, or for a link.
std::optional<Laurent> alexander(const Diagram& diagram);

using InvariantValue = std::variant<Laurent, std::int64_t>;
std::string text(const InvariantValue& value);

struct Invariant {
    const char* key;  ///< for programs: "jones"
    const char* name; ///< for people: "Jones polynomial"
    /// Nothing where the diagram is too large, or of a kind that the invariant is not for.
    std::optional<InvariantValue> (*of)(const Diagram& diagram);
};

/// The table of all invariants, in the order of reports.
std::span<const Invariant> all_invariants();

struct ComputedInvariant {
    const Invariant* invariant;
    InvariantValue value;

    bool operator==(const ComputedInvariant&) const = default;
};

/// All invariants that can be computed of a diagram; none without the Jones polynomial, which every name needs.
std::vector<ComputedInvariant> invariants_of(const Diagram& diagram);

/// The invariants of a connected sum, from those of its parts: products of polynomials, sums of numbers.
std::vector<ComputedInvariant> product(std::span<const ComputedInvariant> a, std::span<const ComputedInvariant> b);

/// The polynomial with this key; null where there is none.
const Laurent* find_polynomial(std::span<const ComputedInvariant> computed, std::string_view key);

} // namespace loopwise::knots
