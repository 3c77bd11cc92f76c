// Where in a chain is its knot? The knot of every stretch, and what follows from it. Prints nothing and
// reads no file.
//
// As in N. P. King, E. O. Yeates and T. O. Yeates, "Identification of rare slipknots in proteins and their
// implications for stability and folding", J. Mol. Biol. 373, 2007.
#pragma once

#include "survey/survey.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace loopwise::fingerprint {

/// A stretch of fewer beads is no knot, however it is closed in a direction: two beads are appended, and a
/// polygon of fewer than six edges is the unknot (Randell, "An elementary invariant of knots", J. Knot
/// Theory Ramif. 3, 1994).
inline constexpr std::size_t fewest_knotted = 6 - 2;

/// Beads of a chain, counted from 0, both included.
struct Subchain {
    std::size_t first = 0, last = 0;

    std::size_t size() const { return last - first + 1; }
    bool holds(const Subchain& other) const { return first <= other.first && other.last <= last; }
    bool meets(const Subchain& other) const { return first <= other.last && other.first <= last; }
    bool operator==(const Subchain&) const = default;
};

struct FingerprintPlan {
    std::size_t closures = 100; ///< of every stretch: the first so many of spread_rows()
    std::size_t step = 0;       ///< of the coarse grid, in beads; 0 takes default_step()
    bool full = false;          ///< every stretch, whatever the step
    unsigned threads = 1;
    std::size_t most_memory = SIZE_MAX; ///< in bytes, for the matrix
    /// Borders are followed as far as a fixed amount of work goes, cores and depth first.
    bool bounded = false;
    /// The amount, see seconds_per_work; 0 takes one that depends on the number of beads alone.
    /// For borders alone where it is given, otherwise for the grid and borders.
    double border_work = 0;
};

/// The rows of the table of 400 directions from which any first few are spread evenly: row 0, then always the
/// row whose angle to the nearest one taken is the largest, the first of equals (Gonzalez, "Clustering to
/// minimize the maximum intercluster distance", Theor. Comput. Sci. 38, 1985).
std::span<const int> farthest_point_order();

/// Seconds that a unit of work takes on a common processor. Work is what a closure takes, of a stretch of n beads whose
/// loop comes down to m: m (m + 25) + 0.7 n + 0.0005 n^2. Measured with 100 closures of every stretch of a grid, on
/// proteins of 219 and 331 residues and on random walks, walks as dense as proteins and chains with tied trefoils of
/// 300, 1,000 and 1,500: from 2.1e-8 to 6.7e-8, the most where many loops are hard to name.
inline constexpr double seconds_per_work = 3.5e-8;

/// A grid of some eight hundred stretches, which bounded work may thin out.
std::size_t default_step(std::size_t beads);

/// What most closures of each stretch gave.
class FingerprintMatrix {
  public:
    /// Throws std::length_error, with the size in its words, where it needs more memory than that, or more
    /// than there is.
    FingerprintMatrix(std::size_t beads, std::size_t most_memory);

    /// The most frequent knot, by its number, and the closures that gave it. Of equals a knot goes before the
    /// unknot, that before loops without a name, then by name: one half is enough for a knot.
    struct Cell {
        std::uint16_t knot = 0, closures = 0;
    };

    std::size_t beads() const { return beads_; }
    /// Whether the stretch was closed, or is too short for a knot. Otherwise its cell is that of stretches
    /// around it that agree, or of the nearest of them where a border was not followed.
    bool is_tested(Subchain s) const { return tested_[index(s)]; }
    const Cell& at(Subchain s) const { return cells_[index(s)]; }

    void test(Subchain s, Cell cell);
    void infer(Subchain s, Cell cell) { cells_[index(s)] = cell; }
    void renumber(std::span<const std::uint16_t> number_of);

    /// Calls body(stretch, cell) for all that are tested, by first and then by last bead.
    template <class Body> void for_each_tested(const Body& body) const {
        for (std::size_t first = 0; first < beads_; ++first)
            for (std::size_t last = first; last < beads_; ++last)
                if (is_tested({first, last})) body(Subchain{first, last}, at({first, last}));
    }

  private:
    std::size_t index(Subchain s) const { return s.last * (s.last + 1) / 2 + s.first; }

    std::size_t beads_;
    std::vector<Cell> cells_;
    std::vector<bool> tested_;
};

/// The beads in front of a core and behind it.
inline std::array<std::size_t, 2> tails_of(const Subchain& core, std::size_t beads) {
    return {core.first, beads - 1 - core.last};
}

