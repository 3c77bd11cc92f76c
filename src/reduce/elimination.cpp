#include "reduce/elimination.hpp"

#include "model/comparisons.hpp"
#include "model/points.hpp"
#include "reduce/bits.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace loopwise {
namespace {

/// Below this a ring has no triangle to spare.
constexpr std::size_t fewest_beads = 3;

/// A triangle of three beads in a row, and the bead before them.
struct Corners {
    Place before = nowhere, first = nowhere, middle = nowhere, last = nowhere;
    /// Whether a segment of the same ring shares a bead with the triangle, by where it begins.
    bool touch(Place segment) const {
        return segment == before || segment == first || segment == middle || segment == last;
    }
};

class Elimination {
  public:
    Elimination(std::span<Ring> rings, const Workspace& workspace, FindDoubts find_doubts)
        : rings_(rings), w_(workspace), beads_(rings, workspace), find_doubts_(find_doubts) {
        std::fill(w_.in_question, w_.in_question + beads_.blocks(), 0);
        std::fill(w_.is_obstacle, w_.is_obstacle + beads_.blocks(), 0);
        std::fill(w_.obstacles, w_.obstacles + slots(), nowhere);
        for (const Ring& ring : rings_) question_all(ring, ring.first);
    }

    void run() {
        while (remove_first_free())
            if (beads_.sparse()) close_holes();
        beads_.pack();
    }

  private:
    std::size_t slots() const { return beads_.blocks() * block_size; }

    bool remove_first_free() {
        for (Place p = 0; (p = bits::first(w_.in_question, p, slots())) != slots();) {
            if (try_to_remove(beads_.ring_of(p), p)) return true;
            bits::remove(w_.in_question, p);
        }
        // What has no slot is not remembered: these triangles are tried every time.
        Ring& ring = rings_.front();
        for (Place p = ring.rear_begin(); p < ring.rear_end(); ++p)
            if (is_candidate(ring, p) && try_to_remove(ring, p)) return true;
        return false;
    }

    bool try_to_remove(Ring& ring, Place p) {
        const bool previous_was_blocked = corners_.first != nowhere;
        corners_ = corners_at(ring, p);
        if (is_blocked(ring, corners_, previous_was_blocked)) return false;
        remove_middle(ring, std::exchange(corners_, {}));
        return true;
    }

    /// Most triangles are the next after the one that was tried before.
    Corners corners_at(const Ring& ring, Place p) const {
        if (p == corners_.middle) return {corners_.first, p, corners_.last, beads_.next(ring, corners_.last)};
        const Place middle = beads_.next(ring, p);
        return {beads_.previous(ring, p), p, middle, beads_.next(ring, middle)};
    }

    bool is_blocked(const Ring& ring, const Corners& corners, bool previous_was_blocked) {
        const Triangle triangle{Beads::at(ring, corners.first), Beads::at(ring, corners.middle),
                                Beads::at(ring, corners.last)};
        const Place known = ring.in_front(corners.first) ? w_.obstacles[corners.first] : nowhere;
        if (known != nowhere && !corners.touch(known) && meets(triangle, known)) return true;

        if (previous_was_blocked && meets_recent(triangle, corners)) return true;

        const Clearance clearance = clearance_of(triangle, beads_.surroundings());
        const std::size_t start = ring.in_front(corners.first) ? corners.first / block_size : 0;
        const auto search_front = [&](std::size_t block, std::size_t end) {
            return search(beads_.cloud(), 0, clearance, triangle, corners, block, end);
        };
        Place obstacle = search_front(start, beads_.blocks());
        if (obstacle == nowhere) obstacle = search_front(0, start);
        if (obstacle == nowhere && rings_.front().has_rear())
            obstacle = search_rear(clearance, triangle, corners);
        if (obstacle == nowhere) return false;
        remember(corners.first, obstacle);
        return true;
    }

