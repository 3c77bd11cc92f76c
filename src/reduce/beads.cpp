#include "reduce/beads.hpp"

#include "reduce/bits.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace loopwise {
namespace {

/// Fewer slots than this are quicker to search with their holes than to move.
constexpr std::size_t too_few_to_close = 2 * block_size;

/// Holes are closed when more than one slot in so many is empty.
constexpr std::size_t most_holes = 8;

struct Range {
    double least = std::numeric_limits<double>::infinity(), most = -least;

    /// A not-a-number is neither less nor greater; an infinity is not below the largest number.
    void widen(double value) {
        if (!(std::fabs(value) <= std::numeric_limits<double>::max())) return;
        least = value < least ? value : least;
        most = value > most ? value : most;
    }
    double middle() const { return least <= most ? least / 2 + most / 2 : 0; }
    double reach() const { return std::max(most - middle(), middle() - least); }
};

/// The middle of the box around all finite coordinates, and how far they are from it.
Surroundings surroundings_of(std::span<const Ring> rings) {
    Range x, y, z;
    for (const Ring& ring : rings)
        for (const ChainAtom& atom : std::span(ring.atoms, ring.count)) {
            x.widen(atom.x);
            y.widen(atom.y);
            z.widen(atom.z);
        }
    return {{x.middle(), y.middle(), z.middle()}, std::max({x.reach(), y.reach(), z.reach()})};
}

} // namespace

Beads::Beads(std::span<Ring> rings, const Workspace& workspace)
    : rings_(rings), w_(workspace), surroundings_(surroundings_of(rings)) {
    for (Ring& ring : rings_) {
        ring.rear = 0;
        ring.end = ring.count;
    }
    lay_out();
}

Place Beads::first(const Ring& ring) const { return bits::first(w_.alive, ring.first, ring.seam()); }

Place Beads::last(const Ring& ring) const {
    return ring.has_rear() ? ring.rear_end() - 1 : bits::last_before(w_.alive, ring.seam(), ring.first);
}

Place Beads::next(const Ring& ring, Place p) const {
    if (!ring.in_front(p)) return p + 1 < ring.rear_end() ? p + 1 : first(ring);
    const Place found = bits::first(w_.alive, p + 1, ring.seam());
    if (found != ring.seam()) return found;
    return ring.has_rear() ? ring.rear_begin() : first(ring);
}

Place Beads::previous(const Ring& ring, Place p) const {
    if (!ring.in_front(p) && p != ring.rear_begin()) return p - 1;
    const Place from = std::min(p, ring.seam());
    const Place found = bits::last_before(w_.alive, from, ring.first);
    return found != from ? found : last(ring);
}

void Beads::put(Place from, Place to, PointR3 p) const {
    const PointR3 relative = p - surroundings_.centre;
    const auto x = static_cast<float>(relative.x), y = static_cast<float>(relative.y),
               z = static_cast<float>(relative.z);
    for (Place slot = from; slot < to; ++slot) w_.x[slot] = x, w_.y[slot] = y, w_.z[slot] = z;
}

void Beads::remove_next(Ring& ring, Place before) {
    const Place gone = next(ring, before);
    const PointR3 after = at(ring, next(ring, gone));
    if (ring.in_front(gone)) {
        bits::remove(w_.alive, gone);
        bits::remove(w_.segments, gone);
        --alive_;
    } else {
        ChainAtom* const rear = ring.atoms + ring.rear;
        std::copy_backward(rear, ring.atoms + (gone - ring.first), ring.atoms + (gone - ring.first) + 1);
        ++ring.rear;
    }
    --ring.count;
    // The slots behind a bead of the front, up to the next one, hold where the next one lies.
    if (ring.in_front(before)) put(before + 1, bits::first(w_.alive, before + 1, ring.seam() + 1), after);
}

