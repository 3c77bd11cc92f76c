#include "fingerprint/fingerprint.hpp"

#include "fingerprint/grid.hpp"
#include "knots/knot.hpp"
#include "src/closure/closures.hpp"
#include "src/closure/point_tables.hpp"
#include "src/model/points.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/parallel.hpp"
#include "survey/reduce_before_closing.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <mutex>
#include <new>
#include <numeric>
#include <stdexcept>
#include <tuple>
#include <unordered_map>

namespace loopwise::fingerprint {
namespace {

using Cell = FingerprintMatrix::Cell;

constexpr std::size_t grid_lines = 40, fewest_grid_lines = 8;

/// For grid and borders together: some 7 seconds on one processor at 1,500 beads with 100 closures, of which proteins
/// take less than two. Longer stretches are worth more, but less than in proportion to the beads.
constexpr double most_work = 2e6, usual_beads = 1500;
/// The part of it that the grid may take.
constexpr double grid_part = 2.0 / 3.0;

double affordable_work(std::size_t beads) {
    return most_work * std::sqrt(std::max(1.0, static_cast<double>(beads) / usual_beads));
}
/// A quartered block has so many new corners, at most.
constexpr double new_corners = 5;
/// About so many stretches are closed for each bead along which a border goes.
constexpr double subchains_per_border_bead = 3;

std::array<int, closure::uniform_rows> make_farthest_point_order() {
    std::array<int, closure::uniform_rows> rows{};
    std::array<double, closure::uniform_rows> nearest; // the largest cosine to a row taken
    nearest.fill(-2.0);
    std::size_t next = 0;
    for (int& row : rows) {
        row = static_cast<int>(next);
        const PointR3 taken = closure::uniform_directions[next];
        nearest[next] = 3.0; // never again
        for (std::size_t i = 0; i < closure::uniform_directions.size(); ++i) {
            const PointR3& p = closure::uniform_directions[i];
            const double cosine =
                (p.x * taken.x + p.y * taken.y + p.z * taken.z) / (model::length(p) * model::length(taken));
            nearest[i] = std::max(nearest[i], cosine);
        }
        next = static_cast<std::size_t>(std::min_element(nearest.begin(), nearest.end()) - nearest.begin());
    }
    return rows;
}

/// Numbers for knots, in the order in which threads come upon them.
class Numbers {
  public:
    std::uint16_t number_of(const knots::KnotType& knot) {
        const std::scoped_lock lock(mutex_);
        const auto [entry, is_new] = numbers_.try_emplace(knot, static_cast<std::uint16_t>(numbers_.size()));
        if (is_new && numbers_.size() > std::numeric_limits<std::uint16_t>::max())
            throw std::length_error("more different knots than can be numbered");
        return entry->second;
    }
    /// All knots, the unknot first, the others in order; and the place there of each number.
    std::pair<std::vector<knots::KnotType>, std::vector<std::uint16_t>> sorted() const {
        std::vector<knots::KnotType> knots;
        for (const auto& [knot, number] : numbers_) knots.push_back(knot);
        std::sort(knots.begin(), knots.end(), [](const auto& a, const auto& b) {
            return a.is_unknot() || b.is_unknot() ? a.is_unknot() && !b.is_unknot() : a < b;
        });
        std::vector<std::uint16_t> place(knots.size());
        for (std::size_t i = 0; i < knots.size(); ++i)
            place[numbers_.at(knots[i])] = static_cast<std::uint16_t>(i);
        return {knots, place};
    }

