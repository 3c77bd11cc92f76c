// What a closed polygon, or a link of several, is: a value to compare and to count.
#pragma once

#include "knots/laurent.hpp"
#include "knots/view.hpp"

#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace loopwise::knots {

/// `none` where the polynomials do not tell a knot from its mirror image.
enum class Hand { none, right, left };

/// A prime knot by its number in Rolfsen's table, as +5_2; with two loops a link, as -5^2_1.
struct PrimeKnot {
    int crossings = 0, number = 1;
    Hand hand = Hand::none;
    int loops = 1;

    bool operator==(const PrimeKnot&) const = default;
};

/// The factors of a connected sum, in the order of the table. The unknot has none.
using KnotSum = std::vector<PrimeKnot>;

/// Loops that are not linked.
constexpr PrimeKnot unlink(int loops) { return {0, 1, Hand::none, loops}; }
/// Any prime knot, or link, that is not in the table.
constexpr PrimeKnot beyond_table(int loops) { return {0, 0, Hand::none, loops}; }

enum class KnotStatus {
    named,       ///< `candidates` has one knot, or several that the polynomials do not tell apart
    apart,       ///< loops that come apart; the types of their pieces are in `loops`
    unknown,     ///< likewise, but a factor is beyond the table
    too_complex, ///< `crossings` are left: too many for the polynomials, or for them to prove the unknot
    no_polygon,  ///< see `fault`
    unnamed,     ///< one of the last two, whichever
};

/// Equal where the knot is the same as far as its polynomials tell, and proven for both or for neither.
struct KnotType {
    KnotStatus status = KnotStatus::unnamed;
    /// Whether every knot that the polygon can be is a candidate. Otherwise a knot of more crossings than the table
    /// has may share the invariants.
    bool proven = false;
    std::vector<KnotSum> candidates{};
    std::vector<KnotType> loops{};
    Laurent jones{}; ///< of an unknown knot; not compared
    int crossings = 0;
    PolygonFault fault = PolygonFault::none;

    static KnotType unknot() { return named({{}}, true); }
    static KnotType named(std::vector<KnotSum> candidates, bool proven) {
        return {.status = KnotStatus::named, .proven = proven, .candidates = std::move(candidates)};
    }
    /// Pieces that come apart, at least one.
    static KnotType apart(std::vector<KnotType> pieces);
    static KnotType unknown(Laurent jones, int loops = 1) {
        return {.status = KnotStatus::unknown,
                .proven = true,
                .candidates = {{beyond_table(loops)}},
                .jones = std::move(jones)};
    }
    /// The connected sum.
    static KnotType sum(const KnotType& one, const KnotType& other);
    static KnotType too_complex(int crossings) { return {.status = KnotStatus::too_complex, .crossings = crossings}; }
    static KnotType no_polygon(PolygonFault fault) { return {.status = KnotStatus::no_polygon, .fault = fault}; }

    bool operator==(const KnotType& other) const;
    bool has_name() const { return status <= KnotStatus::unknown; }
    bool is_unknot() const { return status == KnotStatus::named && candidates == std::vector<KnotSum>{{}}; }
    /// Whether it is of several loops, and none is linked with all others.
    bool comes_apart() const {
        return status == KnotStatus::apart || (status == KnotStatus::named && !candidates.front().empty() &&
                                               candidates.front().front().crossings == 0);
    }
    bool is_knot() const { return has_name() && !is_unknot(); }
};

/// The order of reports: by text.
std::strong_ordering operator<=>(const KnotType& a, const KnotType& b);

/// Whether a knot is a connected sum of the part and something else, or is the part itself; nothing if that cannot be
/// told. Names decide: all candidates must agree, a name that is not proven proves no absence, and a factor beyond the
/// table can be any larger knot.
std::optional<bool> holds_factor(const KnotType& knot, const KnotType& part);

/// As reports say it: "+3_1 # 4_1", "-9_12 or 4_1 # -5_2", "-5_1 or beyond ten crossings" where it is not proven,
/// "+3_1, 0_1 apart", "beyond ten crossings", "not named: 71 crossings", "not named: repeated beads". Types are equal
/// where their texts are.
std::string text(const KnotType& type);

/// Why a name is not proven, in a sentence; empty where it is.
std::string why_not_proven(const KnotType& type);

/// The text in at most `width` characters, at least 4, for columns and pictures: what is cut off leaves " ...".
std::string short_text(const KnotType& type, std::size_t width);

/// The text of every candidate by itself.
std::vector<std::string> names_of(const KnotType& type);

} // namespace loopwise::knots

template <> struct std::hash<loopwise::knots::KnotType> {
    std::size_t operator()(const loopwise::knots::KnotType& type) const;
};
