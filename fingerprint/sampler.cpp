#include "fingerprint/sampler.hpp"

#include "fingerprint/closer.hpp"
#include "fingerprint/cores.hpp"
#include "fingerprint/direction_classes.hpp"
#include "fingerprint/direction_closer.hpp"
#include "survey/parallel.hpp"

#include <atomic>
#include <mutex>

namespace loopwise::fingerprint {
namespace {

class SubchainSampler {
  public:
    SubchainSampler(const Chain& chain, const FingerprintPlan& plan, FingerprintWatcher& watcher)
        : chain_(chain), beads_(chain.size()), plan_(plan), watcher_(watcher),
          closers_(std::max(plan.threads, 1U), SubchainCloser(chain, watcher)), matrix_(beads_, plan.most_memory),
          budget_(plan.policy, chain, watcher) {
        if (beads_ < fewest_knotted) whole_ = {{knots::KnotType::unknot(), plan.closures}};
        for (std::size_t first = 0; first < beads_; ++first)
            for (std::size_t last = first; last < std::min(first + fewest_knotted - 1, beads_); ++last)
                matrix_.test({first, last}, {0, static_cast<std::uint16_t>(plan.closures)});
    }

    SampledSubchains sample() && {
        const std::size_t step = budget_.grid_step(matrix_);
        if (step == 1)
            close_every_subchain();
        else
            close_on_grid(step);
        auto [knots, place] = knots_.sorted();
        matrix_.renumber(place);
        return {plan_.closures, step, done_, std::move(knots), std::move(matrix_), std::move(whole_), std::move(open_)};
    }

  private:
    /// Direction by direction, one subchain of each class.
    void close_every_subchain() {
        planned_ = beads_ < fewest_knotted ? 0 : (beads_ - fewest_knotted + 1) * (beads_ - fewest_knotted + 2) / 2;
        watcher_.every_subchain_begins(budget_.expected().of_every_subchain());
        std::vector<DirectionClasses> classes(closers_.size(), DirectionClasses(chain_));
        std::vector<DirectionCloser> closers(closers_.size(), DirectionCloser(chain_, watcher_));
        std::size_t directions = 0;
        survey::in_parallel(plan_.closures, plan_.threads, [&](std::size_t i, std::size_t worker) {
            const int row = farthest_point_order()[i];
            classes[worker].find(row);
            const std::vector<std::uint16_t> knots = close_classes(classes[worker], row, closers[worker]);
            const std::scoped_lock lock(mutex_);
            count(classes[worker].classes(), knots);
            const double part = static_cast<double>(++directions) / static_cast<double>(plan_.closures);
            done_ = planned_ * directions / plan_.closures;
            watcher_.subchain_closed(done_, planned_, part);
        });
        take_counts();
    }

    /// The number of the knot of each class.
    std::vector<std::uint16_t> close_classes(const DirectionClasses& classes, int row, DirectionCloser& closer) {
        std::vector<std::uint16_t> knots(classes.shortest().size());
        closer.close(row, classes.shortest(), [&](std::size_t i, const knots::KnotType& knot) {
            knots[i] = knots_.number_of(counted_as(knot));
        });
        knots[DirectionClasses::unknotted] = 0;
        return knots;
    }

    void count(const std::vector<std::uint32_t>& classes, const std::vector<std::uint16_t>& knots) {
        for (const std::uint16_t knot : knots) {
            if (counts_.size() <= knot) counts_.resize(knot + std::size_t{1});
            if (knot > 0 && counts_[knot].empty()) counts_[knot].resize(classes.size());
        }
        for (std::size_t i = 0; i < classes.size(); ++i)
            if (const std::uint16_t knot = knots[classes[i]]; knot > 0) ++counts_[knot][i];
    }

    void take_counts() {
        const std::vector<knots::KnotType> names = knots_.by_number();
        const std::size_t last_index = FingerprintMatrix::index(matrix_.whole_chain());
        for (std::size_t last = 0, i = 0; last < beads_; ++last)
            for (std::size_t first = 0; first <= last; ++first, ++i) {
                KnotCounts counts;
                std::size_t unknotted = plan_.closures;
                for (std::size_t knot = 1; knot < counts_.size(); ++knot)
                    if (!counts_[knot].empty() && counts_[knot][i] > 0) {
                        counts.push_back({names[knot], counts_[knot][i]});
                        unknotted -= counts_[knot][i];
                    }
                if (unknotted > 0) counts.push_back({names[0], unknotted});
                const survey::KnotCount& most = most_frequent(counts);
                matrix_.test({first, last}, {knots_.number_of(most.knot), static_cast<std::uint16_t>(most.closures)});
                if (i == last_index) whole_ = std::move(counts);
            }
    }