  private:
    std::mutex mutex_;
    std::unordered_map<knots::KnotType, std::uint16_t> numbers_{{knots::KnotType::unknot(), 0}};
};

using Counts = std::vector<survey::KnotCount>;

/// Of equals a knot before the unknot before what has no name; then the first in order.
const survey::KnotCount& most_frequent(const Counts& counts) {
    const auto rank = [](const survey::KnotCount& count) {
        return std::tuple{count.closures, count.knot.has_name(), !count.knot.is_unknot()};
    };
    return *std::max_element(counts.begin(), counts.end(),
                             [&](const survey::KnotCount& a, const survey::KnotCount& b) {
                                 return rank(a) != rank(b) ? rank(a) < rank(b) : b.knot < a.knot;
                             });
}

/// Loops without a name are counted together.
const knots::KnotType& counted_as(const knots::KnotType& knot) {
    static const knots::KnotType unnamed;
    return knot.has_name() ? knot : unnamed;
}

/// Whether a stretch of the block could be a core instead of the last of these: it is no longer and meets none
/// before it.
bool may_replace_last(const Block& b, std::span<const Subchain> cores) {
    // What all stretches of the block have in common is one of them, or nothing.
    const bool common = b.first_high <= b.last_low;
    const Subchain shortest{b.first_high, std::max(b.first_high, b.last_low)};
    const auto met = [&](const Subchain& core) { return common && core.meets(shortest); };
    return std::none_of(cores.begin(), cores.end() - 1, met) &&
           (!common || shortest.size() <= cores.back().size());
}

/// How far the ends of the stretches of a block can be from those of a stretch.
std::size_t farthest_off(const Block& b, const Subchain& s) {
    const auto apart = [](std::size_t x, std::size_t y) { return x > y ? x - y : y - x; };
    return std::max({apart(b.first_low, s.first), apart(b.first_high, s.first), apart(b.last_low, s.last),
                     apart(b.last_high, s.last)});
}

/// How many beads come off one end until a tested stretch is another knot than the chain.
std::size_t beads_to_another_knot(const FingerprintMatrix& matrix, bool front) {
    const std::size_t beads = matrix.beads();
    const std::uint16_t knot = matrix.at({0, beads - 1}).knot;
    for (std::size_t off = 1; off < beads; ++off) {
        const Subchain s = front ? Subchain{off, beads - 1} : Subchain{0, beads - 1 - off};
        if (matrix.is_tested(s) && matrix.at(s).knot != knot) return off;
    }
    return beads;
}

/// Whether the depth, which is known to be less than `end`, could end in the block.
bool may_end_depth(const Block& b, std::size_t beads, bool front, std::size_t end) {
    return front ? b.last_high == beads - 1 && b.first_low < end
                 : b.first_low == 0 && beads - 1 - b.last_high < end;
}

/// Of a closure whose loop comes down to so many beads, and of its part in preparing the stretch: seconds_per_work.
double loop_work(std::size_t beads) {
    constexpr double for_each_bead = 25;
    return static_cast<double>(beads) * (static_cast<double>(beads) + for_each_bead);
}
double subchain_work(std::size_t beads) {
    constexpr double for_each_bead = 0.7, for_each_pair = 0.0005;
    return static_cast<double>(beads) * (for_each_bead + for_each_pair * static_cast<double>(beads));
}

/// What closing a stretch takes, told from a few of different lengths.
class ExpectedWork {
  public:
    ExpectedWork(const Chain& chain, FingerprintWatcher& watcher) : beads_(chain.size()) {
        for (std::size_t i = 1; i <= samples; ++i) {
            const std::size_t size = std::max<std::size_t>(1, i * beads_ / samples),
                              first = (beads_ - size) / 2;
            watcher.closure_begins();
            work_[i] = sampled(Chain(chain.begin() + static_cast<std::ptrdiff_t>(first),
                                     chain.begin() + static_cast<std::ptrdiff_t>(first + size)));
        }
    }
    double of(std::size_t size) const {
        const double at = static_cast<double>(samples * size) / static_cast<double>(beads_);
        const std::size_t below = std::min(static_cast<std::size_t>(at), samples - 1);
        return work_[below] + (at - static_cast<double>(below)) * (work_[below + 1] - work_[below]);
    }
    double of(const Subchain& s) const { return of(s.size()); }
    double of(const std::vector<Subchain>& all) const {
        return std::accumulate(all.begin(), all.end(), 0.0,
                               [this](double sum, const Subchain& s) { return sum + of(s); });
    }

