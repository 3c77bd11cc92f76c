#include "survey/fingerprint.hpp"

#include "closure/closures.hpp"
#include "closure/point_tables.hpp"
#include "knots/knot.hpp"
#include "model/points.hpp"
#include "reduce/reduction.hpp"
#include "survey/fingerprint_grid.hpp"
#include "survey/parallel.hpp"

#include <algorithm>
#include <limits>
#include <map>
#include <mutex>
#include <new>
#include <numeric>
#include <stdexcept>
#include <tuple>

namespace loopwise {
namespace {

using Cell = FingerprintMatrix::Cell;

constexpr std::size_t grid_lines = 40;

std::array<int, uniform_rows> make_spread_rows() {
    std::array<int, uniform_rows> rows{};
    std::array<double, uniform_rows> nearest; // the largest cosine to a row taken
    nearest.fill(-2.0);
    std::size_t next = 0;
    for (int& row : rows) {
        row = static_cast<int>(next);
        const PointR3 taken = uniform[next];
        nearest[next] = 3.0; // never again
        for (std::size_t i = 0; i < uniform.size(); ++i) {
            const PointR3& p = uniform[i];
            const double cosine =
                (p.x * taken.x + p.y * taken.y + p.z * taken.z) / (length(p) * length(taken));
            nearest[i] = std::max(nearest[i], cosine);
        }
        next = static_cast<std::size_t>(std::min_element(nearest.begin(), nearest.end()) - nearest.begin());
    }
    return rows;
}

/// Numbers for names, in the order in which threads come upon them.
class Names {
  public:
    std::uint16_t number_of(const std::string& name) {
        const std::scoped_lock lock(mutex_);
        const auto [entry, is_new] = numbers_.try_emplace(name, static_cast<std::uint16_t>(numbers_.size()));
        if (is_new && numbers_.size() > std::numeric_limits<std::uint16_t>::max())
            throw std::length_error("more different knots than can be numbered");
        return entry->second;
    }
    /// All names, the unknot first, the others sorted; and the place there of each number.
    std::pair<std::vector<std::string>, std::vector<std::uint16_t>> sorted() const {
        std::vector<std::string> names{unknot_name};
        std::vector<std::uint16_t> place(numbers_.size());
        for (const auto& [name, number] : numbers_) {
            if (name == unknot_name) continue;
            place[number] = static_cast<std::uint16_t>(names.size());
            names.push_back(name);
        }
        return {names, place};
    }

