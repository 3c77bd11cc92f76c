#include "knots/invariants.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace loopwise::knots {
namespace {

/// A diagram is contracted crossing by crossing. The front is the set of edges from contracted crossings to the rest;
/// its points are numbered. Smoothing all contracted crossings in one way joins the points of the front in pairs and
/// leaves some circles. The bracket of the contracted part is a polynomial in A for every pairing.
constexpr std::size_t most_points = widest_front + 4;

using Pairing = std::array<std::uint8_t, 32>; ///< the partner of every point; zeros after the last
static_assert(most_points <= std::tuple_size_v<Pairing>);

/// The order of the crossings, and how wide the front becomes.
struct Order {
    std::vector<int> crossings;
    int width = 0;
    double cost = 0;
};

/// Takes the crossing with the most ends at the front; of several, the one that touched the front first.
Order order_from(const Diagram& diagram, int start) {
    const auto count = static_cast<std::size_t>(diagram.size());
    Order order;
    std::vector<signed char> ends(count, 0);
    std::vector<int> waiting{start};
    std::vector<bool> done(count, false);
    int width = 0;
    while (order.crossings.size() < count) {
        auto best = waiting.begin();
        for (auto i = waiting.begin(); i != waiting.end(); ++i)
            if (ends[static_cast<std::size_t>(*i)] > ends[static_cast<std::size_t>(*best)]) best = i;
        int next = 0;
        if (best == waiting.end()) // another component of a split diagram
            while (done[static_cast<std::size_t>(next)]) ++next;
        else {
            next = *best;
            waiting.erase(best);
        }
        done[static_cast<std::size_t>(next)] = true;
        order.crossings.push_back(next);
        for (Dart d = 4 * next; d < 4 * next + 4; ++d) {
            const int neighbour = crossing_of(diagram.across(d));
            if (neighbour == next) continue;
            const auto n = static_cast<std::size_t>(neighbour);
            width += done[n] ? -1 : 1;
            if (!done[n] && ends[n]++ == 0 && std::find(waiting.begin(), waiting.end(), neighbour) == waiting.end())
                waiting.push_back(neighbour);
        }
        order.width = std::max(order.width, width);
        order.cost += static_cast<double>(std::uint64_t{1} << std::min(width, 60));
    }
    return order;
}

/// Small diagrams are contracted faster than many orders are compared.
constexpr int small_diagram = 10;

Order best_order(const Diagram& diagram) {
    Order best = order_from(diagram, 0);
    if (diagram.size() <= small_diagram) return best;
    for (int start = 1; start < diagram.size(); ++start) {
        Order order = order_from(diagram, start);
        if (order.cost < best.cost) best = std::move(order);
    }
    return best;
}

/// The polynomial of one pairing, with every fourth power of A from the lowest on. Smoothing a crossing the other way
/// changes the power by 2 and, in the plane, the number of circles by one: powers of one pairing differ by fours.
struct State {
    Pairing pairing;
    int lowest, highest;
    std::size_t coefficients; ///< where they start
};

/// One way to smooth a crossing takes a state to another.
struct Contribution {
    std::uint32_t from, to;
    int shift, circles;
};

std::uint64_t hash(const Pairing& pairing) {
    std::array<std::uint64_t, 4> words;
    std::memcpy(words.data(), pairing.data(), sizeof words);
    std::uint64_t h = 0;
    for (const std::uint64_t w : words) h = (h ^ w) * 0x9E3779B97F4A7C15U, h ^= h >> 29;
    return h;
}

class Contraction {
  public:
    explicit Contraction(const Diagram& diagram) : diagram_(diagram), point_(diagram.mate.size(), -1) {
        states_.push_back({{}, 0, 0, 0});
        coefficients_.push_back(1);
    }
    bool add(int crossing);
    /// The bracket times that of one circle, when all crossings are contracted.
    const State* result() const { return states_.empty() ? nullptr : &states_.front(); }
    std::int64_t coefficient(const State& s, int power) const {
        return coefficients_[s.coefficients + static_cast<std::size_t>((power - s.lowest) / 4)];
    }

