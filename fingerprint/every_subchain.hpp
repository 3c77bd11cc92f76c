// Closes every subchain, direction by direction and one subchain of each class.
#pragma once

#include "fingerprint/direction_classes.hpp"
#include "fingerprint/direction_closer.hpp"
#include "fingerprint/knot_numbers.hpp"
#include "fingerprint/sampler.hpp"

#include <mutex>

namespace loopwise::fingerprint {

class EverySubchain {
  public:
    /// All must outlive it.
    EverySubchain(const Chain& chain, const FingerprintPlan& plan, KnotNumbers& knots, FingerprintWatcher& watcher);

    /// Closes each subchain in all directions; unless the policy asks for that, those that the first directions show to
    /// be unknotted only in these. `told` gets the part that is done, by one thread at a time.
    void close(const std::function<void(double part)>& told);

    KnotCounts whole_chain() const;
    void into(FingerprintMatrix& matrix) const;

  private:
    struct Worker {
        DirectionClasses classes;
        DirectionCloser closer;
    };

    void close_in(int row, Worker& worker);
    void leave_out_unknotted(std::size_t closures, std::size_t most_knotted);
    KnotCounts counts_of(std::size_t index, const std::vector<knots::KnotType>& names) const;

    const Chain& chain_;
    const FingerprintPlan& plan_;
    KnotNumbers& knots_;
    std::vector<Worker> workers_;
    std::mutex mutex_;
    // By subchain, see FingerprintMatrix::index().
    std::vector<std::uint16_t> closures_;                ///< 0 while they are not known to be less than all
    std::vector<std::vector<std::uint16_t>> counts_{{}}; ///< by knot but the unknot, closures that gave it
};

} // namespace loopwise::fingerprint