  private:
    static double sampled(Chain subchain) {
        constexpr std::size_t closures = 5;
        const std::span<const int> rows = farthest_point_order().first(closures);
        const double diameter = DiameterOfChain(subchain);
        double work = subchain_work(subchain.size());
        survey::reduce_before_closing(subchain, rows, diameter);
        for (const int row : rows) {
            Chain loop = subchain;
            closure::close_in_direction(loop, row, diameter);
            reduce::reduce(loop, true);
            work += loop_work(loop.size()) / closures;
        }
        return work;
    }

    static constexpr std::size_t samples = 8;
    std::size_t beads_;
    std::array<double, samples + 1> work_{}; ///< of that many parts of the chain
};

/// What one thread works with.
struct Workspace {
    Chain subchain, loop;
    knots::KnotNamer namer;
};

class SubchainSampler {
  public:
    SubchainSampler(const polymer::NamedChain& chain, const FingerprintPlan& plan,
                    FingerprintWatcher& watcher)
        : chain_(chain.beads), plan_(plan), watcher_(watcher), workspaces_(std::max(plan.threads, 1U)),
          matrix_(chain_.size(), plan.most_memory), expected_(chain_, watcher) {
        if (chain_.size() < fewest_knotted) whole_ = {{knots::KnotType::unknot(), plan_.closures}};
        // Too short for a knot.
        for (std::size_t first = 0; first < chain_.size(); ++first)
            for (std::size_t last = first; last < std::min(first + fewest_knotted - 1, chain_.size()); ++last)
                matrix_.test({first, last}, {0, static_cast<std::uint16_t>(plan.closures)});
    }

    void every_subchain() {
        std::vector<Subchain> all;
        const std::size_t beads = chain_.size();
        planned_ =
            beads < fewest_knotted ? 0 : (beads - fewest_knotted + 1) * (beads - fewest_knotted + 2) / 2;
        planned_work_ = 0;
        for (std::size_t size = fewest_knotted; size <= beads; ++size)
            planned_work_ += static_cast<double>(beads - size + 1) * expected_.of(size);
        watcher_.all_begin(planned_work_);
        // A row at a time: the list of all would be larger than the matrix. Rows are taken from both ends in
        // turn, so that the time which is left can be told from the time which is gone.
        for (std::size_t row = 0; row < beads; ++row) {
            const std::size_t first = row % 2 == 0 ? row / 2 : beads - 1 - row / 2;
            all.clear();
            for (std::size_t last = first + fewest_knotted - 1; last < beads; ++last)
                all.push_back({first, last});
            test(all);
        }
    }

    /// A step no shorter than this with which a grid can be afforded, or of the fewest lines.
    std::size_t affordable_step(std::size_t step) {
        const std::size_t longest = std::max(step, chain_.size() / fewest_grid_lines);
        const double most = grid_part * affordable_work(chain_.size());
        while (step < longest &&
               expected_.of(SubchainGrid(chain_.size(), step).corners_to_test(matrix_)) > most)
            step = std::min(longest, step + std::max<std::size_t>(1, step / 4));
        return step;
    }

