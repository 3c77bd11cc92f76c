#include "survey/noise.hpp"

#include "survey/closure_rng.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace loopwise::survey {
namespace {

class Repeat final : public Watcher {
  public:
    explicit Repeat(Watcher& watcher) : watcher_(watcher) {}
    void closure_at(std::size_t, double) override { watcher_.path_begins(); }

  private:
    Watcher& watcher_;
};

} // namespace

void shake(polymer::NamedChain& chain, double size, std::uint64_t seed, std::size_t repeat) {
    ClosureRng rng(seed, repeat);
    constexpr double draws = 0x1p31;
    const auto error = [&] {
        const double radius = std::sqrt(-2 * std::log((rng() + 1.0) / draws));
        return size * radius * std::cos(2 * std::numbers::pi * rng() / draws);
    };
    const bool ring = polymer::is_ring(chain);
    for (ChainAtom& bead : chain.beads) {
        bead.x += error();
        bead.y += error();
        bead.z += error();
    }
    if (!ring) return;
    const std::int32_t id = chain.beads.back().id;
    chain.beads.back() = chain.beads.front();
    chain.beads.back().id = id;
}

Noise noise_of(const polymer::NamedChain& chain, const Result& result, const NoisePlan& plan, Watcher& watcher) {
    Noise noise;
    noise.plan = plan;
    noise.knot = result.components.front().knots.front().knot;
    noise.least = 1;
    Plan repeated = result.plan;
    repeated.judge_gaps = false;
    Repeat inner(watcher);
    for (std::size_t i = 0; i < plan.repeats; ++i) {
        polymer::NamedChain moved = chain;
        shake(moved, plan.size, plan.seed, i);
        const std::vector<KnotCount> knots = survey({"", {moved}}, repeated, inner).components.front().knots;
        const std::size_t closures = all_closures(knots);
        const double share =
            closures == 0 ? 0.0 : static_cast<double>(closures_of(knots, noise.knot)) / static_cast<double>(closures);
        noise.least = std::min(noise.least, share);
        noise.greatest = std::max(noise.greatest, share);
        noise.mean += share / static_cast<double>(plan.repeats);
        if (knots.empty()) continue;
        count(noise.knots, knots.front().knot);
        if (knots.front().knot == noise.knot) ++noise.kept;
    }
    sort(noise.knots);
    return noise;
}

} // namespace loopwise::survey
