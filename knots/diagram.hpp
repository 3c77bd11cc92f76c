// A knot or link as it is drawn: crossings, and which end of which crossing leads to which.
#pragma once

#include <cstddef>
#include <vector>

namespace loopwise::knots {

/// One of the four ends at a crossing: four times the crossing plus the end's place. Places go around the
/// crossing counterclockwise: 0 is where the strand below comes in, 2 where it goes out. At a positive
/// crossing the strand above comes in at 3 and goes out at 1, at a negative one the other way.
using Dart = int;

constexpr int crossing_of(Dart d) { return d / 4; }
constexpr int place_of(Dart d) { return d % 4; }
/// The end across the same crossing, where the strand goes on.
constexpr Dart opposite(Dart d) { return d ^ 2; }
/// The end that is `steps` places counterclockwise at the same crossing.
constexpr Dart turned(Dart d, int steps) { return (d & ~3) | ((d + steps) & 3); }
constexpr bool is_under(Dart d) { return d % 2 == 0; }

struct Crossing {
    int sign;        ///< +1 or -1
    int under, over; ///< the loops that the two strands belong to
};

/// A planar diagram code with signs. Loops without any crossing are counted, not drawn.
struct Diagram {
    std::vector<Crossing> crossings;
    std::vector<Dart> mate; ///< the other end of the edge that starts at a dart
    int loops = 1;

    int size() const { return static_cast<int>(crossings.size()); }
    const Crossing& at(Dart d) const { return crossings[static_cast<std::size_t>(crossing_of(d))]; }
    Dart across(Dart d) const { return mate[static_cast<std::size_t>(d)]; }
    /// Whether the strand leaves its crossing at this end.
    bool is_out(Dart d) const { return place_of(d) == 2 || place_of(d) == (at(d).sign > 0 ? 1 : 3); }
    Dart over_in(int crossing) const {
        return 4 * crossing + (crossings[static_cast<std::size_t>(crossing)].sign > 0 ? 3 : 1);
    }
    int loop_of(Dart d) const { return is_under(d) ? at(d).under : at(d).over; }

    void link(Dart a, Dart b) {
        mate[static_cast<std::size_t>(a)] = b;
        mate[static_cast<std::size_t>(b)] = a;
    }
    /// Adds a crossing whose four ends are not linked yet.
    int add(Crossing crossing);
    /// Takes the crossing out: both strands go straight on without it. Its number stays, unused, until
    /// renumber().
    void dissolve(int crossing);
    bool is_gone(int crossing) const { return crossings[static_cast<std::size_t>(crossing)].sign == 0; }
    /// Closes the gaps that dissolved crossings leave.
    void renumber();
    /// The sum of signs; with `own_only`, of the crossings of loops with themselves, which does not depend on
    /// the directions of the loops.
    int writhe(bool own_only = false) const;
    /// The sums of the signs of the crossings between two different loops, halved.
    int linking_number(int one, int other) const;
};

} // namespace loopwise::knots