  private:
    struct Gluing {
        std::uint8_t one, other;
    };

    const Diagram& diagram_;
    std::vector<int> point_; ///< by dart: its point at the front, or -1
    std::vector<Dart> front_;
    std::vector<State> states_, next_;
    std::vector<std::int64_t> coefficients_, sums_;
    std::vector<Contribution> contributions_;
    std::vector<std::uint32_t> table_;
    std::vector<Gluing> gluings_;
    std::vector<std::uint8_t> kept_;
    std::array<std::uint8_t, 32> number_{};

    void advance_front(int crossing);
    std::uint32_t state_with(const Pairing& pairing);
    bool sum_up();
};

/// Points 0 to w - 1 are those of the front, w to w + 3 the four ends of the crossing.
void Contraction::advance_front(int crossing) {
    const std::size_t width = front_.size();
    gluings_.clear();
    kept_.clear();
    for (int place = 0; place < 4; ++place) {
        const Dart d = 4 * crossing + place, end = diagram_.across(d);
        const auto here = static_cast<std::uint8_t>(width + static_cast<std::size_t>(place));
        const int there = point_[static_cast<std::size_t>(end)];
        if (there >= 0) {
            gluings_.push_back({here, static_cast<std::uint8_t>(there)});
            front_[static_cast<std::size_t>(there)] = -1;
        } else if (crossing_of(end) == crossing && end > d)
            gluings_.push_back({here, static_cast<std::uint8_t>(width + static_cast<std::size_t>(place_of(end)))});
    }
    std::vector<Dart>& front = front_;
    std::size_t next = 0;
    const auto keep = [&](std::size_t point, Dart d) {
        number_[point] = static_cast<std::uint8_t>(next);
        kept_.push_back(static_cast<std::uint8_t>(point));
        point_[static_cast<std::size_t>(d)] = static_cast<int>(next++);
    };
    for (std::size_t i = 0; i < width; ++i)
        if (front[i] >= 0) keep(i, front[i]);
    front.erase(std::remove(front.begin(), front.end(), -1), front.end());
    for (int place = 0; place < 4; ++place) {
        const Dart d = 4 * crossing + place, end = diagram_.across(d);
        if (point_[static_cast<std::size_t>(end)] >= 0 || crossing_of(end) == crossing) continue;
        keep(width + static_cast<std::size_t>(place), d);
        front.push_back(d);
    }
    for (int place = 0; place < 4; ++place)
        point_[static_cast<std::size_t>(diagram_.across(4 * crossing + place))] = -1;
}

std::uint32_t Contraction::state_with(const Pairing& pairing) {
    const std::size_t mask = table_.size() - 1;
    for (std::size_t at = hash(pairing) & mask;; at = (at + 1) & mask) {
        if (table_[at] == 0) {
            next_.push_back({pairing, INT32_MAX, INT32_MIN, 0});
            table_[at] = static_cast<std::uint32_t>(next_.size());
        }
        if (next_[table_[at] - 1].pairing == pairing) return table_[at] - 1;
    }
}

/// The strand below has the places 0 and 2. Turning the strand above counterclockwise sweeps the corners between 1 and
/// 2 and between 3 and 0: joining these is the smoothing that counts A.
bool Contraction::add(int crossing) {
    const std::size_t width = front_.size();
    advance_front(crossing);
    std::size_t slots = 8;
    while (slots < 4 * states_.size()) slots *= 2;
    table_.assign(slots, 0);
    contributions_.clear();
    next_.clear();
    for (std::size_t s = 0; s < states_.size(); ++s)
        for (const int shift : {1, -1}) {
            Pairing joined = states_[s].pairing;
            for (std::size_t place = 0; place < 4; ++place)
                joined[width + place] = static_cast<std::uint8_t>(width + (shift > 0 ? place ^ 1 : 3 - place));
            int circles = 0;
            for (const Gluing g : gluings_) {
                const std::uint8_t a = joined[g.one], b = joined[g.other];
                if (a == g.other)
                    ++circles;
                else
                    joined[a] = b, joined[b] = a;
            }
            Pairing pairing{};
            for (std::size_t i = 0; i < kept_.size(); ++i) pairing[i] = number_[joined[kept_[i]]];
            const std::uint32_t to = state_with(pairing);
            State& state = next_[to];
            state.lowest = std::min(state.lowest, states_[s].lowest + shift - 2 * circles);
            state.highest = std::max(state.highest, states_[s].highest + shift + 2 * circles);
            contributions_.push_back({static_cast<std::uint32_t>(s), to, shift, circles});
        }
    return sum_up();
}

/// A circle counts -A^2 - A^-2, so c circles count (-1)^c times the binomial coefficients.
bool Contraction::sum_up() {
    std::size_t count = 0;
    for (State& s : next_) {
        s.coefficients = count;
        count += static_cast<std::size_t>((s.highest - s.lowest) / 4 + 1);
    }
    sums_.assign(count, 0);
    constexpr std::int64_t weights[3][3] = {{1, 0, 0}, {-1, -1, 0}, {1, 2, 1}};
    bool overflow = false;
    for (const Contribution& c : contributions_) {
        const State &from = states_[c.from], &to = next_[c.to];
        const auto length = static_cast<std::size_t>((from.highest - from.lowest) / 4 + 1);
        const int lowest = from.lowest + c.shift - 2 * c.circles;
        std::int64_t* const sums = &sums_[to.coefficients + static_cast<std::size_t>((lowest - to.lowest) / 4)];
        const std::int64_t* const source = &coefficients_[from.coefficients];
        for (int k = 0; k <= c.circles; ++k)
            for (std::size_t i = 0; i < length; ++i) {
                std::int64_t term = 0;
                overflow |= __builtin_mul_overflow(weights[c.circles][k], source[i], &term);
                std::int64_t& sum = sums[i + static_cast<std::size_t>(k)];
                overflow |= __builtin_add_overflow(sum, term, &sum);
            }
    }
    states_.swap(next_);
    coefficients_.swap(sums_);
    return !overflow;
}

} // namespace