    void by_grid(std::size_t step) {
        SubchainGrid grid(chain_.size(), step);
        double left = !plan_.bounded          ? std::numeric_limits<double>::infinity()
                      : plan_.border_work > 0 ? plan_.border_work
                                              : affordable_work(chain_.size());
        std::vector<Subchain> corners = grid.corners_to_test(matrix_);
        planned_work_ = 2 * expected_.of(corners); // borders may take as much again
        for (bool is_grid = true;; is_grid = false) {
            planned_ += corners.size();
            const double taken = test(corners);
            if (!is_grid || plan_.border_work == 0) left -= taken;
            const std::vector<std::size_t> mixed = grid.mixed(matrix_, [this](const Cell& x, const Cell& y) {
                return x.knot == y.knot && is_half(x) == is_half(y);
            });
            const std::vector<std::size_t> chosen = plan_.bounded ? affordable(grid, mixed, left) : mixed;
            if (chosen.empty()) {
                for (const std::size_t i : mixed) open_.push_back(grid.blocks()[i]);
                break;
            }
            double expected = 0;
            for (const std::size_t i : mixed) expected += border_work_in(grid.blocks()[i]);
            planned_work_ = done_work_ + std::min(expected, left);
            grid.refine(chosen);
            corners = grid.corners_to_test(matrix_);
        }
        for (const Block& block : grid.blocks()) fill(block);
        for (const Block& block : open_) fill_from_corners(block);
    }

    /// Of the whole chain.
    const Counts& whole() const { return whole_; }
    /// Where borders were not followed.
    const std::vector<Block>& open() const { return open_; }

    std::vector<knots::KnotType> take_knots() {
        auto [knots, place] = numbers_.sorted();
        matrix_.renumber(place);
        return knots;
    }
    FingerprintMatrix& matrix() { return matrix_; }
    std::size_t done() const { return done_; }

  private:
    bool is_half(const Cell& cell) const { return 2 * std::size_t{cell.closures} >= plan_.closures; }

    double border_work_in(const Block& b) const {
        return subchains_per_border_bead * static_cast<double>(b.span()) * expected_.of(b.longest());
    }

    /// Those of the mixed blocks that may change a core or a depth, the cheapest first; once there are none, of all
    /// the largest first. As many as the work that is left allows.
    std::vector<std::size_t> affordable(const SubchainGrid& grid, const std::vector<std::size_t>& mixed,
                                        double left) const {
        const Cores cores = cores_so_far();
        const bool is_knot = halves_.contains(matrix_.at({0, chain_.size() - 1}).knot);
        const std::array ends{beads_to_another_knot(matrix_, true), beads_to_another_knot(matrix_, false)};
        std::vector<std::size_t> wanted;
        for (const std::size_t i : mixed) {
            const Block& b = grid.blocks()[i];
            if (may_change(b, cores) || (is_knot && (may_end_depth(b, chain_.size(), true, ends[0]) ||
                                                     may_end_depth(b, chain_.size(), false, ends[1]))))
                wanted.push_back(i);
        }
        const bool by_span = wanted.empty();
        if (by_span) wanted = mixed;
        std::stable_sort(wanted.begin(), wanted.end(), [&](std::size_t i, std::size_t j) {
            const Block &a = grid.blocks()[i], &b = grid.blocks()[j];
            if (by_span && a.span() != b.span()) return a.span() > b.span();
            return a.longest().size() < b.longest().size();
        });
        std::size_t count = 0;
        for (; count < wanted.size(); ++count) {
            left -= new_corners * expected_.of(grid.blocks()[wanted[count]].longest());
            if (left < 0) break;
        }
        wanted.resize(count);
        std::sort(wanted.begin(), wanted.end());
        return wanted;
    }

    using Cores = std::map<std::uint16_t, std::vector<Subchain>>;

    /// As Places finds them among what has been tested.
    Cores cores_so_far() const {
        Cores cores;
        for (const auto& [knot, halves] : halves_) {
            std::vector<std::pair<Subchain, std::uint16_t>> sorted = halves;
            std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
                const auto key = [](const auto& tested) {
                    return std::tuple{tested.first.size(), -int{tested.second}, tested.first.first};
                };
                return key(a) < key(b);
            });
            std::vector<Subchain>& found = cores[knot];
            for (const auto& [subchain, closures] : sorted)
                if (std::none_of(found.begin(), found.end(),
                                 [s = subchain](const Subchain& core) { return core.meets(s); }))
                    found.push_back(subchain);
        }
        return cores;
    }

