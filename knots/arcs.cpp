#include "knots/arcs.hpp"

namespace loopwise::knots {

Arcs arcs_of(const Diagram& diagram) {
    Arcs arcs{std::vector<Meeting>(diagram.crossings.size()), diagram.size()};
    const auto meeting = [&](Dart d) -> Meeting& { return arcs.meetings[static_cast<std::size_t>(crossing_of(d))]; };
    for (int c = 0; c < diagram.size(); ++c) {
        const Dart out = 4 * c + 2;
        Dart in = diagram.across(out);
        for (; !is_under(in); in = diagram.across(opposite(in))) meeting(in).over = c;
        // The strand below enters a positive crossing on the right of the strand above.
        (diagram.at(out).sign > 0 ? meeting(out).other : meeting(out).one) = c;
        (diagram.at(in).sign > 0 ? meeting(in).one : meeting(in).other) = c;
    }
    for (int c = 0; c < diagram.size(); ++c) {
        if (arcs.meetings[static_cast<std::size_t>(c)].over >= 0) continue;
        Dart in = diagram.over_in(c);
        for (; meeting(in).over < 0; in = diagram.across(opposite(in))) meeting(in).over = arcs.count;
        ++arcs.count;
    }
    return arcs;
}

} // namespace loopwise::knots
