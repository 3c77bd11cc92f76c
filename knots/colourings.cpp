#include "knots/colourings.hpp"

#include "knots/arcs.hpp"
#include "knots/invariants.hpp"

#include <algorithm>
#include <bit>

namespace loopwise::knots {
namespace {

Permutation conjugated(const Permutation& a, const Permutation& b) {
    Permutation result{};
    for (std::size_t i = 0; i < result.size(); ++i) result[b[i]] = b[a[i]];
    return result;
}

/// First a, then b; or first a, then the inverse of b.
Permutation followed(const Permutation& a, const Permutation& b, bool inverse) {
    Permutation result{};
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto back = static_cast<std::uint8_t>(std::find(b.begin(), b.end(), a[i]) - b.begin());
        result[i] = inverse ? back : b[a[i]];
    }
    return result;
}

enum class StepKind : std::uint8_t { guess, follow, check };

/// What colours an arc: a guess, or the crossing where it meets two coloured arcs. A crossing whose arcs all have their
/// colours is a check.
struct Step {
    StepKind kind;
    bool back;
    std::uint8_t from, over, to;
};

/// An order of steps that needs few guesses, the first of which is free.
struct Plan {
    std::vector<Step> steps;
    int guesses = 0;
    std::uint64_t coloured = 0, used = 0; ///< arcs, crossings
};

constexpr std::uint64_t bit(int i) { return std::uint64_t{1} << i; }
static_assert(most_crossings < 64);

/// Adds a guess, and all that follows from it.
void guess(Plan& plan, const Arcs& arcs, int arc) {
    const auto step = [&plan](StepKind kind, bool back, int from, int over, int to) {
        plan.steps.push_back({kind, back, static_cast<std::uint8_t>(from), static_cast<std::uint8_t>(over),
                              static_cast<std::uint8_t>(to)});
        plan.coloured |= bit(to);
    };
    step(StepKind::guess, false, arc, arc, arc);
    ++plan.guesses;
    for (bool again = true; again;) {
        again = false;
        for (int c = 0; c < static_cast<int>(arcs.meetings.size()); ++c) {
            const auto [over, one, other] = arcs.meetings[static_cast<std::size_t>(c)];
            const bool forwards = (plan.coloured & bit(one)) != 0, backwards = (plan.coloured & bit(other)) != 0;
            if ((plan.used & bit(c)) != 0 || (plan.coloured & bit(over)) == 0 || !(forwards || backwards)) continue;
            step(forwards && backwards ? StepKind::check : StepKind::follow, !forwards, forwards ? one : other, over,
                 forwards ? other : one);
            plan.used |= bit(c);
            again = true;
        }
    }
}

/// Every guess is the one that colours the most arcs.
Plan plan_from(const Arcs& arcs, int first) {
    Plan plan;
    guess(plan, arcs, first);
    while (std::popcount(plan.coloured) < arcs.count) {
        Plan best;
        for (int arc = 0; arc < arcs.count; ++arc) {
            if ((plan.coloured & bit(arc)) != 0) continue;
            Plan next = plan;
            guess(next, arcs, arc);
            if (std::popcount(next.coloured) > std::popcount(best.coloured)) best = std::move(next);
        }
        plan = std::move(best);
    }
    return plan;
}

/// No knot but the unknot has a diagram that fewer guesses colour.
constexpr int fewest_guesses = 2;

Plan best_plan(const Arcs& arcs) {
    Plan best = plan_from(arcs, 0);
    for (int first = 1; first < arcs.count && best.guesses > fewest_guesses; ++first) {
        Plan plan = plan_from(arcs, first);
        if (plan.guesses < best.guesses) best = std::move(plan);
    }
    return best;
}

/// The arcs above the knot on its way around from the end of an arc, and whether they cross it from left to right.
struct Passage {
    std::uint8_t over;
    bool back;
};

std::vector<Passage> way_around(const Diagram& diagram, const Arcs& arcs, int arc) {
    std::vector<Passage> way;
    for (int at = arc; way.size() < arcs.meetings.size();) {
        Dart in = diagram.across(4 * at + 2);
        while (!is_under(in)) in = diagram.across(opposite(in));
        at = crossing_of(in);
        way.push_back(
            {static_cast<std::uint8_t>(arcs.meetings[static_cast<std::size_t>(at)].over), diagram.at(in).sign < 0});
    }
    return way;
}

using Counts = Colourings::value_type;

class Search {
  public:
    Search(const Plan& plan, const std::vector<Passage>& way, int writhe, const ConjugacyClass& colours)
        : steps_(plan.steps), way_(way), colours_(colours) {
        const Permutation &x = colours.member(0), unit = followed(x, x, true);
        do powers_.push_back(powers_.empty() ? unit : followed(powers_.back(), x, false));
        while (followed(powers_.back(), x, false) != unit);
        const int order = static_cast<int>(powers_.size());
        framing_ = static_cast<std::size_t>((order - writhe % order) % order);
        counts_.assign(powers_.size(), 0);
    }
    std::optional<Counts> run() {
        go_on(1);
        if (work_ > most_work) return {};
        return counts_;
    }

