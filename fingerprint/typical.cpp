#include "fingerprint/typical.hpp"

#include "fingerprint/closer.hpp"
#include "survey/parallel.hpp"

#include <algorithm>
#include <atomic>

namespace loopwise::fingerprint {
namespace {

/// Rows that are likely to hold a closure of the most frequent knot.
constexpr std::size_t tried_first = 2;

TypicalClosure typical_closure(const Subchain& subchain, const knots::KnotType& knot, std::span<const int> rows,
                               SubchainCloser& closer) {
    TypicalClosure typical{subchain, 0, {}, {}, {}};
    const auto take = [&](const SubchainCloser::Closure& closure) {
        const bool is_first = typical.closing.empty(), is_wanted = counted_as(closure.knot) == knot;
        if (is_first || is_wanted) {
            typical.row = closure.row;
            typical.knot = counted_as(closure.knot);
            typical.closing = closure.closing;
            typical.left.clear();
            for (const ChainAtom& bead : closure.reduced) typical.left.push_back(static_cast<std::size_t>(bead.id));
        }
        return !is_wanted;
    };
    const std::size_t few = std::min(rows.size(), tried_first);
    if (closer.close_in_few(subchain, rows.first(few), take)) closer.close_in_many(subchain, rows.subspan(few), take);
    return typical;
}

/// The tested subchains on lines as far apart, counted from both ends of the chain; more than `most` if there are more.
std::vector<Subchain> tested_on_lines(const FingerprintMatrix& matrix, std::size_t apart, std::size_t most) {
    std::vector<Subchain> found;
    const std::size_t end = matrix.beads() - 1;
    for (std::size_t first = 0; first <= end; first += apart)
        for (std::size_t off = 0; first + off + fewest_knotted <= matrix.beads(); off += apart) {
            if (matrix.is_tested({first, end - off})) found.push_back({first, end - off});
            if (found.size() > most) return found;
        }
    return found;
}

} // namespace

std::vector<Subchain> shown_subchains(const ChainFingerprint& of, const std::vector<KnotPlace>& places,
                                      std::size_t most) {
    std::vector<Subchain> always{of.matrix.whole_chain()};
    for (const KnotPlace& place : places)
        if (place.core) always.push_back(*place.core);
    for (std::size_t apart = 1;; apart = apart < of.step ? of.step : apart + of.step) {
        std::vector<Subchain> shown = tested_on_lines(of.matrix, apart, most);
        if (shown.size() > most) continue;
        std::erase_if(shown,
                      [&](const Subchain& s) { return std::find(always.begin(), always.end(), s) != always.end(); });
        shown.insert(shown.begin(), always.begin(), always.end());
        return shown;
    }
}

std::vector<TypicalClosure> typical_closures(const Chain& chain, const ChainFingerprint& of,
                                             const std::vector<Subchain>& subchains, unsigned threads,
                                             FingerprintWatcher& watcher) {
    std::vector<TypicalClosure> found(subchains.size());
    std::vector<SubchainCloser> closers(std::max(threads, 1U), SubchainCloser(chain, watcher));
    const std::span<const int> rows = farthest_point_order().first(of.closures);
    std::atomic<std::size_t> done = 0;
    survey::in_parallel(subchains.size(), threads, [&](std::size_t i, std::size_t worker) {
        found[i] = typical_closure(subchains[i], of.knots[of.matrix.at(subchains[i]).knot], rows, closers[worker]);
        const std::size_t so_far = ++done;
        watcher.subchain_closed(so_far, subchains.size(),
                                static_cast<double>(so_far) / static_cast<double>(subchains.size()));
    });
    return found;
}

} // namespace loopwise::fingerprint
