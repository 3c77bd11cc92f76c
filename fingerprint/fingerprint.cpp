#include "fingerprint/fingerprint.hpp"

#include "fingerprint/cores.hpp"

#include <algorithm>
#include <stdexcept>

namespace loopwise::fingerprint {

ChainFingerprint fingerprint_of(const std::string& file, const polymer::NamedChain& chain, const FingerprintPlan& plan,
                                FingerprintWatcher& watcher) {
    if (chain.beads.empty()) throw std::invalid_argument("the chain has no atom");
    if (plan.closures == 0 || plan.closures > farthest_point_order().size())
        throw std::invalid_argument("between 1 and 400 closures of a subchain can be made");
    ChainFingerprint result{sample_subchains(chain.beads, plan, watcher)};
    result.file = file;
    result.chain = chain.name;
    result.residues = chain.residues;
    result.bonds = polymer::bonds_of(chain);
    result.notes = chain.notes;
    result.confidence = chain.confidence;
    result.in_file = chain.in_file;
    const Cell& cell = result.matrix.at(result.matrix.whole_chain());
    result.knot = result.knots[cell.knot];
    result.share = result.share_of(cell.closures);
    if (!result.bonds.gaps.empty())
        result.verdict = survey::judge_gaps(chain, result.bonds, result.knot, {.threads = plan.threads},
                                            [&watcher] { watcher.closure_begins(); });
    result.places = find_places(result);
    if (result.is_knot(cell.knot)) result.depth = depth_of(result.matrix);
    if (result.depth && result.unseen.empty()) result.core_from_top = core_from_top(result.matrix);
    result.depth_within = {result.step, result.step}; // the knot may change between the lines
    const DepthLimits depth(result.matrix);
    for (const Block& block : result.open) {
        result.borders_within = std::max(result.borders_within, block.span());
        for (const End end : ends)
            if (depth.may_end_in(block, end))
                result.depth_within[end] = std::max(result.depth_within[end], block.span());
    }
    return result;
}

} // namespace loopwise::fingerprint