std::optional<Laurent> jones(const Diagram& diagram) {
    if (diagram.size() > most_crossings) return {};
    int circles = diagram.loops;
    std::vector<bool> drawn(static_cast<std::size_t>(diagram.loops), false);
    for (const Crossing& c : diagram.crossings)
        for (const int loop : {c.under, c.over})
            if (!drawn[static_cast<std::size_t>(loop)]) drawn[static_cast<std::size_t>(loop)] = true, --circles;

    // The bracket in every fourth power of A; that of one circle is 1.
    int lowest = 0;
    std::vector<std::int64_t> bracket{1};
    if (diagram.size() == 0)
        --circles;
    else {
        const Order order = best_order(diagram);
        if (order.width > widest_front) return {};
        Contraction contraction(diagram);
        for (const int crossing : order.crossings)
            if (!contraction.add(crossing)) return {};
        // Without points there is one pairing: a single state is left, with one circle too many.
        const State* const state = contraction.result();
        lowest = state->lowest + 2;
        bracket.clear();
        for (int power = state->lowest; power < state->highest; power += 4)
            bracket.push_back(-contraction.coefficient(*state, power) - (bracket.empty() ? 0 : bracket.back()));
    }
    for (; circles > 0; --circles, lowest -= 2) {
        bracket.push_back(0);
        for (std::size_t i = bracket.size(); i-- > 0;) {
            const std::int64_t before = i > 0 ? bracket[i - 1] : 0;
            if (__builtin_add_overflow(bracket[i], before, &bracket[i])) return {};
            bracket[i] = -bracket[i];
        }
    }
    // Times (-A^3)^-writhe; then t = A^-4.
    const int writhe = diagram.writhe(true);
    lowest -= 3 * writhe;
    if (writhe % 2 != 0)
        for (std::int64_t& c : bracket) c = -c;
    const int highest = lowest + 4 * (static_cast<int>(bracket.size()) - 1);
    std::reverse(bracket.begin(), bracket.end());
    Laurent result{-highest / 2, std::move(bracket)};
    trim(result);
    return result;
}

} // namespace loopwise::knots
