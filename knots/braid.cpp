#include "knots/braid.hpp"

#include <numeric>
#include <utility>

namespace loopwise::knots {

/// All strands run upwards. The strand below enters a crossing at place 0, the lower left end of a negative crossing
/// and the lower right end of a positive one.
Diagram closed_braid(int strands, std::string_view word) {
    const auto count = static_cast<std::size_t>(strands);
    Diagram diagram;
    std::vector<Dart> first(count, -1), last(count, -1);
    std::vector<int> owner(count); // by place: the strand that started at the bottom and is here now
    std::iota(owner.begin(), owner.end(), 0);
    const auto enter = [&](std::size_t place, Dart in) {
        if (last[place] < 0)
            first[place] = in;
        else
            diagram.link(last[place], in);
    };
    for (const char letter : word) {
        const bool positive = letter >= 'a';
        const auto left = static_cast<std::size_t>(letter - (positive ? 'a' : 'A')), right = left + 1;
        const int below = owner[positive ? right : left], above = owner[positive ? left : right];
        const int crossing = diagram.add({positive ? 1 : -1, below, above});
        const Dart under = 4 * crossing, over = diagram.over_in(crossing);
        enter(left, positive ? over : under);
        enter(right, positive ? under : over);
        last[left] = opposite(positive ? under : over);
        last[right] = opposite(positive ? over : under);
        std::swap(owner[left], owner[right]);
    }
    // The closure joins each place on top to the same place at the bottom.
    std::vector<int> loop(count, -1);
    diagram.loops = 0;
    for (std::size_t start = 0; start < count; ++start) {
        if (last[start] >= 0) diagram.link(last[start], first[start]);
        if (loop[start] >= 0) continue;
        std::size_t strand = start;
        do {
            loop[strand] = diagram.loops;
            std::size_t top = 0;
            while (owner[top] != static_cast<int>(strand)) ++top;
            strand = top;
        } while (strand != start);
        ++diagram.loops;
    }
    for (Crossing& c : diagram.crossings) {
        c.under = loop[static_cast<std::size_t>(c.under)];
        c.over = loop[static_cast<std::size_t>(c.over)];
    }
    return diagram;
}

} // namespace loopwise::knots
