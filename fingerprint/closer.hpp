// The closures of one subchain, in directions that are spread evenly.
#pragma once

#include "fingerprint/matrix.hpp"
#include "knots/knot.hpp"
#include "libloopwise.h"
#include "survey/farthest_point_order.hpp"

#include <functional>

namespace loopwise::fingerprint {

using survey::farthest_point_order;

/// Told about the work by the threads that do it. What it throws ends the work.
class FingerprintWatcher {
  public:
    virtual ~FingerprintWatcher() = default;
    /// `done` of the subchains `planned` so far are closed; following borders plans more. `part` estimates how much
    /// of the work that is.
    virtual void subchain_closed(std::size_t done, std::size_t planned, double part) = 0;
    /// A closure begins. Called often: a subchain of a long chain takes a while.
    virtual void closure_begins() {}
    /// Every subchain will be closed. The estimated work of one closure of each, see seconds_per_work.
    virtual void every_subchain_begins(double work) { static_cast<void>(work); }
};

/// Closes subchains in directions, reduces each loop and names its knot. One thread at a time may use it.
class SubchainCloser {
  public:
    /// The chain and the watcher must outlive it.
    SubchainCloser(const Chain& chain, FingerprintWatcher& watcher) : chain_(chain), watcher_(watcher) {}

    /// A reduced loop. The identifier of a bead is its position in the chain; the beads that close the subchain count
    /// from chain.size() on.
    struct Closure {
        int row;
        knots::KnotType knot;
        const Chain &closing, &reduced;
    };
    using Take = std::function<bool(const Closure&)>;

    /// Calls take(closure) for one row of the table of directions after another, until it returns false. Returns
    /// whether it always returned true.
    bool close_in_few(const Subchain& subchain, std::span<const int> rows, const Take& take);
    /// The same, with a first reduction of the open subchain for all closures, which pays for many.
    bool close_in_many(const Subchain& subchain, std::span<const int> rows, const Take& take);

  private:
    double begin(const Subchain& subchain);
    bool close(double diameter, std::span<const int> rows, const Take& take);

    const Chain& chain_;
    FingerprintWatcher& watcher_;
    Chain subchain_, closing_, loop_;
    knots::KnotNamer namer_;
};

} // namespace loopwise::fingerprint