    void close_on_grid(std::size_t step) {
        SubchainGrid grid(beads_, step);
        std::vector<Subchain> corners = grid.corners_to_test(matrix_);
        planned_ = corners.size();
        planned_work_ = 2 * budget_.expected().of(corners); // borders may take as much again
        budget_.spend_on_grid(test(corners));
        while (true) {
            const std::vector<std::size_t> mixed = grid.mixed(matrix_, plan_.closures),
                                           chosen = choose(grid.blocks(), mixed);
            if (chosen.empty()) {
                for (const std::size_t i : mixed) open_.push_back(grid.blocks()[i]);
                break;
            }
            planned_work_ = done_work_ + budget_.border_work(grid.blocks(), mixed);
            grid.refine(chosen);
            corners = grid.corners_to_test(matrix_);
            planned_ += corners.size();
            budget_.spend_on_borders(test(corners));
        }
        for (const Block& block : grid.blocks()) infer_from_corners(matrix_, block);
        for (const Block& block : open_) infer_from_nearest_corners(matrix_, block);
    }

    /// The mixed blocks to quarter next. Decisive are those that may change a core, or the depth of the chain's knot.
    std::vector<std::size_t> choose(const std::vector<Block>& blocks, const std::vector<std::size_t>& mixed) const {
        const CoresByKnot cores = find_cores(halves_);
        const bool is_knot = halves_.contains(matrix_.at(matrix_.whole_chain()).knot);
        const DepthLimits depth(matrix_);
        return budget_.affordable(blocks, mixed, [&](const Block& b) {
            return may_change_cores(b, matrix_, plan_.closures, cores) ||
                   (is_knot && (depth.may_end_in(b, front) || depth.may_end_in(b, back)));
        });
    }

    struct Outcome {
        Cell cell;
        double work = 0;
        bool is_knot = false;
    };

    /// Returns the work that it took.
    double test(const std::vector<Subchain>& subchains) {
        std::vector<Outcome> outcomes(subchains.size());
        survey::in_parallel(subchains.size(), plan_.threads, [&](std::size_t i, std::size_t worker) {
            outcomes[i] = close(subchains[i], closers_[worker]);
            const double part = (done_work_ += outcomes[i].work) / planned_work_;
            watcher_.subchain_closed(++done_, planned_, part);
        });
        double work = 0;
        for (std::size_t i = 0; i < subchains.size(); ++i) {
            const Cell& cell = outcomes[i].cell;
            work += outcomes[i].work;
            matrix_.test(subchains[i], cell);
            if (budget_.is_limited() && outcomes[i].is_knot && is_half(cell, plan_.closures))
                halves_[cell.knot].push_back({subchains[i], cell.closures});
        }
        return work;
    }

    Outcome close(const Subchain& s, SubchainCloser& closer) {
        KnotCounts counts;
        double work = 0;
        closer.close_in_many(s, farthest_point_order().first(plan_.closures),
                             [&](const SubchainCloser::Closure& closure) {
                                 work += loop_work(closure.reduced.size());
                                 survey::count(counts, counted_as(closure.knot));
                                 return true;
                             });
        const survey::KnotCount& most = most_frequent(counts);
        const Outcome outcome{{knots_.number_of(most.knot), static_cast<std::uint16_t>(most.closures)},
                              subchain_work(s.size()) + work / static_cast<double>(plan_.closures),
                              most.knot.is_knot()};
        if (s == matrix_.whole_chain()) whole_ = std::move(counts);
        return outcome;
    }

    const Chain& chain_;
    const std::size_t beads_;
    const FingerprintPlan& plan_;
    FingerprintWatcher& watcher_;
    std::vector<SubchainCloser> closers_; ///< one for each thread
    FingerprintMatrix matrix_;
    Budget budget_;
    KnotNumbers knots_;
    std::atomic<std::size_t> done_ = 0;
    std::size_t planned_ = 0;
    std::atomic<double> done_work_ = 0;
    double planned_work_ = 1;
    KnotCounts whole_;
    HalvesByKnot halves_; ///< kept where the work is limited
    std::vector<Block> open_;
    std::mutex mutex_;
    std::vector<std::vector<std::uint16_t>> counts_; ///< by knot: closures of each subchain that gave it
};

} // namespace

SampledSubchains sample_subchains(const Chain& chain, const FingerprintPlan& plan, FingerprintWatcher& watcher) {
    return SubchainSampler(chain, plan, watcher).sample();
}

} // namespace loopwise::fingerprint
