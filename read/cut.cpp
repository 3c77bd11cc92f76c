#include "read/cut.hpp"

#include "read/refusal.hpp"
#include "words/text.hpp"

#include <algorithm>

namespace loopwise::read {
namespace {

using Residue = polymer::ResidueId;
using Residues = std::vector<Residue>;

/// Positions in a chain, both included.
using Positions = std::pair<std::size_t, std::size_t>;

[[noreturn]] void refuse_residue(const Residues& residues, const Residue& asked) {
    refuse("no residue " + words::quoted(asked.text()) + "; the chain runs from " + residues.front().text() + " to " +
           residues.back().text());
}

/// From the first to the last residue with a number in the range.
Positions between_numbers(const Residues& residues, const Residue& low, const Residue& high) {
    const auto inside = [&](const Residue& residue) {
        return residue.number() && *residue.number() >= *low.number() && *residue.number() <= *high.number();
    };
    const auto from = std::find_if(residues.begin(), residues.end(), inside);
    const auto to = std::find_if(residues.rbegin(), residues.rend(), inside);
    if (from == residues.end()) refuse_residue(residues, low);
    return {static_cast<std::size_t>(from - residues.begin()), static_cast<std::size_t>(residues.rend() - to) - 1};
}

std::size_t position_of(const Residues& residues, const Residue& asked) {
    const auto found = std::find(residues.begin(), residues.end(), asked);
    if (found == residues.end()) refuse_residue(residues, asked);
    return static_cast<std::size_t>(found - residues.begin());
}

/// A number between the ends of the chain may lie in a gap; one beyond them is a mistake.
void refuse_beyond_ends(const Residues& residues, const Residue& asked) {
    const auto a = residues.front().number(), b = residues.back().number();
    if (!a || !b || *asked.number() < std::min(*a, *b) || *asked.number() > std::max(*a, *b))
        refuse_residue(residues, asked);
}

Positions positions_of(const Residues& residues, const Residue& first, const Residue& last) {
    if (!first.is_number() || !last.is_number())
        return std::minmax(position_of(residues, first), position_of(residues, last));
    refuse_beyond_ends(residues, first);
    refuse_beyond_ends(residues, last);
    return between_numbers(residues, std::min(first, last), std::max(first, last));
}

} // namespace

void cut(polymer::NamedChain& chain, const std::optional<Residue>& first, const std::optional<Residue>& last) {
    if (!first && !last) return;
    if (polymer::is_ring(chain)) polymer::drop_repeated_end(chain);
    Residues& residues = chain.residues;
    const auto [from, to] = positions_of(residues, first.value_or(residues.front()), last.value_or(residues.back()));
    const auto begin = static_cast<std::ptrdiff_t>(from), end = static_cast<std::ptrdiff_t>(to) + 1;
    chain.beads = Chain(chain.beads.begin() + begin, chain.beads.begin() + end);
    residues = Residues(residues.begin() + begin, residues.begin() + end);
    std::vector<double>& values = chain.confidence;
    if (!values.empty()) values = std::vector<double>(values.begin() + begin, values.begin() + end);
}

} // namespace loopwise::read
