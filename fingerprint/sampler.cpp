#include "fingerprint/sampler.hpp"

#include "fingerprint/closer.hpp"
#include "fingerprint/cores.hpp"
#include "fingerprint/every_subchain.hpp"
#include "survey/parallel.hpp"

#include <algorithm>
#include <atomic>
#include <cmath>

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
        return {plan_.closures,
                step,
                done_,
                std::move(knots),
                std::move(matrix_),
                std::move(whole_),
                std::move(open_),
                std::move(unseen_),
                plan_.core_share,
                plan_.core_closures()};
    }

  private:
    void close_every_subchain() {
        planned_ = beads_ < fewest_knotted ? 0 : (beads_ - fewest_knotted + 1) * (beads_ - fewest_knotted + 2) / 2;
        watcher_.every_subchain_begins(budget_.expected().of_every_subchain());
        EverySubchain every(chain_, plan_, knots_, watcher_);
        every.close([&](double part) {
            done_ = static_cast<std::size_t>(part * static_cast<double>(planned_));
            watcher_.subchain_closed(done_, planned_, part);
        });
        whole_ = every.whole_chain();
        every.into(matrix_);
    }

    void close_on_grid(std::size_t step) {
        SubchainGrid grid(beads_, step);
        std::vector<Subchain> corners = grid.corners_to_test(matrix_);
        planned_ = corners.size();
        planned_work_ = 2 * budget_.expected().of(corners); // borders may take as much again
        budget_.spend_on_grid(test(corners));
        while (true) {
            const std::vector<std::size_t> mixed = grid.mixed(matrix_, plan_.closures, plan_.core_closures()),
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
        std::copy_if(grid.blocks().begin(), grid.blocks().end(), std::back_inserter(unseen_),
                     [](const Block& block) { return block.span() > 1; });
        for (const Block& block : grid.blocks()) infer_from_corners(matrix_, block);
        for (const Block& block : open_) infer_from_nearest_corners(matrix_, block);
    }

    /// The mixed blocks to quarter next. Decisive are those that may change a core, or the depth of the chain's knot.
    std::vector<std::size_t> choose(const std::vector<Block>& blocks, const std::vector<std::size_t>& mixed) const {
        const CoresByKnot cores = find_cores(candidates_);
        const bool is_knot = candidates_.contains(matrix_.at(matrix_.whole_chain()).knot);
        const DepthLimits depth(matrix_);
        return budget_.affordable(blocks, mixed, [&](const Block& b) {
            return may_change_cores(b, matrix_, plan_.core_closures(), cores) ||
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
            if (budget_.is_limited() && outcomes[i].is_knot && can_be_core(cell, plan_.core_closures()))
                candidates_[cell.knot].push_back({subchains[i], cell.closures});
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
    CandidatesByKnot candidates_; ///< kept where the work is limited
    std::vector<Block> open_, unseen_;
};

} // namespace

std::size_t FingerprintPlan::core_closures() const {
    constexpr double rounding = 1e-9; // of a share such as 0.48, which has no exact double
    return std::max<std::size_t>(
        1, static_cast<std::size_t>(std::ceil(core_share * static_cast<double>(closures) - rounding)));
}

SampledSubchains sample_subchains(const Chain& chain, const FingerprintPlan& plan, FingerprintWatcher& watcher) {
    return SubchainSampler(chain, plan, watcher).sample();
}

} // namespace loopwise::fingerprint