    /// What blocked a triangle often blocks its neighbours, where most of them are blocked.
    bool meets_recent(const Triangle& triangle, const Corners& corners) {
        for (const Place obstacle : recent_) {
            if (obstacle == nowhere || corners.touch(obstacle) || !meets(triangle, obstacle)) continue;
            remember(corners.first, obstacle);
            return true;
        }
        return false;
    }

    /// Where the first segment of the blocks begins that meets the triangle.
    Place search(const Cloud& cloud, Place origin, const Clearance& clearance, const Triangle& triangle,
                 const Corners& corners, std::size_t block, std::size_t end) const {
        std::uint64_t doubts = 0;
        for (; (block = find_doubts_(clearance, cloud, block, end, doubts)) < end; ++block)
            for (; doubts != 0; doubts &= doubts - 1) {
                const auto bit = static_cast<std::size_t>(std::countr_zero(doubts));
                const Place segment = origin + block * block_size + bit;
                if (!corners.touch(segment) && meets(triangle, segment)) return segment;
            }
        return nowhere;
    }

    Place search_rear(const Clearance& clearance, const Triangle& triangle, const Corners& corners) const {
        const Ring& ring = rings_.front();
        Piece piece;
        for (Place p = ring.rear_begin(); p < ring.rear_end();) {
            const std::size_t count = beads_.fill(piece, ring, p);
            const std::size_t blocks = (count + block_size - 1) / block_size;
            const Place obstacle = search(piece.cloud(), p, clearance, triangle, corners, 0, blocks);
            if (obstacle != nowhere) return obstacle;
            p += count;
        }
        return nowhere;
    }

    bool meets(const Triangle& triangle, Place segment) const {
        const Ring& ring = beads_.ring_of(segment);
        const Segment ends{Beads::at(ring, segment), Beads::at(ring, beads_.next(ring, segment))};
        return contact(triangle, ends) != Contact::none;
    }

    void remove_middle(Ring& ring, const Corners& corners) {
        const Place rear = ring.rear_begin();
        beads_.remove_next(ring, corners.first);
        std::replace(recent_.begin(), recent_.end(), corners.middle, Place{nowhere});
        const auto moved = [&](Place p) -> Place {
            return !ring.in_front(corners.middle) && rear <= p && p < corners.middle ? p + 1 : p;
        };
        reconsider(corners, moved);
        if (ring.in_front(corners.middle)) forget(corners.middle);
        if (ring.count <= fewest_beads) {
            question_all(ring, ring.first);
        } else {
            question(ring, moved(corners.before));
            question(ring, moved(corners.first));
        }
    }

    /// The segments to and from the bead that went are one now, which begins where the first of them did.
    /// What they blocked may be free. `moved` says where beads of the rear have moved to.
    template <class Moved> void reconsider(const Corners& corners, Moved moved) {
        if (!may_be_obstacle(corners.first) && !may_be_obstacle(corners.middle)) return;
        const Place merged = moved(corners.first);
        for (Place p = 0; p < remembered_end_; ++p) {
            const Place obstacle = w_.obstacles[p];
            if (obstacle == nowhere) continue;
            const bool is_gone = obstacle == corners.first || obstacle == corners.middle;
            if (is_gone) bits::add(w_.in_question, p);
            if (is_gone || moved(obstacle) != obstacle) remember(p, is_gone ? merged : moved(obstacle));
        }
    }

    bool has_slot(Place p) const { return beads_.ring_of(p).in_front(p); }

    bool may_be_obstacle(Place p) const { return !has_slot(p) || bits::has(w_.is_obstacle, p); }

    void remember(Place p, Place obstacle) {
        if (!has_slot(p)) return;
        w_.obstacles[p] = static_cast<std::uint32_t>(obstacle);
        remembered_end_ = std::max(remembered_end_, p + 1);
        if (!has_slot(obstacle)) return;
        bits::add(w_.is_obstacle, obstacle);
        if (recent_[0] != obstacle) recent_ = {obstacle, recent_[0]};
    }