    /// Whether a stretch of the block could be a core, or one more.
    bool may_change(const Block& b, const Cores& all) const {
        return any_on_rim(b, [&](Subchain s) {
            if (!matrix_.is_tested(s) || !is_half(matrix_.at(s))) return false;
            const auto entry = all.find(matrix_.at(s).knot);
            if (entry == all.end()) return false;
            const std::span<const Subchain> cores = entry->second;
            for (std::size_t count = 1; count <= cores.size(); ++count)
                if (may_replace_last(b, cores.first(count))) return true;
            const Subchain shortest{b.first_high, std::max(b.first_high, b.last_low)};
            return std::none_of(cores.begin(), cores.end(),
                                [&](const Subchain& core) { return core.meets(shortest); });
        });
    }

    /// Returns the work that it took.
    double test(const std::vector<Subchain>& subchains) {
        std::vector<double> works(subchains.size());
        std::vector<Cell> cells(subchains.size());
        std::vector<char> is_knot(subchains.size());
        survey::in_parallel(subchains.size(), plan_.threads, [&](std::size_t i, std::size_t worker) {
            auto [counts, work] = close(subchains[i], workspaces_[worker]);
            const survey::KnotCount& most = most_frequent(counts);
            cells[i] = {numbers_.number_of(most.knot), static_cast<std::uint16_t>(most.closures)};
            is_knot[i] = most.knot.is_knot();
            if (subchains[i].size() == chain_.size()) whole_ = std::move(counts);
            works[i] = work;
            watcher_.subchain_done(++done_, planned_);
            watcher_.part_done((done_work_ += work) / planned_work_);
        });
        for (std::size_t i = 0; i < subchains.size(); ++i) {
            matrix_.test(subchains[i], cells[i]);
            if (plan_.bounded && is_knot[i] && is_half(cells[i]))
                halves_[cells[i].knot].emplace_back(subchains[i], cells[i].closures);
        }
        return std::accumulate(works.begin(), works.end(), 0.0);
    }

    /// And the work that it took.
    std::pair<Counts, double> close(const Subchain& s, Workspace& workspace) const {
        const auto begin = chain_.begin() + static_cast<std::ptrdiff_t>(s.first);
        workspace.subchain.assign(begin, begin + static_cast<std::ptrdiff_t>(s.size()));
        const double diameter = DiameterOfChain(workspace.subchain);
        const std::span<const int> rows = farthest_point_order().first(plan_.closures);
        watcher_.closure_begins();
        survey::reduce_before_closing(workspace.subchain, rows, diameter);
        Counts counts;
        double work = 0;
        for (const int row : rows) {
            watcher_.closure_begins();
            workspace.loop = workspace.subchain;
            closure::close_in_direction(workspace.loop, row, diameter);
            reduce::reduce(workspace.loop, true);
            work += loop_work(workspace.loop.size());
            count(counts, counted_as(workspace.namer.name(workspace.loop).type));
        }
        return {std::move(counts), subchain_work(s.size()) + work / static_cast<double>(rows.size())};
    }

    /// What was not tested in a block is as its corners, which agree; the share is between theirs.
    void fill(const Block& b) {
        const Subchain longest{b.first_low, b.last_high};
        for (std::size_t first = b.first_low; first <= b.first_high; ++first)
            for (std::size_t last = std::max(first, b.last_low); last <= b.last_high; ++last)
                if (!matrix_.is_tested({first, last})) matrix_.infer({first, last}, matrix_.at(longest));
    }

    /// What was not tested in a block with a border is as the nearest corner.
    void fill_from_corners(const Block& b) {
        const auto apart = [](std::size_t x, std::size_t y) { return x > y ? x - y : y - x; };
        for (std::size_t first = b.first_low; first <= b.first_high; ++first)
            for (std::size_t last = std::max(first, b.last_low); last <= b.last_high; ++last) {
                if (matrix_.is_tested({first, last})) continue;
                Subchain nearest = b.longest();
                const auto distance = [&](const Subchain& s) {
                    return apart(s.first, first) + apart(s.last, last);
                };
                for (const Subchain& corner : b.corners())
                    if (corner.first <= corner.last && distance(corner) < distance(nearest)) nearest = corner;
                matrix_.infer({first, last}, matrix_.at(nearest));
            }
    }

