#include "fingerprint/direction_closer.hpp"

#include "src/closure/closures.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/reduce_before_closing.hpp"

#include <algorithm>
#include <array>
#include <numeric>

namespace loopwise::fingerprint {
namespace {

/// So few subchains are closed one by one.
constexpr std::size_t few = 8;
/// A part of fewer beads is not worth reducing.
constexpr std::size_t fewest_in_common = 16;

} // namespace

/// A part that subchains have in common, reduced beside the closures of all of them; none if it has no beads.
struct DirectionCloser::Common {
    Subchain whole;
    Chain reduced;
};

void DirectionCloser::close(int row, const std::vector<Subchain>& subchains, const Take& take) {
    row_ = row;
    subchains_ = &subchains;
    take_ = &take;
    std::vector<std::size_t> numbers(subchains.size());
    std::iota(numbers.begin(), numbers.end(), std::size_t{0});
    close_each(numbers, {});
}

void DirectionCloser::close_each(Numbers numbers, const Common& around) {
    if (numbers.size() <= few) {
        for (const std::size_t number : numbers) close_one(number, around);
        return;
    }
    const Common common = common_of(numbers, around);
    // Halves by the first bead, then each by the last.
    const auto halves = [&](Numbers all, std::size_t Subchain::*end) {
        const std::size_t half = all.size() / 2;
        std::nth_element(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(half), all.end(),
                         [&](std::size_t a, std::size_t b) { return (*subchains_)[a].*end < (*subchains_)[b].*end; });
        return std::array{all.first(half), all.subspan(half)};
    };
    for (const Numbers half : halves(numbers, &Subchain::first))
        for (const Numbers quarter : halves(half, &Subchain::last)) close_each(quarter, common);
}

DirectionCloser::Common DirectionCloser::common_of(Numbers numbers, const Common& around) const {
    Subchain whole{0, chain_.size() - 1}, longest{whole.last, 0};
    std::vector<std::size_t> ends;
    for (const std::size_t number : numbers) {
        const Subchain& s = (*subchains_)[number];
        whole = {std::max(whole.first, s.first), std::min(whole.last, s.last)};
        longest = {std::min(longest.first, s.first), std::max(longest.last, s.last)};
        ends.insert(ends.end(), {s.first, s.last});
    }
    if (whole.last < whole.first + fewest_in_common) return {};
    std::sort(ends.begin(), ends.end());
    ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    Chain moved;
    for (const std::size_t end : ends) moved.push_back(chain_[end]);
    Common common{whole, part(whole.first, whole.last, around)};
    const std::span<const ChainAtom> beads(chain_);
    survey::reduce_middle_before_closing(common.reduced, beads.subspan(longest.first, whole.first - longest.first + 1),
                                         beads.subspan(whole.last, longest.last - whole.last + 1), moved, row_,
                                         diameter_);
    return common;
}

Chain DirectionCloser::part(std::size_t first, std::size_t last, const Common& around) const {
    const auto at = [&](std::size_t bead) { return chain_.begin() + static_cast<std::ptrdiff_t>(bead); };
    if (around.reduced.empty()) return {at(first), at(last + 1)};
    Chain beads(at(first), at(around.whole.first));
    beads.insert(beads.end(), around.reduced.begin(), around.reduced.end());
    beads.insert(beads.end(), at(around.whole.last + 1), at(last + 1));
    return beads;
}

void DirectionCloser::close_one(std::size_t number, const Common& around) {
    watcher_.closure_begins();
    const Subchain& s = (*subchains_)[number];
    Chain loop = part(s.first, s.last, around);
    closure::close_in_direction(loop, row_, diameter_);
    reduce::reduce(loop, true);
    (*take_)(number, namer_.name(loop).type);
}

} // namespace loopwise::fingerprint