/// A place where a knot is.
struct KnotPlace {
    knots::KnotType knot;
    double share = 0;             ///< of the closures of the whole chain
    double greatest_share = 0;    ///< among the stretches that hold the core and are this knot most often
    Subchain greatest;            ///< the shortest with that share
    std::optional<Subchain> core; ///< the shortest stretch with a share of at least one half
    /// The first and the last residue of the core are known up to so many residues; 1 is to the residue.
    std::size_t core_within = 1;
    /// The chain is another knot or none, or a stretch around the knot clearly is: see clear_share.
    bool slipknot = false;
};

/// Shares scatter from stretch to stretch; a stretch around a knot counts as something else only where both
/// show so large a share.
inline constexpr double clear_share = 2.0 / 3.0;

struct ChainFingerprint {
    std::string file, chain;
    std::vector<polymer::ResidueId> residues; ///< of the beads
    polymer::Bonds bonds;
    std::vector<std::string> notes;     ///< about the chain, see NamedChain
    std::size_t closures = 0, step = 1; ///< of a stretch; of the grid, 1 where every stretch was tested
    std::size_t tested = 0;             ///< stretches that were closed
    std::vector<knots::KnotType> knots; ///< by number: the unknot first, the others in order
    FingerprintMatrix matrix;

    knots::KnotType knot; ///< of the whole chain
    double share = 0;
    /// How many beads can be taken off the front, or off the back, and the chain's knot is there all the way;
    /// none where the chain is no knot.
    std::optional<std::array<std::size_t, 2>> depth;
    /// Of knots, those of the chain's own knot first, then by greatest share. A knot that has no
    /// stretch with a share of one half has one place without a core.
    std::vector<KnotPlace> places;
    std::string model{}; ///< of the file, where it has several
    /// Up to how many residues the depths are known, and the borders between knots anywhere; 1 is to the residue.
    std::array<std::size_t, 2> depth_within{1, 1};
    std::size_t borders_within = 1;

    /// How the stretches were chosen, in words.
    std::string way() const;
    bool is_knot(std::size_t number) const { return knots[number].is_knot(); }
    double share_of(const FingerprintMatrix::Cell& cell) const {
        return static_cast<double>(cell.closures) / static_cast<double>(closures);
    }
};

/// Told about the work by those who do it, from any thread. What it throws ends the work.
class FingerprintWatcher {
  public:
    virtual ~FingerprintWatcher() = default;
    /// So many stretches are done of those that are planned so far; refining plans more.
    virtual void subchain_done(std::size_t done, std::size_t planned) = 0;
    /// This part of the work is done, as far as can be told: how long borders are is seen on the way.
    virtual void part_done(double) {}
    /// A closure begins. Called often: long chains take their time for each stretch.
    virtual void closure_begins() {}
    /// Every stretch will be closed, each closure of them all with so much work as far as some samples tell: see
    /// seconds_per_work.
    virtual void all_begin(double) {}
};

/// The fingerprint of a chain. Closes a stretch in each direction, reduces the loop and names its knot.
///
/// Without `full`: the stretches of a grid, with the whole chain at its corner. Blocks of the grid on whose rim two
/// tested stretches differ (in the knot, or in whether its share is at least one half) are quartered until the
/// blocks are of one bead. Every border that the grid meets is thereby followed to the residue, and a core is the
/// shortest stretch within such borders. What fits between the lines of the grid is not seen.
///
/// With `bounded`, blocks are quartered only until an amount of work is spent that depends on the number of beads
/// alone, unless border_work says it: first those that may hold a core, or the end of a depth, then the largest. Where
/// the grid would take most of it, it has fewer lines unless `step` says how many. What that leaves open is said in
/// core_within, depth_within and borders_within.
///
/// The same for any number of threads. Throws std::invalid_argument for a chain without beads, or more closures
/// than the table has rows or none; std::length_error for a matrix that is too large; what the watcher throws.
ChainFingerprint fingerprint_of(const std::string& file, const polymer::NamedChain& chain,
                                const FingerprintPlan& plan, FingerprintWatcher& watcher);

/// A closure of a stretch, and what it comes down to; see Loop for the beads' identifiers.
struct TypicalClosure {
    int row = 0;
    knots::KnotType knot;
    survey::Loop closed, reduced;
};

/// The first of spread_rows() up to so many whose closure gives the knot; the first of all where none does.
TypicalClosure typical_closure(const Chain& chain, Subchain subchain, const knots::KnotType& knot,
                               std::size_t closures);

} // namespace loopwise::fingerprint