  private:
    static constexpr std::int64_t most_work = 4'000'000;
    const std::vector<Step>& steps_;
    const std::vector<Passage>& way_;
    const ConjugacyClass& colours_;
    std::vector<Permutation> powers_;
    std::size_t framing_ = 0;
    std::array<std::uint8_t, 64> colour_{};
    Counts counts_;
    std::int64_t work_ = 0;

    void go_on(std::size_t step) {
        for (; step < steps_.size(); ++step, ++work_) {
            const Step& s = steps_[step];
            if (s.kind == StepKind::guess) {
                for (std::size_t c = 0; c < colours_.size() && work_ <= most_work; ++c) {
                    colour_[s.to] = static_cast<std::uint8_t>(c);
                    go_on(step + 1);
                }
                return;
            }
            const std::uint8_t colour = colours_.conjugate(colour_[s.from], colour_[s.over], s.back);
            if (s.kind == StepKind::check && colour_[s.to] != colour) return;
            colour_[s.to] = colour;
        }
        count();
    }

    void count() {
        Permutation longitude = powers_.front();
        for (const Passage& p : way_) longitude = followed(longitude, colours_.member(colour_[p.over]), p.back);
        const auto power = std::find(powers_.begin(), powers_.end(), longitude) - powers_.begin();
        ++counts_[(static_cast<std::size_t>(power) + framing_) % counts_.size()];
        work_ += static_cast<std::int64_t>(way_.size());
    }
};

} // namespace

ConjugacyClass::ConjugacyClass(std::initializer_list<Permutation> generators) : members_{*generators.begin()} {
    const auto number = [this](const Permutation& p) {
        return static_cast<std::size_t>(std::find(members_.begin(), members_.end(), p) - members_.begin());
    };
    for (std::size_t i = 0; i < members_.size(); ++i)
        for (const Permutation& g : generators) {
            const Permutation next = conjugated(members_[i], g);
            if (number(next) == members_.size()) members_.push_back(next);
        }
    conjugates_.resize(2 * size() * size());
    for (std::size_t a = 0; a < size(); ++a)
        for (std::size_t b = 0; b < size(); ++b) {
            const std::size_t to = number(conjugated(members_[a], members_[b]));
            conjugates_[a * size() + b] = static_cast<std::uint8_t>(to);
            conjugates_[(size() + to) * size() + b] = static_cast<std::uint8_t>(a);
        }
}

std::span<const ConjugacyClass> colouring_classes() {
    constexpr Permutation three{1, 2, 0, 3, 4, 5, 6}, other_three{0, 1, 3, 4, 2, 5, 6};
    constexpr Permutation four{1, 2, 3, 0, 4, 5, 6}, five{1, 2, 3, 4, 0, 5, 6};
    // They keep the lines {i, i + 1, i + 3} modulo 7 of the plane of seven points.
    constexpr Permutation turn{1, 2, 3, 4, 5, 6, 0}, swaps{0, 1, 4, 3, 2, 6, 5};
    constexpr Permutation doubling{0, 2, 4, 6, 1, 3, 5}, quarter{0, 2, 3, 6, 5, 4, 1};
    static const std::array all{ConjugacyClass({three, other_three}),   ConjugacyClass({five, three}),
                                ConjugacyClass({four, five}),           ConjugacyClass({doubling, turn, swaps}),
                                ConjugacyClass({quarter, turn, swaps}), ConjugacyClass({turn, swaps})};
    return all;
}

std::optional<Colourings> colourings(const Diagram& diagram, std::span<const ConjugacyClass> classes) {
    if (diagram.size() > most_crossings || diagram.loops != 1) return {};
    const Arcs arcs = arcs_of(diagram);
    const Plan plan = best_plan(arcs);
    const std::vector<Passage> way = way_around(diagram, arcs, plan.steps.front().to);
    Colourings result;
    for (const ConjugacyClass& colours : classes) {
        std::optional<Counts> counts = Search(plan, way, diagram.writhe(), colours).run();
        if (!counts) return {};
        result.push_back(*std::move(counts));
    }
    return result;
}

Colourings mirrored(const Colourings& colourings) {
    Colourings result = colourings;
    for (auto& counts : result) std::reverse(counts.begin() + 1, counts.end());
    return result;
}

std::optional<Colourings> product(const Colourings& a, const Colourings& b) {
    Colourings result;
    for (std::size_t k = 0; k < a.size(); ++k) {
        const std::size_t order = a[k].size();
        result.emplace_back(order, 0);
        for (std::size_t i = 0; i < order; ++i)
            for (std::size_t j = 0; j < order; ++j) {
                std::int64_t term = 0, &sum = result[k][(i + j) % order];
                if (__builtin_mul_overflow(a[k][i], b[k][j], &term) || __builtin_add_overflow(sum, term, &sum))
                    return {};
            }
    }
    return result;
}

} // namespace loopwise::knots