std::size_t Beads::fill(Piece& piece, const Ring& ring, Place from) const {
    const ChainAtom* const atoms = ring.atoms + (from - ring.first);
    const std::size_t count = std::min(Piece::most, ring.rear_end() - from);
    const PointR3 centre = surroundings_.centre;
    const auto set = [&](std::size_t i, const ChainAtom& atom) {
        piece.x[i] = static_cast<float>(atom.x - centre.x);
        piece.y[i] = static_cast<float>(atom.y - centre.y);
        piece.z[i] = static_cast<float>(atom.z - centre.z);
    };
    for (std::size_t i = 0; i < count; ++i) set(i, atoms[i]);

    const bool at_end = from + count == ring.rear_end();
    if (!at_end)
        set(count, atoms[count]);
    else
        set(count, ring.atoms[first(ring) - ring.first]);
    piece.segments.fill(~std::uint64_t{0});
    if (count % block_size != 0) piece.segments[count / block_size] = bits::mask(count) - 1;
    if (at_end && !ring.closed) bits::remove(piece.segments.data(), count - 1);
    return count;
}

bool Beads::sparse() const {
    const std::size_t holes = slots_ - alive_;
    return holes > slots_ / most_holes + rings_.size() &&
           (slots_ > too_few_to_close || rings_.front().has_rear());
}

// The new places are kept where the positions were, which are made anew afterwards anyway.
void Beads::plan_closing() {
    Place now = 0;
    for (const Ring& ring : rings_) {
        const Place before = now;
        for (Place p = first(ring); p < ring.seam(); p = bits::first(w_.alive, p + 1, ring.seam()))
            w_.x[p] = std::bit_cast<float>(static_cast<std::uint32_t>(now++));
        w_.x[ring.seam()] = std::bit_cast<float>(static_cast<std::uint32_t>(now));
        now = before + ring.count + 1;
    }
}

Place Beads::place_after(Place p) const {
    const Ring& ring = ring_of(p);
    if (ring.in_front(p)) return std::bit_cast<std::uint32_t>(w_.x[p]);
    return std::bit_cast<std::uint32_t>(w_.x[ring.seam()]) + (p - ring.rear_begin());
}

void Beads::close_holes() {
    pack();
    lay_out();
}

void Beads::pack() {
    for (Ring& ring : rings_) {
        ChainAtom* to = ring.atoms;
        // A run of beads without a hole moves in one go.
        for (Place p = first(ring); p < ring.seam();) {
            const Place end = bits::first_missing(w_.alive, p, ring.seam());
            to = std::copy(ring.atoms + (p - ring.first), ring.atoms + (end - ring.first), to);
            p = bits::first(w_.alive, end, ring.seam());
        }
        std::copy(ring.atoms + ring.rear, ring.atoms + ring.end, to);
        ring.rear = 0;
        ring.end = ring.count;
    }
}

/// Gives the beads of every ring, which stand without holes, slots as far as there are any.
void Beads::lay_out() {
    slots_ = alive_ = 0;
    for (Ring& ring : rings_) {
        ring.first = slots_;
        ring.slots = std::min(ring.count, w_.slots - slots_ - 1);
        ring.rear = ring.slots;
        slots_ += ring.slots + 1;
        alive_ += ring.slots;
    }
    std::fill(w_.alive, w_.alive + blocks(), 0);
    std::fill(w_.segments, w_.segments + blocks(), 0);
    for (const Ring& ring : rings_) {
        for (std::size_t i = 0; i < ring.slots; ++i)
            put(ring.first + i, ring.first + i + 1, position(ring.atoms[i]));
        bits::add(w_.alive, ring.first, ring.seam());
        bits::add(w_.segments, ring.first, ring.seam());
        const bool wraps = !ring.has_rear();
        if (ring.count > 0) put(ring.seam(), ring.seam() + 1, position(ring.atoms[wraps ? 0 : ring.rear]));
        if (ring.count > 0 && wraps && !ring.closed) bits::remove(w_.segments, ring.seam() - 1);
    }
    put(slots_, blocks() * block_size + cloud_padding, surroundings_.centre);
}

} // namespace loopwise
