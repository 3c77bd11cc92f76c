// The beads of all rings while they are reduced: which are left, which follow each other, and where they
// lie. Beads are not erased one by one: they leave holes, which are closed when half the slots are empty.
#pragma once

#include "model/points.hpp"
#include "reduce/intersection.hpp"
#include "reduce/workspace.hpp"

#include <algorithm>
#include <array>
#include <span>

namespace loopwise {

/// Where a bead is: its slot. Only a single ring can be longer than the workspace; the beads of its rear
/// part, which have no slot yet, are then counted on from its first one.
using Place = std::size_t;

/// The atoms of a component while it is reduced, closed or not. They stay where the caller stores them.
///
///     atoms:  | front, with holes | gap | rear, without holes |
///             0               slots   rear                  end
///
/// The bead atoms[i] has the place first + i. The slot behind the front is its seam: it holds the position
/// of the bead that follows the front, the first of the rear or, without a rear, the first of all.
struct Ring {
    ChainAtom* atoms;
    std::size_t count; ///< beads that are left
    bool closed;
    Place first = 0;
    std::size_t slots = 0, rear = 0, end = 0;

    Place seam() const { return first + slots; }
    Place rear_begin() const { return first + rear; }
    Place rear_end() const { return first + end; }
    bool has_rear() const { return rear < end; }
    bool in_front(Place p) const { return p < seam(); }
};

/// A part of a rear as a cloud of its own.
struct Piece {
    static constexpr std::size_t most = 4 * block_size;
    std::array<float, most + cloud_padding> x{}, y{}, z{};
    std::array<std::uint64_t, most / block_size> segments{};
    Cloud cloud() const { return {x.data(), y.data(), z.data(), segments.data()}; }
};

class Beads {
  public:
    Beads(std::span<Ring> rings, const Workspace& workspace);

    Ring& ring_of(Place p) const {
        return *(std::upper_bound(rings_.begin(), rings_.end(), p,
                                  [](Place place, const Ring& ring) { return place < ring.first; }) -
                 1);
    }
    static PointR3 at(const Ring& ring, Place p) { return position(ring.atoms[p - ring.first]); }
    Place first(const Ring& ring) const;
    Place last(const Ring& ring) const;
    /// The bead after or before another, around the end of the ring whether it is closed or not.
    Place next(const Ring& ring, Place p) const;
    Place previous(const Ring& ring, Place p) const;

    /// Takes the bead away that follows `before` in a ring of at least four. Beads of the rear may move by
    /// one place: those from the first of the rear to the one that goes.
    void remove_next(Ring& ring, Place before);

    const Surroundings& surroundings() const { return surroundings_; }
    Cloud cloud() const { return {w_.x, w_.y, w_.z, w_.segments}; }
    std::size_t blocks() const { return (slots_ + block_size - 1) / block_size; }
    /// The segments of the rear from a place on: how many went into the piece.
    std::size_t fill(Piece& piece, const Ring& ring, Place from) const;

    /// Whether it is time to close the holes, which takes beads of the rear into slots.
    bool sparse() const;
    /// From now until close_holes(), place_after() says where each bead will be.
    void plan_closing();
    Place place_after(Place p) const;
    void close_holes();
    /// Moves the beads that are left to the front of the caller's atoms. The places are void afterwards.
    void pack();

  private:
    void lay_out();
    void put(Place from, Place to, PointR3 p) const;

    std::span<Ring> rings_;
    Workspace w_;
    Surroundings surroundings_;
    std::size_t slots_ = 0; ///< in use, seams included
    std::size_t alive_ = 0; ///< beads that have a slot
};

} // namespace loopwise
