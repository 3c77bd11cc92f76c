#include "survey/gap_verdict.hpp"

#include "knots/knot.hpp"
#include "src/closure/closures.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/farthest_point_order.hpp"
#include "survey/gap_paths.hpp"
#include "survey/parallel.hpp"
#include "survey/reduce_before_closing.hpp"

#include <algorithm>
#include <numeric>
#include <span>

namespace loopwise::survey {
namespace {

/// Odd, so that most of them always are one thing or the other.
constexpr std::size_t rows_of_path = 3;
/// Rows of all paths. A path may pass through the closing lines of a row, so paths take different ones.
constexpr std::size_t most_rows = 5 * rows_of_path;
constexpr std::size_t rows_of_fragment = 100;
constexpr std::size_t rows_tried_at_once = 25;
/// When gaps are varied one by one, the paths of all together, and the fewest of one gap: of more gaps than these
/// allow, the longest are varied.
constexpr std::size_t most_paths_alone = 200, fewest_paths_alone = 20;
constexpr std::size_t fewest_knotted = 4; // beads

/// Closes chains in directions, or not at all if they are rings, and names the loops.
class Closer {
  public:
    explicit Closer(bool is_ring) : is_ring_(is_ring) {}

    /// A knot for each row. The chain is used up.
    std::vector<knots::KnotType> knots_of(Chain& chain, std::span<const int> rows) {
        if (is_ring_) return {named(chain)};
        const double diameter = DiameterOfChain(chain);
        reduce_before_closing(chain, rows, diameter);
        std::vector<knots::KnotType> knots;
        for (const int row : rows) {
            loop_ = chain;
            if (closure::close_in_direction(loop_, row, diameter) == closure::Closing::closed)
                knots.push_back(named(loop_));
        }
        return knots;
    }

  private:
    const knots::KnotType& named(Chain& loop) {
        reduce::reduce(loop, true);
        return namer_.name(loop).type;
    }

    bool is_ring_;
    Chain loop_;
    knots::KnotNamer namer_;
};

class Judge {
  public:
    Judge(const polymer::NamedChain& chain, const polymer::Bonds& bonds, const knots::KnotType& knot,
          const JudgeSettings& settings, const std::function<void()>& path_begins)
        : chain_(chain.beads), bonds_(bonds), settings_(settings), path_begins_(path_begins),
          closers_(std::max(settings.threads, 1U), Closer(settings.is_ring)) {
        result_.knot = knot;
        for (const polymer::OddBond& gap : bonds.gaps) result_.beads.push_back(path_beads(gap, bonds.usual));
    }

    GapVerdict judge() {
        close_fragments();
        if (result_.knot.has_name()) find_rows();
        if (rows_.empty()) return std::move(result_);
        const std::size_t gaps = bonds_.gaps.size();
        result_.all = count_paths(
            gap_paths, [](std::size_t) { return true; }, &result_.knots);
        sort(result_.knots);
        if (result_.all.stands())
            result_.verdict = Verdict::stands;
        else if (gaps == 1)
            result_.alone = {result_.all};
        else
            vary_one_by_one();
        for (std::size_t gap = 0; gap < result_.alone.size(); ++gap)
            if (!result_.alone[gap].stands()) result_.hangs_on.push_back(gap);
        if (!result_.hangs_on.empty()) result_.verdict = Verdict::hangs;
        return std::move(result_);
    }

  private:
    void close_fragments() {
        std::size_t first = 0;
        for (std::size_t gap = 0; gap <= bonds_.gaps.size(); ++gap) {
            const std::size_t last = gap < bonds_.gaps.size() ? bonds_.gaps[gap].bead : chain_.size() - 1;
            result_.fragments.push_back({first, last});
            first = last + 1;
        }
        const std::span<const int> rows = farthest_point_order().first(rows_of_fragment);
        in_parallel(result_.fragments.size(), settings_.threads, [&](std::size_t i, std::size_t) {
            path_begins_();
            Fragment& fragment = result_.fragments[i];
            Chain beads(chain_.begin() + static_cast<std::ptrdiff_t>(fragment.first),
                        chain_.begin() + static_cast<std::ptrdiff_t>(fragment.last + 1));
            if (beads.size() < fewest_knotted) // of a ring, too, a fragment is open
                fragment.knots = {{knots::KnotType::unknot(), rows.size()}};
            else
                for (const knots::KnotType& knot : Closer(false).knots_of(beads, rows)) count(fragment.knots, knot);
            sort(fragment.knots);
        });
    }

    /// The first directions of the farthest-point order that give the chain's knot while the gaps are straight.
    void find_rows() {
        const std::span<const int> order = farthest_point_order();
        for (std::size_t i = 0; i < order.size() && rows_.size() < most_rows; i += rows_tried_at_once) {
            const std::span<const int> rows = settings_.is_ring ? order.first(1) : order.subspan(i, rows_tried_at_once);
            path_begins_();
            Chain straight = chain_;
            const std::vector<knots::KnotType> knots = closers_.front().knots_of(straight, rows);
            for (std::size_t row = 0; row < knots.size() && rows_.size() < most_rows; ++row)
                if (knots[row] == result_.knot) rows_.push_back(rows[row]);
            if (settings_.is_ring) break;
        }
        if (rows_.size() > 1 && rows_.size() < rows_of_path) rows_.resize(1);
    }