    void forget(Place p) {
        w_.obstacles[p] = nowhere;
        bits::remove(w_.in_question, p);
    }

    /// Whether the triangle that begins at a place may lose its middle bead.
    bool is_candidate(const Ring& ring, Place p) const {
        if (ring.count <= fewest_beads) return false;
        if (ring.closed) return true;
        const Place last = beads_.last(ring);
        return p != last && beads_.next(ring, p) != last;
    }

    /// A triangle whose corners are new is in question, if it is one.
    void question(const Ring& ring, Place p) {
        if (!ring.in_front(p)) return;
        forget(p);
        if (is_candidate(ring, p)) bits::add(w_.in_question, p);
    }

    /// All triangles from a place on are new.
    void question_all(const Ring& ring, Place from) {
        std::fill(w_.obstacles + from, w_.obstacles + ring.seam(), nowhere);
        if (ring.count <= fewest_beads) {
            for (Place p = from; p < ring.seam(); ++p) bits::remove(w_.in_question, p);
            return;
        }
        for (Place p = bits::first(w_.alive, from, ring.seam()); p < ring.seam();) {
            const Place end = bits::first_missing(w_.alive, p, ring.seam());
            bits::add(w_.in_question, p, end);
            p = bits::first(w_.alive, end, ring.seam());
        }
        const Place last = beads_.last(ring);
        question(ring, last);
        question(ring, beads_.previous(ring, last));
    }

    void close_holes() {
        beads_.plan_closing();
        for (Place p = bits::first(w_.alive, 0, slots()); p < slots();
             p = bits::first(w_.alive, p + 1, slots())) {
            const Place obstacle = w_.obstacles[p];
            const bool in_question = bits::has(w_.in_question, p);
            forget(p);
            const Place now = beads_.place_after(p);
            if (obstacle != nowhere)
                w_.obstacles[now] = static_cast<std::uint32_t>(beads_.place_after(obstacle));
            if (in_question) bits::add(w_.in_question, now);
        }
        const Ring& ring = rings_.front();
        const Place first_new = beads_.place_after(ring.rear_begin());
        const bool had_rear = ring.has_rear();
        beads_.close_holes();

        // The places that follow are those of the new order.
        recent_.fill(nowhere);
        remembered_end_ = 0;
        std::fill(w_.is_obstacle, w_.is_obstacle + beads_.blocks(), 0);
        for (Place p = 0; p < slots(); ++p)
            if (w_.obstacles[p] != nowhere) remember(p, w_.obstacles[p]);
        if (had_rear) question_all(ring, first_new);
    }

    std::span<Ring> rings_;
    Workspace w_;
    Beads beads_;
    FindDoubts find_doubts_;
    Corners corners_; ///< of the triangle that was tried last, if it is still there
    std::array<Place, 2> recent_{nowhere, nowhere}; ///< obstacles among the slots
    Place remembered_end_ = 0; ///< no obstacle is remembered for this place or any after it
};

} // namespace

void eliminate(std::span<Ring> rings, const Workspace& workspace, FindDoubts find_doubts) {
    if (!rings.empty()) Elimination(rings, workspace, find_doubts).run();
}

void eliminate(std::span<Ring> rings, const Workspace& workspace) {
    static const FindDoubts fastest = instruction_sets().back().find_doubts;
    eliminate(rings, workspace, fastest);
}

bool has_repeated_end(const Chain& chain) {
    return !chain.empty() && chain.front().id == chain.back().id &&
           equal(0, distance(position(chain.front()), position(chain.back())));
}

Ring without_repeated_end(Chain& chain, bool closed) {
    return {chain.data(), chain.size() - has_repeated_end(chain), closed};
}

std::size_t finish(Chain& chain, const Ring& reduced, bool repeat_end) {
    // A chain of one atom was its own repeat and keeps it.
    if (repeat_end && reduced.count > 0) chain[reduced.count] = ChainAtom(chain.front());
    chain.resize(reduced.count + repeat_end);
    return chain.size();
}

} // namespace loopwise
