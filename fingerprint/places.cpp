#include "fingerprint/places.hpp"

#include "fingerprint/cores.hpp"

#include <algorithm>

namespace loopwise::fingerprint {
namespace {

class PlaceFinder {
  public:
    explicit PlaceFinder(const SampledSubchains& sampled)
        : of_(sampled), chain_knot_(sampled.matrix.at(sampled.matrix.whole_chain()).knot),
          farthest_(sampled.matrix.beads()) {
        of_.matrix.for_each_tested([&](Subchain s, const Cell& cell) {
            if (of_.is_knot(cell.knot)) tested_[cell.knot].push_back({s, cell.closures});
            if (is_clear(cell, of_.closures)) farthest_[s.first][cell.knot] = s.last;
        });
        for (auto& [knot, tested] : tested_) std::sort(tested.begin(), tested.end(), comes_before);
    }

    std::vector<KnotPlace> all() const {
        std::vector<KnotPlace> places;
        for (const auto& [knot, tested] : tested_) {
            const std::vector<Subchain> cores = cores_of(tested);
            if (cores.empty()) places.push_back(place_of(knot, tested, std::nullopt));
            for (std::size_t i = 0; i < cores.size(); ++i) {
                places.push_back(place_of(knot, tested, cores[i]));
                places.back().core_within =
                    core_within(of_.unseen, of_.matrix, of_.closures, std::span(cores).first(i + 1));
            }
        }
        const auto rank = [&](const KnotPlace& p) {
            return std::pair{p.knot != of_.knots[chain_knot_], -p.greatest_share};
        };
        std::stable_sort(places.begin(), places.end(),
                         [&](const KnotPlace& a, const KnotPlace& b) { return rank(a) < rank(b); });
        return places;
    }

  private:
    std::vector<Subchain> cores_of(const std::vector<TestedSubchain>& tested) const {
        std::vector<TestedSubchain> candidates;
        std::copy_if(tested.begin(), tested.end(), std::back_inserter(candidates), [&](const TestedSubchain& t) {
            return can_be_core({0, t.closures}, of_.core_closures);
        });
        return find_cores(std::move(candidates));
    }

    KnotPlace place_of(std::uint16_t knot, const std::vector<TestedSubchain>& tested,
                       std::optional<Subchain> core) const {
        KnotPlace place;
        place.knot = of_.knots[knot];
        for (const survey::KnotCount& count : of_.whole)
            if (count.knot == place.knot) place.share = of_.share_of(count.closures);
        place.core = core;
        std::size_t greatest = 0;
        for (const auto& [subchain, closures] : tested)
            if (closures > greatest && (!core || subchain.holds(*core))) {
                greatest = closures;
                place.greatest = subchain;
            }
        place.greatest_share = of_.share_of(greatest);
        place.kind = kind_of(knot, tested, core);
        return place;
    }

    PlaceKind kind_of(std::uint16_t knot, const std::vector<TestedSubchain>& tested,
                      const std::optional<Subchain>& core) const {
        const std::optional<bool> held = knots::holds_factor(of_.knots[chain_knot_], of_.knots[knot]);
        if (core && (held == false || is_undone(knot, tested, *core))) return PlaceKind::slipknot;
        if (knot == chain_knot_) return PlaceKind::knot;
        return held == true ? PlaceKind::factor : PlaceKind::subknot;
    }

    /// By number: whether a knot surely does not hold this one.
    std::vector<bool> lacking(std::uint16_t knot) const {
        std::vector<bool> lack;
        for (const knots::KnotType& other : of_.knots)
            lack.push_back(knots::holds_factor(other, of_.knots[knot]) == false);
        return lack;
    }

    /// Whether a subchain that holds the core and clearly is the knot lies in one that clearly lacks it.
    bool is_undone(std::uint16_t knot, const std::vector<TestedSubchain>& tested, const Subchain& core) const {
        std::vector<Subchain> knotted;
        for (const auto& [subchain, closures] : tested)
            if (is_clear({knot, closures}, of_.closures) && subchain.holds(core)) knotted.push_back(subchain);
        const std::vector<bool> lacks = lacking(knot);
        std::sort(knotted.begin(), knotted.end(),
                  [](const Subchain& a, const Subchain& b) { return a.first < b.first; });
        // Of the subchains that begin so far, the farthest last bead is what counts.
        bool undone = false;
        auto inner = knotted.begin();
        std::optional<std::size_t> farthest;
        for (std::size_t first = 0; first < farthest_.size() && !undone; ++first) {
            for (const auto& [other, last] : farthest_[first])
                if (lacks[other]) farthest = std::max(farthest.value_or(0), last);
            for (; inner != knotted.end() && inner->first == first; ++inner)
                undone |= farthest && inner->last <= *farthest;
        }
        return undone;
    }

    const SampledSubchains& of_;
    const std::uint16_t chain_knot_;
    /// By first bead and knot: the last bead of the longest tested subchain that clearly is the knot.
    std::vector<std::map<std::uint16_t, std::size_t>> farthest_;
    CandidatesByKnot tested_; ///< all tested subchains of each knot, see comes_before()
};

} // namespace

std::string text(PlaceKind kind) {
    static constexpr std::array words{"knot", "factor", "slipknot", "subknot"};
    return words[static_cast<std::size_t>(kind)];
}

std::vector<KnotPlace> find_places(const SampledSubchains& sampled) { return PlaceFinder(sampled).all(); }

} // namespace loopwise::fingerprint
