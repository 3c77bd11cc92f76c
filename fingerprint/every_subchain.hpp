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
    void count(std::size_t index, std::uint16_t knot);
    std::size_t knotted(std::size_t index) const;
    KnotCounts counts_of(std::size_t index, const std::vector<knots::KnotType>& names) const;

    const Chain& chain_;
    const FingerprintPlan& plan_;
    KnotNumbers& knots_;
    std::vector<Worker> workers_;
    std::mutex mutex_;
    /// Closures of a subchain that gave a knot, and the number of the next such count of the subchain, 0 if
    /// there is none.
    struct Count {
        std::uint16_t knot, closures;
        std::uint32_t next;
    };
    std::vector<Count> counts_{{}};
    // By subchain, see FingerprintMatrix::index().
    std::vector<std::uint32_t> first_count_;
    std::vector<std::uint16_t> closures_; ///< 0 where they are not known to be less than all
    std::size_t whole_;
};

} // namespace loopwise::fingerprint
