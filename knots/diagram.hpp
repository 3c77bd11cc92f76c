// Diagrams of knots and links: crossings, and the edges between their ends.
#pragma once

#include <cstddef>
#include <vector>

namespace loopwise::knots {

/// One of the four ends at a crossing: four times the crossing plus the end's place. Places go around the crossing
/// counterclockwise: the strand below enters at 0 and leaves at 2. The strand above enters a positive crossing at 3 and
/// leaves it at 1, a negative one the other way.
using Dart = int;

constexpr int crossing_of(Dart d) { return d / 4; }
constexpr int place_of(Dart d) { return d % 4; }
/// The end on the other side of the crossing, where the strand goes on.
constexpr Dart opposite(Dart d) { return d ^ 2; }
/// The end that is `steps` places counterclockwise at the same crossing.
constexpr Dart turned(Dart d, int steps) { return (d & ~3) | ((d + steps) & 3); }
constexpr bool is_under(Dart d) { return d % 2 == 0; }

struct Crossing {
    int sign;        ///< +1 or -1
    int under, over; ///< the loops of the two strands
};

/// A planar diagram code with signs. Loops without a crossing count in `loops` only.
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
    /// Adds a crossing with four unlinked ends and returns its number.
    int add(Crossing crossing);
    /// Removes the crossing: both strands go straight on. Its number stays unused until renumber().
    void dissolve(int crossing);
    bool is_gone(int crossing) const { return crossings[static_cast<std::size_t>(crossing)].sign == 0; }
    /// Gives the crossings that are left consecutive numbers.
    void renumber();
    /// The sum of signs. With `own_only` of crossings of a loop with itself alone: this sum does not depend on the
    /// directions of the loops.
    int writhe(bool own_only = false) const;
    /// Half the sum of the signs of crossings between two different loops.
    int linking_number(int one, int other) const;
};

/// The faces of a diagram without gaps in its numbers, that is the regions of the sphere. Of a diagram that falls
/// apart, each part is alone on a sphere.
struct Faces {
    std::vector<int> left_of;  ///< of a dart, the face on its left, looking along its edge
    std::vector<Dart> any_end; ///< a dart around every face
};
void find_faces(const Diagram& diagram, Faces& faces);

} // namespace loopwise::knots