  private:
    std::mutex mutex_;
    std::map<std::string, std::uint16_t> numbers_{{unknot_name, 0}};
};

using Counts = std::map<std::string, std::size_t>;

/// Of equals a knot before the unknot before what has no name; then the first by name.
Counts::const_iterator most_frequent(const Counts& counts) {
    const auto rank = [](const auto& entry) {
        return std::tuple{entry.second, entry.first != unnamed, entry.first != unknot_name};
    };
    return std::max_element(counts.begin(), counts.end(),
                            [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
}

bool has_name(const KnotName& name) {
    return name.status != KnotStatus::bad_polygon && name.status != KnotStatus::too_complex;
}

/// What one thread works with.
struct Bench {
    Chain stretch, loop;
    KnotNamer namer;
};

class Testing {
  public:
    Testing(const NamedChain& chain, const FingerprintPlan& plan, FingerprintWatcher& watcher)
        : chain_(chain.beads), plan_(plan), watcher_(watcher), benches_(std::max(plan.threads, 1U)),
          matrix_(chain_.size(), plan.most_memory) {
        // Too short for a knot.
        for (std::size_t first = 0; first < chain_.size(); ++first)
            for (std::size_t last = first; last < std::min(first + fewest_knotted - 1, chain_.size()); ++last)
                matrix_.test({first, last}, {0, static_cast<std::uint16_t>(plan.closures)});
    }

    void every_stretch() {
        std::vector<Stretch> all;
        const std::size_t beads = chain_.size();
        planned_ =
            beads < fewest_knotted ? 0 : (beads - fewest_knotted + 1) * (beads - fewest_knotted + 2) / 2;
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

    void by_grid(std::size_t step) {
        StretchGrid grid(chain_.size(), step);
        const auto same_kind = [this](const Cell& a, const Cell& b) {
            return a.knot == b.knot && is_half(a) == is_half(b);
        };
        do {
            const std::vector<Stretch> corners = grid.corners_to_test(matrix_);
            planned_ += corners.size();
            test(corners);
        } while (grid.refine(matrix_, same_kind));
        for (const Block& block : grid.blocks()) fill(block);
    }

    /// Of the whole chain.
    Counts whole() {
        Counts counts;
        if (chain_.size() < fewest_knotted)
            counts[unknot_name] = plan_.closures;
        else
            counts = close({0, chain_.size() - 1}, benches_.front());
        return counts;
    }

    std::vector<std::string> take_names() {
        auto [names, place] = names_.sorted();
        matrix_.renumber(place);
        return names;
    }
    FingerprintMatrix& matrix() { return matrix_; }
    std::size_t done() const { return done_; }

  private:
    bool is_half(const Cell& cell) const { return 2 * std::size_t{cell.closures} >= plan_.closures; }

    void test(const std::vector<Stretch>& stretches) {
        std::vector<Cell> cells(stretches.size());
        in_parallel(stretches.size(), plan_.threads, [&](std::size_t i, std::size_t worker) {
            const Counts counts = close(stretches[i], benches_[worker]);
            const auto most = most_frequent(counts);
            cells[i] = {names_.number_of(most->first), static_cast<std::uint16_t>(most->second)};
            watcher_.stretch_done(++done_, planned_);
        });
        for (std::size_t i = 0; i < stretches.size(); ++i) matrix_.test(stretches[i], cells[i]);
    }

    Counts close(const Stretch& s, Bench& bench) const {
        const auto begin = chain_.begin() + static_cast<std::ptrdiff_t>(s.first);
        bench.stretch.assign(begin, begin + static_cast<std::ptrdiff_t>(s.size()));
        const double diameter = DiameterOfChain(bench.stretch);
        Counts counts;
        for (const int row : spread_rows().first(plan_.closures)) {
            bench.loop = bench.stretch;
            close_in_direction(bench.loop, row, diameter);
            reduce(bench.loop, true);
            const KnotName& name = bench.namer.name(bench.loop);
            ++counts[has_name(name) ? name.text() : unnamed];
        }
        return counts;
    }

    /// What was not tested in a block is as its corners, which agree; the share is between theirs.
    void fill(const Block& b) {
        const Stretch longest{b.first_low, b.last_high};
        for (std::size_t first = b.first_low; first <= b.first_high; ++first)
            for (std::size_t last = std::max(first, b.last_low); last <= b.last_high; ++last)
                if (!matrix_.is_tested({first, last})) matrix_.infer({first, last}, matrix_.at(longest));
    }

    const Chain& chain_;
    const FingerprintPlan& plan_;
    FingerprintWatcher& watcher_;
    std::vector<Bench> benches_;
    FingerprintMatrix matrix_;
    Names names_;
    std::atomic<std::size_t> done_ = 0;
    std::size_t planned_ = 0;
};

/// Finds the places of knots in a matrix.
class Places {
  public:
    Places(const ChainFingerprint& of, const Counts& whole) : of_(of), whole_(whole) {
        of.matrix.for_each_tested([&](Stretch s, const Cell& cell) {
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
    using Tested = std::pair<Stretch, std::uint16_t>; ///< and its closures that gave the knot

    /// The shortest stretch of one half or more is a core, and so is the next that meets none before it.
    void add_places(std::uint16_t knot, const std::vector<Tested>& cells,
                    std::vector<KnotPlace>& places) const {
        const std::size_t before = places.size();
        for (const auto& [stretch, closures] : cells) {
            if (2 * std::size_t{closures} < of_.closures) continue;
            const bool is_new =
                std::none_of(places.begin() + static_cast<std::ptrdiff_t>(before), places.end(),
                             [&, s = stretch](const KnotPlace& p) { return p.core->meets(s); });
            if (is_new) places.push_back(place_of(knot, cells, stretch));
        }
        if (places.size() == before) places.push_back(place_of(knot, cells, std::nullopt));
    }

    KnotPlace place_of(std::uint16_t knot, const std::vector<Tested>& cells,
                       std::optional<Stretch> core) const {
        KnotPlace place;
        place.knot = of_.names[knot];
        const auto on_whole = whole_.find(place.knot);
        if (on_whole != whole_.end())
            place.share = of_.share_of({0, static_cast<std::uint16_t>(on_whole->second)});
        place.core = core;
        std::size_t greatest = 0;
        for (const auto& [stretch, closures] : cells)
            if (closures > greatest && (!core || stretch.holds(*core))) {
                greatest = closures;
                place.greatest = stretch;
            }
        place.greatest_share = static_cast<double>(greatest) / static_cast<double>(of_.closures);
        const bool is_chains = place.knot == of_.knot;
        place.slipknot = core && ((!is_chains && of_.knot != unnamed) || is_undone(knot, cells, *core));
        return place;
    }

    bool is_clear(std::size_t closures) const {
        return static_cast<double>(closures) >= clear_share * static_cast<double>(of_.closures);
    }

    /// Whether a stretch that holds the core and clearly is the knot lies in one that clearly is not.
    bool is_undone(std::uint16_t knot, const std::vector<Tested>& cells, const Stretch& core) const {
        std::vector<Stretch> knotted;
        for (const auto& [stretch, closures] : cells)
            if (is_clear(closures) && stretch.holds(core)) knotted.push_back(stretch);
        std::sort(knotted.begin(), knotted.end(),
                  [](const Stretch& a, const Stretch& b) { return a.first < b.first; });
        // Other stretches come by their first bead: the farthest last bead so far is what counts.
        bool undone = false;
        auto inner = knotted.begin();
        std::optional<std::size_t> farthest;
        const auto judge_before = [&](std::size_t first) {
            for (; inner != knotted.end() && inner->first < first; ++inner)
                undone |= farthest && inner->last <= *farthest;
        };
        of_.matrix.for_each_tested([&](Stretch s, const Cell& cell) {
            judge_before(s.first);
            if (cell.knot != knot && is_clear(cell.closures))
                farthest = std::max(farthest.value_or(0), s.last);
        });
        judge_before(of_.matrix.beads());
        return undone;
    }

    const ChainFingerprint& of_;
    const Counts& whole_;
    std::map<std::uint16_t, std::vector<Tested>> cells_;
};

/// Taken off the front where `front`, otherwise off the back.
std::size_t depth_of(const ChainFingerprint& of, bool front) {
    const std::size_t last = of.matrix.beads() - 1;
    const std::uint16_t knot = of.matrix.at({0, last}).knot;
    std::size_t depth = 0;
    while (depth < last) {
        const Stretch shorter = front ? Stretch{depth + 1, last} : Stretch{0, last - depth - 1};
        if (of.matrix.at(shorter).knot != knot) break;
        ++depth;
    }
    return depth;
}

} // namespace

std::span<const int> spread_rows() {
    static const std::array<int, uniform_rows> rows = make_spread_rows();
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

void FingerprintMatrix::test(Stretch s, Cell cell) {
    cells_[index(s)] = cell;
    tested_[index(s)] = true;
}

void FingerprintMatrix::renumber(std::span<const std::uint16_t> number_of) {
    for (Cell& cell : cells_) cell.knot = number_of[cell.knot];
}

ChainFingerprint fingerprint_of(const std::string& file, const NamedChain& chain, const FingerprintPlan& plan,
                                FingerprintWatcher& watcher) {
    if (chain.beads.empty()) throw std::invalid_argument("the chain has no atom");
    if (plan.closures == 0 || plan.closures > spread_rows().size())
        throw std::invalid_argument("between 1 and 400 closures of a stretch can be made");
    const std::size_t beads = chain.beads.size();
    const std::size_t step = plan.full        ? 1
                             : plan.step == 0 ? default_step(beads)
                                              : std::min(plan.step, beads);

    Testing testing(chain, plan, watcher);
    if (step == 1)
        testing.every_stretch();
    else
        testing.by_grid(step);
    const Counts whole = testing.whole();

    std::vector<std::string> names = testing.take_names();
    ChainFingerprint result{file,
                            chain.name,
                            chain.labels,
                            bonds_of(chain),
                            chain.notes,
                            plan.closures,
                            step,
                            testing.done(),
                            std::move(names),
                            std::move(testing.matrix()),
                            {},
                            0,
                            {},
                            {}};
    const Cell& cell = result.matrix.at({0, beads - 1});
    result.knot = result.names[cell.knot];
    result.share = result.share_of(cell);
    if (result.is_knot(cell.knot)) result.depth = {depth_of(result, true), depth_of(result, false)};
    result.places = Places(result, whole).all();
    return result;
}

TypicalClosure typical_closure(const Chain& chain, Stretch stretch, const std::string& knot,
                               std::size_t closures) {
    const auto begin = chain.begin() + static_cast<std::ptrdiff_t>(stretch.first);
    const auto closed_in = [&](int row) {
        Chain loop(begin, begin + static_cast<std::ptrdiff_t>(stretch.size()));
        close_in_direction(loop, row);
        std::int32_t position = 0;
        for (ChainAtom& bead : loop) bead.id = position++;
        TypicalClosure closure{row, {}, {loop, stretch.size()}, {loop, 0}};
        Chain& reduced = closure.reduced.beads;
        reduce(reduced, true);
        closure.reduced.own =
            static_cast<std::size_t>(std::count_if(reduced.begin(), reduced.end(), [&](const ChainAtom& b) {
                return static_cast<std::size_t>(b.id) < stretch.size();
            }));
        const KnotName name = knot_of(reduced);
        closure.knot = has_name(name) ? name.text() : unnamed;
        return closure;
    };
    for (const int row : spread_rows().first(closures))
        if (TypicalClosure closure = closed_in(row); closure.knot == knot) return closure;
    return closed_in(spread_rows().front());
}

} // namespace loopwise
