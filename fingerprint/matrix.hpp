// The knot of every subchain of a chain.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace loopwise::fingerprint {

/// Subchains of fewer beads are unknotted however they are closed in a direction: the closure appends two beads, and
/// a polygon of fewer than six edges is the unknot (Randell, "An elementary invariant of knots", J. Knot Theory
/// Ramif. 3, 1994).
inline constexpr std::size_t fewest_knotted = 6 - 2;

/// Beads of a chain, counted from 0, both included.
struct Subchain {
    std::size_t first = 0, last = 0;

    std::size_t size() const { return last - first + 1; }
    bool holds(const Subchain& other) const { return first <= other.first && other.last <= last; }
    bool meets(const Subchain& other) const { return first <= other.last && other.first <= last; }
    bool operator==(const Subchain&) const = default;
};

/// The most frequent knot of every subchain.
class FingerprintMatrix {
  public:
    /// Throws std::length_error, with the size in its words, if it needs more memory than that, or more than there
    /// is.
    FingerprintMatrix(std::size_t beads, std::size_t most_memory);

    /// The number of the most frequent knot, and the closures that gave it. Equal counts: a knot goes before the
    /// unknot, the unknot before loops without a name, then by name.
    struct Cell {
        std::uint16_t knot = 0, closures = 0;
    };

    std::size_t beads() const { return beads_; }
    Subchain whole_chain() const { return {0, beads_ - 1}; }
    /// Whether the subchain was closed, or is too short for a knot. The cell of any other is inferred from subchains
    /// around it.
    bool is_tested(Subchain s) const { return tested_[index(s)]; }
    const Cell& at(Subchain s) const { return cells_[index(s)]; }

    void test(Subchain s, Cell cell);
    void infer(Subchain s, Cell cell) { cells_[index(s)] = cell; }
    void renumber(std::span<const std::uint16_t> number_of);

    /// Calls body(subchain, cell) for all that are tested, by first and then by last bead.
    template <class Body> void for_each_tested(const Body& body) const {
        for (std::size_t first = 0; first < beads_; ++first)
            for (std::size_t last = first; last < beads_; ++last)
                if (is_tested({first, last})) body(Subchain{first, last}, at({first, last}));
    }

    /// The subchains are in the order of their last, then of their first bead.
    static std::size_t index(Subchain s) { return s.last * (s.last + 1) / 2 + s.first; }

  private:
    std::size_t beads_;
    std::vector<Cell> cells_;
    std::vector<bool> tested_;
};

using Cell = FingerprintMatrix::Cell;

/// Whether enough closures gave the most frequent knot for the subchain to be its core.
inline bool can_be_core(const Cell& cell, std::size_t least_closures) { return cell.closures >= least_closures; }

/// Shares scatter from subchain to subchain. A subchain clearly is its most frequent knot with at least two thirds.
inline bool is_clear(const Cell& cell, std::size_t closures) { return 3 * std::size_t{cell.closures} >= 2 * closures; }

} // namespace loopwise::fingerprint