    const Chain& chain_;
    const FingerprintPlan& plan_;
    FingerprintWatcher& watcher_;
    std::vector<Workspace> workspaces_;
    FingerprintMatrix matrix_;
    ExpectedWork expected_;
    Numbers numbers_;
    std::atomic<std::size_t> done_ = 0;
    std::size_t planned_ = 0;
    std::atomic<double> done_work_ = 0;
    double planned_work_ = 1;
    Counts whole_;
    /// By knot, the stretches of at least one half; only kept for bounded work.
    std::map<std::uint16_t, std::vector<std::pair<Subchain, std::uint16_t>>> halves_;
    std::vector<Block> open_;
};

/// Finds the places of knots in a matrix.
class Places {
  public:
    Places(const ChainFingerprint& of, const Counts& whole, const std::vector<Block>& open)
        : of_(of), whole_(whole), open_(open) {
        of.matrix.for_each_tested([&](Subchain s, const Cell& cell) {
            if (of.is_knot(cell.knot)) cells_[cell.knot].emplace_back(s, cell.closures);
        });
    }

    std::vector<KnotPlace> all() {
        std::vector<KnotPlace> places;
        for (auto& [knot, cells] : cells_) {
            // By size, then by share, then from the front.
            std::stable_sort(cells.begin(), cells.end(), [](const Tested& a, const Tested& b) {
                return std::pair{a.first.size(), -int{a.second}} < std::pair{b.first.size(), -int{b.second}};
            });
            add_places(knot, cells, places);
        }
        const auto rank = [&](const KnotPlace& p) {
            return std::pair{p.knot != of_.knot, -p.greatest_share};
        };
        std::stable_sort(places.begin(), places.end(),
                         [&](const KnotPlace& a, const KnotPlace& b) { return rank(a) < rank(b); });
        return places;
    }

  private:
    using Tested = std::pair<Subchain, std::uint16_t>; ///< and its closures that gave the knot

    /// The shortest stretch of one half or more is a core, and so is the next that meets none before it.
    void add_places(std::uint16_t knot, const std::vector<Tested>& cells,
                    std::vector<KnotPlace>& places) const {
        const std::size_t before = places.size();
        std::vector<Subchain> cores;
        for (const auto& [subchain, closures] : cells) {
            if (2 * std::size_t{closures} < of_.closures) continue;
            const bool is_new =
                std::none_of(places.begin() + static_cast<std::ptrdiff_t>(before), places.end(),
                             [&, s = subchain](const KnotPlace& p) { return p.core->meets(s); });
            if (!is_new) continue;
            cores.push_back(subchain);
            places.push_back(place_of(knot, cells, subchain));
            places.back().core_within = core_within(knot, cores);
        }
        if (places.size() == before) places.push_back(place_of(knot, cells, std::nullopt));
    }

    /// Of the last of these cores of a knot.
    std::size_t core_within(std::uint16_t knot, std::span<const Subchain> cores) const {
        std::size_t within = 1;
        for (const Block& b : open_) {
            const std::size_t off = farthest_off(b, cores.back());
            if (off <= within || !may_replace_last(b, cores)) continue;
            if (any_on_rim(b, [&](Subchain s) {
                    const Cell& cell = of_.matrix.at(s);
                    return of_.matrix.is_tested(s) && cell.knot == knot &&
                           2 * std::size_t{cell.closures} >= of_.closures;
                }))
                within = off;
        }
        return within;
    }