    /// The chain with paths across the gaps that `is_varied` says, and straight lines across the others.
    Chain with_paths(std::size_t path, const auto& is_varied) const {
        Chain chain;
        std::size_t first = 0;
        for (std::size_t gap = 0; gap < bonds_.gaps.size(); ++gap) {
            if (!is_varied(gap)) continue;
            const std::size_t last = bonds_.gaps[gap].bead;
            chain.insert(chain.end(), chain_.begin() + static_cast<std::ptrdiff_t>(first),
                         chain_.begin() + static_cast<std::ptrdiff_t>(last + 1));
            const ChainAtom &from = chain_[last], &to = chain_[last + 1];
            append_path(chain, {from.x, from.y, from.z}, {to.x, to.y, to.z}, result_.beads[gap], bonds_.usual,
                        ClosureRng(gap, path));
            first = last + 1;
        }
        chain.insert(chain.end(), chain_.begin() + static_cast<std::ptrdiff_t>(first), chain_.end());
        polymer::number_by_position(chain);
        return chain;
    }

    std::span<const int> rows_of(std::size_t path) const {
        if (rows_.size() < rows_of_path) return rows_;
        const std::size_t groups = rows_.size() / rows_of_path;
        return std::span(rows_).subspan(path % groups * rows_of_path, rows_of_path);
    }

    PathCount count_paths(std::size_t paths, const auto& is_varied, std::vector<KnotCount>* all_knots = nullptr) {
        std::vector<std::vector<knots::KnotType>> knots(paths);
        in_parallel(paths, settings_.threads, [&](std::size_t path, std::size_t worker) {
            path_begins_();
            Chain chain = with_paths(path, is_varied);
            knots[path] = closers_[worker].knots_of(chain, rows_of(path));
        });
        PathCount counted{paths, 0};
        for (const std::vector<knots::KnotType>& of_path : knots) {
            const auto same = std::count(of_path.begin(), of_path.end(), result_.knot);
            if (2 * static_cast<std::size_t>(same) > of_path.size()) ++counted.agreeing;
            if (all_knots != nullptr)
                for (const knots::KnotType& knot : of_path) count(*all_knots, knot);
        }
        return counted;
    }

    void vary_one_by_one() {
        std::vector<std::size_t> longest(bonds_.gaps.size());
        std::iota(longest.begin(), longest.end(), std::size_t{0});
        std::stable_sort(longest.begin(), longest.end(),
                         [&](std::size_t a, std::size_t b) { return bonds_.gaps[a].length > bonds_.gaps[b].length; });
        result_.alone.resize(longest.size());
        longest.resize(std::min(longest.size(), most_paths_alone / fewest_paths_alone));
        const std::size_t paths = std::min(most_paths_alone / longest.size(), gap_paths);
        for (const std::size_t varied : longest)
            result_.alone[varied] = count_paths(paths, [varied](std::size_t gap) { return gap == varied; });
    }

    const Chain& chain_;
    const polymer::Bonds& bonds_;
    const JudgeSettings settings_;
    const std::function<void()>& path_begins_;
    std::vector<Closer> closers_; ///< by worker
    std::vector<int> rows_;       ///< in which paths are closed, see rows_of()
    GapVerdict result_;
};

} // namespace

double GapVerdict::share() const {
    const std::size_t closures = all_closures(knots);
    return closures == 0 ? 0.0 : static_cast<double>(closures_of(knots, knot)) / static_cast<double>(closures);
}

GapVerdict judge_gaps(const polymer::NamedChain& chain, const polymer::Bonds& bonds, const knots::KnotType& knot,
                      const JudgeSettings& settings, const std::function<void()>& path_begins) {
    return Judge(chain, bonds, knot, settings, path_begins).judge();
}

std::string text(const GapVerdict& verdict, const polymer::Bonds& bonds,
                 const std::vector<polymer::ResidueId>& residues) {
    if (verdict.verdict == Verdict::stands) return "stands";
    if (verdict.verdict == Verdict::undecided) return "undecided";
    std::string text = verdict.hangs_on.size() == 1 ? "hangs on the gap at " : "hangs on the gaps at ";
    for (const std::size_t& gap : verdict.hangs_on) {
        const std::size_t bead = bonds.gaps[gap].bead;
        if (&gap != &verdict.hangs_on.front()) text += &gap == &verdict.hangs_on.back() ? " and " : ", ";
        text += residues[bead].text() + '-' + residues[bead + 1].text();
    }
    return text;
}

} // namespace loopwise::survey
