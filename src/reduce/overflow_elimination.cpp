#include "src/reduce/overflow_elimination.hpp"

#include "src/reduce/elimination.hpp"

#include <algorithm>

namespace loopwise::reduce {

OverflowElimination::OverflowElimination(std::span<ChainAtom> atoms, bool closed, const Slots<Id>& slots,
                                         const Kernels& kernels)
    : beads_(atoms, closed, slots), kernels_(kernels) {
    Extent extent;
    extent.widen(atoms);
    frame_ = extent.frame();
    beads_.place(frame_, kernels_.put_positions);
}

std::size_t OverflowElimination::run() {
    while (beads_.has_overflow()) {
        if (beads_.seek()) {
            const Corners corners = beads_.corners();
            if (is_blocked(corners)) continue;
            beads_.remove_middle();
            beads_.question_blocked_by(corners.first, corners.middle);
        } else if (beads_.has_overflow() && !remove_free_in_overflow()) {
            return beads_.pack();
        }
    }
    GapBuffer<Id>& all = beads_;
    Elimination<Id>({&all, 1}, kernels_).run();
    return beads_.pack();
}

bool OverflowElimination::is_blocked(const Corners& corners) {
    Id& remembered = beads_.blockers()[beads_.left() - 1];
    const Id blocker = find_blocker(corners, beads_.triangle(corners), remembered);
    if (blocker != unknown) remembered = blocker;
    return blocker != unknown;
}

OverflowElimination::Id OverflowElimination::find_blocker(const Corners& corners, const Triangle& triangle,
                                                          Id known) {
    const Id likely = known & ~BlockerMemory<Id>::in_question;
    if (known != unknown && meets(corners, triangle, likely)) return likely;
    const Filter filter = filter_of(triangle, frame_);
    const auto is_met = [&](std::size_t slot) { return beads_.meets(triangle, slot); };
    const auto [left, right] = beads_.apart_from_triangle();
    for (const auto& [begin, end] : {left, right}) {
        const std::size_t slot =
            find_met(kernels_.find_candidates, filter, beads_.positions(), begin, end, is_met);
        if (slot < end) return beads_.bead(slot);
    }
    return find_in_overflow(corners, triangle, filter, beads_.following(corners));
}

bool OverflowElimination::meets(const Corners& corners, const Triangle& triangle, std::size_t number) const {
    if (corners.touch(number)) return false;
    const std::size_t end = beads_.number_after_bead(number);
    return end != OverflowBuffer::none &&
           contact(triangle, {beads_.at_number(number), beads_.at_number(end)}) != Contact::none;
}

OverflowElimination::Id OverflowElimination::find_in_overflow(const Corners& corners,
                                                              const Triangle& triangle, const Filter& filter,
                                                              std::optional<Corners> follower) {
    const std::span<const ChainAtom> overflow = beads_.overflow();
    const std::size_t closing = overflow.size() - 1, first = beads_.overflow_number();
    if (free_in_overflow_ != corners) {
        const Triangle next = beads_.triangle(follower.value_or(corners));
        const Filter next_filter = follower ? filter_of(next, frame_) : filter;
        for (std::size_t from = 0; from < closing; from += OverflowPart::most_segments) {
            const std::size_t segments = std::min(OverflowPart::most_segments, closing - from);
            OverflowPart part;
            for (float* const row : {part.x, part.y, part.z})
                std::fill_n(row + segments + 1, position_padding, 0.0F);
            kernels_.put_positions(frame_, overflow.subspan(from, segments + 1), part.x, part.y, part.z);
            const auto find_in_part = [&](const Corners& of, const Triangle& t, const Filter& f) {
                return find_met(kernels_.find_candidates, f, {part.x, part.y, part.z}, 0, segments,
                                [&](std::size_t j) { return meets(of, t, first + from + j); });
            };
            const std::size_t found = find_in_part(corners, triangle, filter);
            if (found < segments) return static_cast<Id>(first + from + found);
            if (follower && find_in_part(*follower, next, next_filter) < segments) follower.reset();
        }
        free_in_overflow_ = follower;
    }
    const std::size_t last = first + closing;
    return beads_.is_loop() && meets(corners, triangle, last) ? static_cast<Id>(last) : unknown;
}

bool OverflowElimination::remove_free_in_overflow() {
    const std::size_t count = beads_.count_all(), triangles = beads_.is_loop() ? count : count - 2;
    for (std::size_t i = beads_.count() - 2; i < triangles; ++i) {
        const auto number = [&](std::size_t place) { return beads_.number_at(place % count); };
        const Corners corners{number(i + count - 1), number(i), number(i + 1), number(i + 2)};
        if (is_blocked_anywhere(corners)) continue;
        beads_.question_blocked_by(corners.first, corners.middle);
        beads_.remove_from_overflow(corners.middle);
        free_in_overflow_.reset();
        return true;
    }
    return false;
}

bool OverflowElimination::is_blocked_anywhere(const Corners& corners) {
    const Triangle triangle = beads_.triangle(corners);
    const Filter filter = filter_of(triangle, frame_);
    const std::size_t slot =
        find_met(kernels_.find_candidates, filter, beads_.positions(), beads_.begin(), beads_.end(),
                 [&](std::size_t j) { return meets(corners, triangle, beads_.bead(j)); });
    return slot < beads_.end() || find_in_overflow(corners, triangle, filter, std::nullopt) != unknown;
}

} // namespace loopwise::reduce
