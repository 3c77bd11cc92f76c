#include "fingerprint/budget.hpp"

#include "fingerprint/direction_classes.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace loopwise::fingerprint {
namespace {

constexpr std::size_t grid_lines = 40, smallest_step = 2;

/// The bound for grid and borders: some 7 seconds of one processor at 1,500 beads with 100 closures, of which proteins
/// take less than two. Longer chains get more, but less than in proportion.
constexpr double most_work = 2e6, usual_beads = 1500;
/// The part of the bound that the grid may take.
constexpr double grid_part = 2.0 / 3.0;
/// Corners that quartering a block adds, at most.
constexpr double new_corners = 5;
/// Subchains closed for each bead along which a border goes, about.
constexpr double subchains_per_border_bead = 3;
/// Closures of each subchain from which the work is estimated.
constexpr std::size_t sampled_closures = 5;
/// Directions in which classes are counted to estimate the work of closing every subchain.
constexpr std::size_t sampled_directions = 3, most_counted = 1500;

double work_by_length(std::size_t beads) {
    return most_work * std::sqrt(std::max(1.0, static_cast<double>(beads) / usual_beads));
}

} // namespace

double loop_work(std::size_t beads) {
    constexpr double for_each_bead = 25;
    return static_cast<double>(beads) * (static_cast<double>(beads) + for_each_bead);
}

double subchain_work(std::size_t beads) {
    constexpr double for_each_bead = 0.7, for_each_pair = 0.0005;
    return static_cast<double>(beads) * (for_each_bead + for_each_pair * static_cast<double>(beads));
}

std::size_t default_step(std::size_t beads) { return std::max<std::size_t>(1, beads / grid_lines); }

ExpectedWork::ExpectedWork(const Chain& chain, FingerprintWatcher& watcher) : beads_(chain.size()) {
    SubchainCloser closer(chain, watcher);
    const std::span<const int> rows = farthest_point_order().first(sampled_closures);
    for (std::size_t i = 1; i <= samples; ++i) {
        const std::size_t size = std::max<std::size_t>(1, i * beads_ / samples), first = (beads_ - size) / 2;
        work_[i] = subchain_work(size);
        closer.close_in_many({first, first + size - 1}, rows, [&](const SubchainCloser::Closure& closure) {
            work_[i] += loop_work(closure.reduced.size()) / sampled_closures;
            return true;
        });
    }
    every_subchain_ = estimate_every_subchain(chain);
}

double ExpectedWork::of(std::size_t beads) const {
    const double at = static_cast<double>(samples * beads) / static_cast<double>(beads_);
    const std::size_t below = std::min(static_cast<std::size_t>(at), samples - 1);
    return work_[below] + (at - static_cast<double>(below)) * (work_[below + 1] - work_[below]);
}

double ExpectedWork::of(const std::vector<Subchain>& all) const {
    return std::accumulate(all.begin(), all.end(), 0.0, [this](double sum, const Subchain& s) { return sum + of(s); });
}

/// Of the classes in a few directions. Those of a long chain are counted in its middle and are as many elsewhere.
double ExpectedWork::estimate_every_subchain(const Chain& chain) const {
    const std::size_t counted = std::min(beads_, most_counted);
    const auto begin = chain.begin() + static_cast<std::ptrdiff_t>((beads_ - counted) / 2);
    const Chain middle(begin, begin + static_cast<std::ptrdiff_t>(counted));
    DirectionClasses classes(middle);
    double work = 0;
    for (const int row : farthest_point_order().first(sampled_directions)) {
        classes.find(row);
        work += of(classes.shortest()) / sampled_directions;
    }
    return work * of_subchains_one_by_one(beads_) / of_subchains_one_by_one(counted);
}

/// Of every subchain of so many beads in a row.
double ExpectedWork::of_subchains_one_by_one(std::size_t beads) const {
    double work = 1;
    for (std::size_t size = fewest_knotted; size <= beads; ++size)
        work += static_cast<double>(beads - size + 1) * of(size);
    return work;
}

Budget::Budget(const SamplingPolicy& policy, const Chain& chain, FingerprintWatcher& watcher)
    : policy_(policy), beads_(chain.size()), expected_(chain, watcher),
      left_(policy.step == 0 ? work_by_length(chain.size()) : policy.border_work) {}

std::size_t Budget::grid_step(const FingerprintMatrix& matrix) const {
    if (policy_.step > 0) return std::min(policy_.step, beads_);
    if (expected_.of_every_subchain() <= work_by_length(beads_)) return 1;
    std::size_t step = std::max(smallest_step, default_step(beads_));
    const std::size_t longest = beads_ - 1;
    const double most = grid_part * work_by_length(beads_);
    while (step < longest && expected_.of(SubchainGrid(beads_, step).corners_to_test(matrix)) > most)
        step = std::min(longest, step + std::max<std::size_t>(1, step / 4));
    return step;
}

void Budget::spend_on_grid(double work) {
    if (policy_.step == 0) left_ -= work;
}

std::vector<std::size_t> Budget::affordable(const std::vector<Block>& blocks, const std::vector<std::size_t>& mixed,
                                            const std::function<bool(const Block&)>& is_decisive) const {
    if (!is_limited()) return mixed;
    std::vector<std::size_t> wanted;
    std::copy_if(mixed.begin(), mixed.end(), std::back_inserter(wanted),
                 [&](std::size_t i) { return is_decisive(blocks[i]); });
    const bool by_span = wanted.empty();
    if (by_span) wanted = mixed;
    std::stable_sort(wanted.begin(), wanted.end(), [&](std::size_t i, std::size_t j) {
        const Block &a = blocks[i], &b = blocks[j];
        if (by_span && a.span() != b.span()) return a.span() > b.span();
        return a.longest().size() < b.longest().size();
    });
    double left = left_;
    const auto too_much = std::find_if(wanted.begin(), wanted.end(), [&](std::size_t i) {
        left -= new_corners * expected_.of(blocks[i].longest());
        return left < 0;
    });
    wanted.erase(too_much, wanted.end());
    std::sort(wanted.begin(), wanted.end());
    return wanted;
}

double Budget::border_work(const std::vector<Block>& blocks, const std::vector<std::size_t>& mixed) const {
    double work = 0;
    for (const std::size_t i : mixed)
        work += subchains_per_border_bead * static_cast<double>(blocks[i].span()) * expected_.of(blocks[i].longest());
    return std::min(work, left_);
}

} // namespace loopwise::fingerprint
