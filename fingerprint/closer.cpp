#include "fingerprint/closer.hpp"

#include "src/closure/closures.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/reduce_before_closing.hpp"

namespace loopwise::fingerprint {
/// Returns the diameter of the subchain.
double SubchainCloser::begin(const Subchain& s) {
    const auto first = chain_.begin() + static_cast<std::ptrdiff_t>(s.first);
    subchain_.assign(first, first + static_cast<std::ptrdiff_t>(s.size()));
    auto id = static_cast<std::int32_t>(s.first);
    for (ChainAtom& bead : subchain_) bead.id = id++;
    return DiameterOfChain(subchain_);
}

bool SubchainCloser::close(double diameter, std::span<const int> rows, const Take& take) {
    for (const int row : rows) {
        watcher_.closure_begins();
        loop_ = subchain_;
        closure::close_in_direction(loop_, row, diameter);
        const auto added = loop_.begin() + static_cast<std::ptrdiff_t>(subchain_.size());
        auto id = static_cast<std::int32_t>(chain_.size());
        for (auto bead = added; bead != loop_.end(); ++bead) bead->id = id++;
        closing_.assign(added, loop_.end());
        reduce::reduce(loop_, true);
        if (!take({row, namer_.name(loop_).type, closing_, loop_})) return false;
    }
    return true;
}

bool SubchainCloser::close_in_few(const Subchain& subchain, std::span<const int> rows, const Take& take) {
    return close(begin(subchain), rows, take);
}

bool SubchainCloser::close_in_many(const Subchain& subchain, std::span<const int> rows, const Take& take) {
    const double diameter = begin(subchain);
    watcher_.closure_begins();
    survey::reduce_before_closing(subchain_, rows, diameter);
    return close(diameter, rows, take);
}

} // namespace loopwise::fingerprint