    KnotPlace place_of(std::uint16_t knot, const std::vector<Tested>& cells,
                       std::optional<Subchain> core) const {
        KnotPlace place;
        place.knot = of_.knots[knot];
        for (const survey::KnotCount& on_whole : whole_)
            if (on_whole.knot == place.knot)
                place.share = of_.share_of({0, static_cast<std::uint16_t>(on_whole.closures)});
        place.core = core;
        std::size_t greatest = 0;
        for (const auto& [subchain, closures] : cells)
            if (closures > greatest && (!core || subchain.holds(*core))) {
                greatest = closures;
                place.greatest = subchain;
            }
        place.greatest_share = static_cast<double>(greatest) / static_cast<double>(of_.closures);
        const bool is_chains = place.knot == of_.knot;
        place.slipknot = core && ((!is_chains && of_.knot.has_name()) || is_undone(knot, cells, *core));
        return place;
    }

    bool is_clear(std::size_t closures) const {
        return static_cast<double>(closures) >= clear_share * static_cast<double>(of_.closures);
    }

    /// Whether a stretch that holds the core and clearly is the knot lies in one that clearly is not.
    bool is_undone(std::uint16_t knot, const std::vector<Tested>& cells, const Subchain& core) const {
        std::vector<Subchain> knotted;
        for (const auto& [subchain, closures] : cells)
            if (is_clear(closures) && subchain.holds(core)) knotted.push_back(subchain);
        std::sort(knotted.begin(), knotted.end(),
                  [](const Subchain& a, const Subchain& b) { return a.first < b.first; });
        // Other stretches come by their first bead: the farthest last bead so far is what counts.
        bool undone = false;
        auto inner = knotted.begin();
        std::optional<std::size_t> farthest;
        const auto judge_before = [&](std::size_t first) {
            for (; inner != knotted.end() && inner->first < first; ++inner)
                undone |= farthest && inner->last <= *farthest;
        };
        of_.matrix.for_each_tested([&](Subchain s, const Cell& cell) {
            judge_before(s.first);
            if (cell.knot != knot && is_clear(cell.closures))
                farthest = std::max(farthest.value_or(0), s.last);
        });
        judge_before(of_.matrix.beads());
        return undone;
    }

    const ChainFingerprint& of_;
    const Counts& whole_;
    const std::vector<Block>& open_;
    std::map<std::uint16_t, std::vector<Tested>> cells_;
};

/// Taken off the front where `front`, otherwise off the back.
std::size_t depth_of(const ChainFingerprint& of, bool front) {
    const std::size_t last = of.matrix.beads() - 1;
    const std::uint16_t knot = of.matrix.at({0, last}).knot;
    std::size_t depth = 0;
    while (depth < last) {
        const Subchain shorter = front ? Subchain{depth + 1, last} : Subchain{0, last - depth - 1};
        if (of.matrix.at(shorter).knot != knot) break;
        ++depth;
    }
    return depth;
}

} // namespace

std::span<const int> farthest_point_order() {
    static const std::array<int, closure::uniform_rows> rows = make_farthest_point_order();
    return rows;
}

std::size_t default_step(std::size_t beads) { return std::max<std::size_t>(1, beads / grid_lines); }

FingerprintMatrix::FingerprintMatrix(std::size_t beads, std::size_t most_memory) : beads_(beads) {
    constexpr double bytes_per_cell = sizeof(Cell) + 1.0 / 8.0, megabyte = 1e6;
    const double bytes = 0.5 * static_cast<double>(beads) * static_cast<double>(beads + 1) * bytes_per_cell;
    const auto refuse = [&] {
        throw std::length_error("the matrix of all stretches of " + std::to_string(beads) +
                                " residues takes " +
                                std::to_string(static_cast<std::size_t>(bytes / megabyte) + 1) +
                                " MB of memory, more than there is");
    };
    if (bytes > static_cast<double>(most_memory)) refuse();
    try {
        cells_.resize(beads * (beads + 1) / 2);
        tested_.resize(cells_.size());
    } catch (const std::bad_alloc&) {
        refuse();
    } catch (const std::length_error&) {
        refuse();
    }
}

