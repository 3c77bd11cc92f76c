// Closes many subchains of a chain in one direction.
#pragma once

#include "fingerprint/closer.hpp"

namespace loopwise::fingerprint {

/// Reduces what many subchains have in common once for all of them. One thread at a time may use it.
class DirectionCloser {
  public:
    /// The chain and the watcher must outlive it.
    DirectionCloser(const Chain& chain, FingerprintWatcher& watcher)
        : chain_(chain), watcher_(watcher), diameter_(DiameterOfChain(chain)) {}

    /// Calls take(i, knot) for each of the subchains, in any order.
    using Take = std::function<void(std::size_t i, const knots::KnotType& knot)>;
    void close(int row, const std::vector<Subchain>& subchains, const Take& take);

  private:
    struct Common;
    using Numbers = std::span<std::size_t>;

    void close_each(Numbers numbers, const Common& around);
    void close_one(std::size_t number, const Common& around);
    Common common_of(Numbers numbers, const Common& around) const;
    Chain part(std::size_t first, std::size_t last, const Common& around) const;

    const Chain& chain_;
    FingerprintWatcher& watcher_;
    const double diameter_;
    int row_ = 0;
    const std::vector<Subchain>* subchains_ = nullptr;
    const Take* take_ = nullptr;
    knots::KnotNamer namer_;
};

} // namespace loopwise::fingerprint
