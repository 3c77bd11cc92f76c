#include "fingerprint/cores.hpp"

#include <algorithm>
#include <tuple>

namespace loopwise::fingerprint {
namespace {

bool meets_none(const Subchain& s, std::span<const Subchain> cores) {
    return std::none_of(cores.begin(), cores.end(), [&](const Subchain& core) { return core.meets(s); });
}

bool have_common_part(const Block& b) { return b.first_high <= b.last_low; }

/// The beads that all subchains of the block have in common, if there are any; otherwise one bead.
Subchain shortest_in(const Block& b) { return {b.first_high, std::max(b.first_high, b.last_low)}; }

/// Whether a subchain of the block could be a core instead of the last of these: it is no longer and has no bead in
/// common with the others.
bool may_replace_last(const Block& b, std::span<const Subchain> cores) {
    if (!have_common_part(b)) return true;
    return meets_none(shortest_in(b), cores.first(cores.size() - 1)) && shortest_in(b).size() <= cores.back().size();
}

bool may_change(const Block& b, std::span<const Subchain> cores) {
    for (std::size_t count = 1; count <= cores.size(); ++count)
        if (may_replace_last(b, cores.first(count))) return true;
    return meets_none(shortest_in(b), cores);
}

/// A subchain with no more than this part of its closures knotted is nowhere near one of which a half is.
constexpr std::size_t hidden_part = 10;

/// Whether a subchain of the block may have beads in common with the core.
bool meets_core(const Block& b, const Subchain& core) { return b.longest().meets(core); }

/// How far the ends of the block's subchains can be from those of the subchain.
std::size_t farthest_off(const Block& b, const Subchain& s) {
    return std::max({distance(b.first_low, s.first), distance(b.first_high, s.first), distance(b.last_low, s.last),
                     distance(b.last_high, s.last)});
}

Subchain without(std::size_t off, End end, std::size_t beads) {
    return end == front ? Subchain{off, beads - 1} : Subchain{0, beads - 1 - off};
}

} // namespace

bool comes_before(const TestedSubchain& a, const TestedSubchain& b) {
    const auto key = [](const TestedSubchain& tested) {
        return std::tuple{tested.subchain.size(), -int{tested.closures}, tested.subchain.first};
    };
    return key(a) < key(b);
}

std::vector<Subchain> find_cores(std::vector<TestedSubchain> candidates) {
    std::sort(candidates.begin(), candidates.end(), comes_before);
    std::vector<Subchain> cores;
    for (const TestedSubchain& candidate : candidates)
        if (meets_none(candidate.subchain, cores)) cores.push_back(candidate.subchain);
    return cores;
}

CoresByKnot find_cores(const CandidatesByKnot& candidates) {
    CoresByKnot cores;
    for (const auto& [knot, tested] : candidates) cores[knot] = find_cores(tested);
    return cores;
}

bool may_change_cores(const Block& block, const FingerprintMatrix& matrix, std::size_t least_closures,
                      const CoresByKnot& cores) {
    return any_on_rim(block, [&](Subchain s) {
        if (!matrix.is_tested(s) || !can_be_core(matrix.at(s), least_closures)) return false;
        const auto of_knot = cores.find(matrix.at(s).knot);
        return of_knot != cores.end() && may_change(block, of_knot->second);
    });
}

std::size_t core_within(std::span<const Block> unseen, const FingerprintMatrix& matrix, std::size_t closures,
                        std::span<const Subchain> cores) {
    const auto may_hide = [&](Subchain s) {
        if (!matrix.is_tested(s)) return false;
        const Cell& cell = matrix.at(s);
        return cell.knot != 0 || hidden_part * (closures - cell.closures) > closures;
    };
    std::size_t within = 1;
    for (const Block& block : unseen) {
        const std::size_t off = farthest_off(block, cores.back());
        if (off > within && meets_core(block, cores.back()) && may_replace_last(block, cores) &&
            any_on_rim(block, may_hide))
            within = off;
    }
    return within;
}

std::array<std::size_t, 2> depth_of(const FingerprintMatrix& matrix) {
    const std::uint16_t knot = matrix.at(matrix.whole_chain()).knot;
    std::array<std::size_t, 2> depth{};
    for (const End end : ends)
        while (depth[end] + 1 < matrix.beads() && matrix.at(without(depth[end] + 1, end, matrix.beads())).knot == knot)
            ++depth[end];
    return depth;
}

Subchain core_from_top(const FingerprintMatrix& matrix) {
    const std::uint16_t knot = matrix.at(matrix.whole_chain()).knot;
    std::array<Subchain, 2> cores;
    for (const End begin : ends) {
        Subchain& core = cores[begin] = matrix.whole_chain();
        for (const End end : {begin, begin == front ? back : front})
            for (Subchain next = core; core.first < core.last; core = next) {
                end == front ? ++next.first : --next.last;
                if (matrix.at(next).knot != knot) break;
            }
    }
    return cores[back].size() < cores[front].size() ? cores[back] : cores[front];
}

DepthLimits::DepthLimits(const FingerprintMatrix& matrix)
    : beads_(matrix.beads()), limits_{matrix.beads(), matrix.beads()} {
    const std::uint16_t knot = matrix.at(matrix.whole_chain()).knot;
    for (const End end : ends)
        for (std::size_t off = 1; off < limits_[end]; ++off) {
            const Subchain s = without(off, end, beads_);
            if (matrix.is_tested(s) && matrix.at(s).knot != knot) limits_[end] = off;
        }
}

bool DepthLimits::may_end_in(const Block& b, End end) const {
    return end == front ? b.last_high == beads_ - 1 && b.first_low < limits_[front]
                        : b.first_low == 0 && beads_ - 1 - b.last_high < limits_[back];
}

} // namespace loopwise::fingerprint
