#include "read/cut.hpp"

#include "read/refusal.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <tuple>

namespace loopwise::read {
namespace {

using Residue = polymer::ResidueId;
using Residues = std::vector<Residue>;

/// Positions in a chain, both included. Where `from` follows `to`, the range is the gap between them.
struct Positions {
    std::size_t from, to;
};

[[noreturn]] void refuse_residue(const Residues& residues, const Residue& asked) {
    refuse("no residue " + words::quoted(asked.text()) + "; the chain runs from " + residues.front().text() + " to " +
           residues.back().text());
}

/// Whether the numbers of a chain fall rather than rise.
bool falls(const Residues& residues) {
    std::ptrdiff_t rises = 0;
    for (std::size_t i = 0; i + 1 < residues.size(); ++i) rises += residues[i] < residues[i + 1] ? 1 : -1;
    return rises < 0;
}

/// The only place that fits(position), and those that follow it and fit, too.
template <class Fits> std::optional<Positions> only_place(const Residue& asked, std::size_t end, const Fits& fits) {
    std::optional<Positions> found;
    for (std::size_t i = 0; i < end; ++i) {
        if (!fits(i)) continue;
        if (found && found->to + 1 != i)
            refuse("residue " + words::quoted(asked.text()) + " is not unique: the numbers of the chain repeat");
        found = {found ? found->from : i, i};
    }
    return found;
}

/// Of a number all residues of that number, or the gap that it lies in.
Positions positions_of(const Residues& residues, const Residue& asked) {
    const std::int32_t number = asked.number().value_or(0);
    if (const auto own = only_place(asked, residues.size(), [&](std::size_t i) {
            return asked.is_number() ? residues[i].number() == number : residues[i] == asked;
        }))
        return *own;
    const bool down = falls(residues);
    const auto gap = only_place(asked, residues.size() - 1, [&](std::size_t i) {
        const Residue &low = residues[down ? i + 1 : i], &high = residues[down ? i : i + 1];
        return asked.is_number() && low.number() && high.number() && *low.number() < number && number < *high.number();
    });
    if (!gap || gap->from != gap->to) refuse_residue(residues, asked);
    return {gap->from + 1, gap->from};
}

/// Whether four or five columns were too few for the next number: 0 follows 9999.
bool goes_around(const Residue& residue, const Residue& next) {
    constexpr std::int32_t near_end = 9900, near_start = 100;
    return residue.number().value_or(0) > near_end && next.number().value_or(near_start) < near_start;
}

/// All numbers must lie in the range from first to last.
void refuse_others(const Residues& residues, const Positions& range, const Residue& first, const Residue& last) {
    if (!first.number() || !last.number()) return;
    auto [low, high] = std::minmax({*first.number(), *last.number()});
    bool around = false;
    for (std::size_t i = range.from; i < range.to; ++i) around = around || goes_around(residues[i], residues[i + 1]);
    if (around) std::tie(low, high) = std::pair(*first.number(), *last.number());
    for (std::size_t i = range.from; i <= range.to; ++i) {
        const auto number = residues[i].number();
        if (!number) continue;
        const bool inside = low <= high ? *number >= low && *number <= high : *number >= low || *number <= high;
        if (!inside)
            refuse("residue " + residues[i].text() + " lies between residues " + first.text() + " and " + last.text() +
                   ": the numbers of the chain are not in order");
    }
}

Positions between(const Residues& residues, const std::optional<Residue>& first, const std::optional<Residue>& last) {
    const std::size_t end = residues.size() - 1;
    const Positions a = first ? positions_of(residues, *first) : Positions{0, 0};
    const Positions b = last ? positions_of(residues, *last) : Positions{end, end};
    const bool in_order = a.from <= b.to;
    const Positions range = in_order ? Positions{a.from, b.to} : Positions{b.from, a.to};
    if (range.from > range.to) refuse_residue(residues, *first);
    const Residue low = first.value_or(residues.front()), high = last.value_or(residues.back());
    if (in_order)
        refuse_others(residues, range, low, high);
    else
        refuse_others(residues, range, high, low);
    return range;
}

} // namespace

void cut(polymer::NamedChain& chain, const std::optional<Residue>& first, const std::optional<Residue>& last) {
    if (!first && !last) return;
    if (polymer::is_ring(chain)) polymer::drop_repeated_end(chain);
    Residues& residues = chain.residues;
    const auto [from, to] = between(residues, first, last);
    const auto begin = static_cast<std::ptrdiff_t>(from), end = static_cast<std::ptrdiff_t>(to) + 1;
    chain.beads = Chain(chain.beads.begin() + begin, chain.beads.begin() + end);
    residues = Residues(residues.begin() + begin, residues.begin() + end);
}

} // namespace loopwise::read
