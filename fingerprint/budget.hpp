// What closing costs, which subchains are closed, and where the work ends.
#pragma once

#include "fingerprint/closer.hpp"
#include "fingerprint/grid.hpp"

#include <functional>
#include <limits>

namespace loopwise::fingerprint {

/// Seconds for a unit of work on a common processor. The work of a closure of n beads that reduces to m beads is
/// m (m + 25) + 0.7 n + 0.0005 n^2. Measured with 100 closures of every subchain of a grid, on proteins of 219 and 331
/// residues and on random walks, walks as dense as proteins and chains with tied trefoils of 300, 1,000 and 1,500
/// beads: 2.1e-8 to 6.7e-8, the most where many loops are hard to name.
inline constexpr double seconds_per_work = 3.5e-8;

/// Work of reducing and naming a closure that reduces to `beads`.
double loop_work(std::size_t beads);
/// The part of a closure in preparing a subchain of `beads`.
double subchain_work(std::size_t beads);

/// The step of a grid of some eight hundred subchains.
std::size_t default_step(std::size_t beads);

/// Which subchains are closed.
struct SamplingPolicy {
    /// Of the grid, in beads; 1 closes every subchain in all directions. 0 bounds the work by the chain's length alone:
    /// every subchain is closed if that is expected to stay within the bound. Otherwise the step is default_step(), or
    /// larger if the bound requires it, and borders are followed until the bound is reached.
    std::size_t step = 0;
    /// The bound for following borders where a step is given.
    double border_work = std::numeric_limits<double>::infinity();
};

/// The expected work of a closure of a subchain, by its length. Closes eight subchains to find out.
class ExpectedWork {
  public:
    ExpectedWork(const Chain& chain, FingerprintWatcher& watcher);

    double of(std::size_t beads) const;
    double of(const Subchain& s) const { return of(s.size()); }
    double of(const std::vector<Subchain>& all) const;
    double of_every_subchain() const { return every_subchain_; }

  private:
    double estimate_every_subchain(const Chain& chain) const;
    double of_subchains_one_by_one(std::size_t beads) const;

    static constexpr std::size_t samples = 8;
    std::size_t beads_;
    std::array<double, samples + 1> work_{}; ///< at each eighth of the chain's length
    double every_subchain_;
};

/// The work that a policy leaves for a chain.
class Budget {
  public:
    Budget(const SamplingPolicy& policy, const Chain& chain, FingerprintWatcher& watcher);

    const ExpectedWork& expected() const { return expected_; }
    bool is_limited() const { return left_ < std::numeric_limits<double>::infinity(); }
    /// The step of the grid; 1 closes every subchain.
    std::size_t grid_step(const FingerprintMatrix& matrix) const;

    void spend_on_grid(double work);
    void spend_on_borders(double work) { left_ -= work; }
    /// The mixed blocks to quarter next, as many as the work left allows. Those that are decisive come first, the
    /// cheapest of them first; once there are none, the largest blocks.
    std::vector<std::size_t> affordable(const std::vector<Block>& blocks, const std::vector<std::size_t>& mixed,
                                        const std::function<bool(const Block&)>& is_decisive) const;
    /// The work expected for following the borders in these blocks.
    double border_work(const std::vector<Block>& blocks, const std::vector<std::size_t>& mixed) const;

  private:
    SamplingPolicy policy_;
    std::size_t beads_;
    ExpectedWork expected_;
    double left_;
};

} // namespace loopwise::fingerprint