void FingerprintMatrix::test(Subchain s, Cell cell) {
    cells_[index(s)] = cell;
    tested_[index(s)] = true;
}

void FingerprintMatrix::renumber(std::span<const std::uint16_t> number_of) {
    for (Cell& cell : cells_) cell.knot = number_of[cell.knot];
}

ChainFingerprint fingerprint_of(const std::string& file, const polymer::NamedChain& chain,
                                const FingerprintPlan& plan, FingerprintWatcher& watcher) {
    if (chain.beads.empty()) throw std::invalid_argument("the chain has no atom");
    if (plan.closures == 0 || plan.closures > farthest_point_order().size())
        throw std::invalid_argument("between 1 and 400 closures of a stretch can be made");
    const std::size_t beads = chain.beads.size();
    SubchainSampler sampler(chain, plan, watcher);
    const std::size_t step = plan.full       ? 1
                             : plan.step > 0 ? std::min(plan.step, beads)
                             : plan.bounded  ? sampler.affordable_step(default_step(beads))
                                             : default_step(beads);
    if (step == 1)
        sampler.every_subchain();
    else
        sampler.by_grid(step);

    std::vector<knots::KnotType> knots = sampler.take_knots();
    ChainFingerprint result{file,
                            chain.name,
                            chain.residues,
                            polymer::bonds_of(chain),
                            chain.notes,
                            plan.closures,
                            step,
                            sampler.done(),
                            std::move(knots),
                            std::move(sampler.matrix()),
                            {},
                            0,
                            {},
                            {}};
    const Cell& cell = result.matrix.at({0, beads - 1});
    result.knot = result.knots[cell.knot];
    result.share = result.share_of(cell);
    if (result.is_knot(cell.knot)) result.depth = {depth_of(result, true), depth_of(result, false)};
    const std::array ends{beads_to_another_knot(result.matrix, true),
                          beads_to_another_knot(result.matrix, false)};
    for (const Block& b : sampler.open()) {
        result.borders_within = std::max(result.borders_within, b.span());
        for (const bool front : {true, false}) {
            std::size_t& within = result.depth_within[front ? 0 : 1];
            if (may_end_depth(b, beads, front, ends[front ? 0 : 1])) within = std::max(within, b.span());
        }
    }
    result.places = Places(result, sampler.whole(), sampler.open()).all();
    return result;
}

std::string ChainFingerprint::way() const {
    if (step == 1) return "every stretch was closed";
    return "grid of " + std::to_string(step) +
           (borders_within > 1 ? ", borders to within " + std::to_string(borders_within) + " residues"
                               : ", refined at borders");
}

TypicalClosure typical_closure(const Chain& chain, Subchain subchain, const knots::KnotType& knot,
                               std::size_t closures) {
    const auto begin = chain.begin() + static_cast<std::ptrdiff_t>(subchain.first);
    const auto closed_in = [&](int row) {
        Chain loop(begin, begin + static_cast<std::ptrdiff_t>(subchain.size()));
        closure::close_in_direction(loop, row);
        polymer::number_by_position(loop);
        TypicalClosure closure{row, {}, {loop, subchain.size()}, {loop, 0}};
        Chain& reduced = closure.reduced.beads;
        reduce::reduce(reduced, true);
        closure.reduced.own =
            static_cast<std::size_t>(std::count_if(reduced.begin(), reduced.end(), [&](const ChainAtom& b) {
                return static_cast<std::size_t>(b.id) < subchain.size();
            }));
        closure.knot = counted_as(knots::knot_of(reduced).type);
        return closure;
    };
    for (const int row : farthest_point_order().first(closures))
        if (TypicalClosure closure = closed_in(row); closure.knot == knot) return closure;
    return closed_in(farthest_point_order().front());
}

} // namespace loopwise::fingerprint
