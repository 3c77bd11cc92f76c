#include "support/conway.hpp"

#include <cctype>
#include <cstdlib>
#include <tuple>
#include <vector>

namespace conway {
namespace {

using loopwise::knots::Diagram;

/// Integers are rows of crossings, a product reflects its first part in the line from north-west to south-east.
struct Tangle {
    enum class Kind { integer, sum, product } kind = Kind::integer;
    int number = 0;
    std::vector<Tangle> parts{};
};

Tangle mirrored(Tangle tangle) {
    tangle.number = -tangle.number;
    for (Tangle& part : tangle.parts) part = mirrored(part);
    return tangle;
}

Tangle times(Tangle a, Tangle b) { return {Tangle::Kind::product, 0, {std::move(a), std::move(b)}}; }

class Parser {
  public:
    explicit Parser(const std::string& symbol) : rest_(symbol) {}
    Tangle ramification() {
        const Tangle first = product();
        if (ends()) return first;
        Tangle sum{Tangle::Kind::sum, 0, {times(first, {})}};
        int twists = 0;
        for (; !ends(); rest_.erase(0, 1)) {
            if (rest_[0] == ',') {
                rest_.erase(0, 1);
                sum.parts.push_back(times(product(), {}));
                rest_.insert(0, 1, ' '); // for the loop to take
            } else
                twists += rest_[0] == '+' ? 1 : -1;
        }
        if (twists != 0) sum.parts.push_back({Tangle::Kind::integer, twists});
        return sum;
    }

  private:
    std::string rest_;

    bool ends() const { return rest_.empty() || rest_[0] == ')'; }
    bool starts_factor() const {
        const std::size_t at = rest_.size() > 1 && rest_[0] == '-' ? 1 : 0;
        return !rest_.empty() && (rest_[at] == '(' || (at == 0 && std::isdigit(rest_[0]) != 0));
    }
    Tangle product() {
        Tangle all = factor();
        while (starts_factor()) all = times(std::move(all), factor());
        return all;
    }
    Tangle factor() {
        const bool minus = rest_.at(0) == '-';
        if (minus) rest_.erase(0, 1);
        const char start = rest_.at(0);
        rest_.erase(0, 1);
        Tangle tangle{Tangle::Kind::integer, start - '0'};
        if (start == '(') {
            tangle = ramification();
            rest_.erase(0, 1);
        }
        return minus ? mirrored(tangle) : tangle;
    }
};

/// Ends are numbered, four for each crossing counterclockwise, the first and third below, and two for each arc without
/// a crossing.
class Drawing {
  public:
    struct Ends {
        int north_west, north_east, south_east, south_west;
    };
    Ends draw(const Tangle& tangle, bool reflected);
    void join(int a, int b) { set(mate_, a, b); }
    Diagram finished() const;

  private:
    std::vector<int> mate_, through_; ///< through_: of an end of an arc, the other one; -1 at crossings
    std::vector<int> crossings_;      ///< their first ends

