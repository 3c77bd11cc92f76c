// How closed polygons are linked with each other.
#pragma once

#include "knots/knot.hpp"

#include <span>
#include <vector>

namespace loopwise::knots {

/// Every link of two or three loops that can be drawn with so few crossings is in the table of links, is a sum of links
/// and knots of the tables, or falls apart; the Jones polynomial and the linking numbers of these differ.
constexpr int table_link_crossings = 8;

/// What closed polygons are together, whichever way they run: "2^2_1" (Hopf), "-5^2_1" (Whitehead), "6^3_2" (the
/// Borromean rings), as far as the Jones polynomial and the linking numbers tell. Where crossings between different
/// loops do not count in the writhe, the polynomial does not depend on their directions; its exponents tell the hand as
/// those of knots do (table.hpp). The loops of +4^2_1 wind around each other as a right-handed screw. Sums are named by
/// their factors: "2^2_1 # +3_1". Polygons that come apart in the diagram are named one by one: "2^2_1, 0_1 apart", or
/// "0^2_1" for two unknots.
KnotName link_of(std::span<const std::span<const ChainAtom>> loops);

/// Names a diagram of at least two loops.
KnotName link_of(Diagram diagram);

/// How closed polygons are linked, all of them and each two. Of pairs, those of loop i and a later loop j are in the
/// order (0, 1), (0, 2), ..., (1, 2), ...
struct Linking {
    KnotType all;                ///< see link_of()
    std::vector<KnotType> pairs; ///< with polygons that cannot be named, there are no pairs
    /// How often one polygon winds around the other: half the signs of their crossings. The number turns its sign in
    /// the mirror image and when one of the two is run through backwards. It is 0 for some linked pairs.
    std::vector<int> numbers;
};
Linking linking_of(std::span<const std::span<const ChainAtom>> loops);

} // namespace loopwise::knots