    static void set(std::vector<int>& of, int a, int b) {
        of[static_cast<std::size_t>(a)] = b;
        of[static_cast<std::size_t>(b)] = a;
    }
    int add(int ends) {
        const int first = static_cast<int>(mate_.size());
        mate_.resize(mate_.size() + static_cast<std::size_t>(ends), -1);
        through_.resize(mate_.size(), -1);
        return first;
    }
    int arc() {
        const int first = add(2);
        set(through_, first, first + 1);
        return first;
    }
    Ends crossing(bool positive) {
        const int a = add(4);
        crossings_.push_back(a);
        return positive ? Ends{a + 3, a + 2, a + 1, a} : Ends{a + 2, a + 1, a, a + 3};
    }
    Ends beside(const Ends& a, const Ends& b, bool below);
    int crossing_end_after(int end) const {
        int next = mate_[static_cast<std::size_t>(end)];
        while (through_[static_cast<std::size_t>(next)] >= 0)
            next = mate_[static_cast<std::size_t>(through_[static_cast<std::size_t>(next)])];
        return next;
    }
};

Drawing::Ends Drawing::beside(const Ends& a, const Ends& b, bool below) {
    if (below) {
        join(a.south_west, b.north_west);
        join(a.south_east, b.north_east);
        return {a.north_west, a.north_east, b.south_east, b.south_west};
    }
    join(a.north_east, b.north_west);
    join(a.south_east, b.south_west);
    return {a.north_west, b.north_east, b.south_east, a.south_west};
}

/// Reflection leaves a crossing as it is, as its upper strand lies on the line; it puts what stands side by side one
/// below the other.
Drawing::Ends Drawing::draw(const Tangle& tangle, bool reflected) {
    if (tangle.kind == Tangle::Kind::product) {
        const Ends first = draw(tangle.parts[0], !reflected);
        return beside(first, draw(tangle.parts[1], reflected), reflected);
    }
    const int one = arc(), other = arc();
    Ends all = reflected ? Ends{one, other, other + 1, one + 1} : Ends{one, one + 1, other + 1, other};
    for (const Tangle& part : tangle.parts) all = beside(all, draw(part, reflected), reflected);
    for (int i = 0; i < std::abs(tangle.number); ++i) all = beside(all, crossing(tangle.number > 0), reflected);
    return all;
}

/// With directions: the lower strand of a crossing comes in at its first end.
Diagram Drawing::finished() const {
    const std::size_t count = crossings_.size();
    std::vector<int> dart(mate_.size(), -1), mate(4 * count), out(4 * count, 0), loop(4 * count, -1);
    for (std::size_t d = 0; d < 4 * count; ++d)
        dart[static_cast<std::size_t>(crossings_[d / 4]) + d % 4] = static_cast<int>(d);
    for (std::size_t d = 0; d < 4 * count; ++d)
        mate[d] = dart[static_cast<std::size_t>(crossing_end_after(crossings_[d / 4] + static_cast<int>(d % 4)))];
    Diagram diagram;
    diagram.loops = 0;
    for (std::size_t start = 0; start < 4 * count; ++start) {
        if (loop[start] >= 0) continue;
        for (std::size_t d = start; loop[d] < 0; d = static_cast<std::size_t>(mate[d]) ^ 2) {
            const auto in = static_cast<std::size_t>(mate[d]);
            out[d] = 1;
            loop[d] = loop[in] = diagram.loops;
        }
        ++diagram.loops;
    }
    const auto placed = [&](std::size_t d) {
        return (d & ~std::size_t{3}) | ((d + (out[d & ~std::size_t{3}] != 0 ? 2U : 0U)) & 3U);
    };
    for (std::size_t c = 0; c < count; ++c) {
        const bool over_comes_first = out[4 * c + 1] == 0; // at the second end as drawn
        const bool turned = out[4 * c] != 0;
        diagram.add({over_comes_first == turned ? 1 : -1, loop[4 * c], loop[4 * c + 1]});
    }
    for (std::size_t d = 0; d < 4 * count; ++d)
        diagram.mate[placed(d)] = static_cast<int>(placed(static_cast<std::size_t>(mate[d])));
    return diagram;
}

} // namespace

Diagram diagram(const std::string& symbol) {
    Drawing drawing;
    const Drawing::Ends ends = drawing.draw(Parser(symbol).ramification(), false);
    drawing.join(ends.north_west, ends.north_east);
    drawing.join(ends.south_west, ends.south_east);
    return drawing.finished();
}

/// The closure of an alternating braid of three strands with six crossings.
Diagram octahedron(const std::array<std::string, 6>& tangles, const std::array<bool, 6>& turned) {
    Drawing drawing;
    std::array<int, 3> bottom{-1, -1, -1}, top{-1, -1, -1};
    for (std::size_t i = 0; i < tangles.size(); ++i) {
        const Tangle own = Parser(tangles[i]).ramification(), alternate = i % 2 == 0 ? own : mirrored(own);
        const Drawing::Ends ends = drawing.draw(turned[i] ? times(alternate, {}) : alternate, false);
        const std::size_t left = i % 2;
        for (const auto& [place, low, high] :
             {std::tuple{left, ends.south_west, ends.north_west}, {left + 1, ends.south_east, ends.north_east}}) {
            if (top[place] < 0)
                bottom[place] = low;
            else
                drawing.join(top[place], low);
            top[place] = high;
        }
    }
    for (std::size_t place = 0; place < top.size(); ++place) drawing.join(top[place], bottom[place]);
    return drawing.finished();
}

} // namespace conway
