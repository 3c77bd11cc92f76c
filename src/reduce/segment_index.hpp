// For long chains: which segments a triangle may meet, without looking at all of them.
#pragma once

#include "reduce/filter.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

namespace loopwise {

/// The segments as they were when the index was made, and those that came since. What has gone since is passed
/// over: `next_` knows which segments are there.
///
/// What meets a triangle is near it, or has a determinant of zero at whatever distance. For what is near, the
/// segments stand in the order of the chain with a box around every sixteen, and around every sixteen boxes. A
/// determinant of zero means a direction perpendicular to the normal of the triangle: these lie on a great
/// circle, which is a straight line on the faces of a cube around the origin. So the segments are also sorted
/// by the cell of a grid on these faces where their direction falls, and only cells that the line crosses are
/// searched. Opposite directions are the same, which leaves three faces.
///
/// Segments too short for a direction, or without one, and those that came since are loose: all are searched.
class SegmentIndex {
  public:
    using Number = std::uint32_t;
    static constexpr Number no_bead = UINT32_MAX;

    /// By the beads at its ends.
    struct Ends {
        Number from, to;
    };

    /// Room for so many segments of components whose beads have numbers below `numbers`.
    SegmentIndex(const Kernels& kernels, std::size_t segments, std::size_t components, std::size_t numbers);

    /// To make it anew: clear(), all segments in the order of the chains with end_component() after each, sort().
    void clear();
    void add(Ends ends, PointR3 start, PointR3 end);
    void end_component() { segments_[count_++] = {no_bead, no_bead}; }
    void sort();

    /// A segment that came for those to and from a bead.
    void replace(Number gone, Ends ends, PointR3 start, PointR3 end);
    /// The bead after another, or no_bead.
    Number next(Number number) const { return next_[number]; }
    /// Whether it is time to make it anew.
    bool is_stale() const {
        return replaced_ * segments_per_removal > count_ ||
               (loose_count_ - first_new_) * segments_per_new > count_;
    }

    /// Calls visit(from) for segments, those that may meet a triangle among them, until that is true. The triangle
    /// must have a normal.
    template <class Visit> bool search(const Filter& filter, Visit visit);

  private:
    static constexpr std::size_t group = 16;
    /// More new segments or removals than one for so many segments cost more than to make the index anew.
    static constexpr std::size_t segments_per_new = 256, segments_per_removal = 8;

    /// Rows of floats, with what a kernel reads beyond their ends.
    template <std::size_t rows> struct Rows {
        std::array<std::vector<float>, rows> row;
        void resize(std::size_t count) {
            for (std::vector<float>& r : row) r.resize(count + position_padding);
        }
        void put(std::size_t j, PointR3 p) {
            row[0][j] = static_cast<float>(p.x);
            row[1][j] = static_cast<float>(p.y);
            row[2][j] = static_cast<float>(p.z);
        }
    };

    /// A segment's direction: the coordinate that is largest, and the two after it in units of it.
    struct Direction {
        float v, w, length;
        std::size_t face;
    };
    static Direction direction_of(PointR3 d);
    std::size_t cell_of(const Direction& direction) const;

    void add_loose(std::size_t j);
    void make_boxes();
    void sort_directions();
    /// The runs of cells of a face that a line crosses, row by row.
    void find_runs(std::size_t face, const Turn& turn);

    template <class Find, class Where, class Visit>
    static bool for_each(Find find, const auto& what, const Where& where, std::size_t begin, std::size_t end,
                         Visit visit) {
        while (begin < end) {
            const Candidates found = find(what, where, begin, end);
            begin = found.first;
            for (std::uint32_t lanes = found.lanes; lanes != 0; lanes &= lanes - 1) {
                begin = found.first + static_cast<std::size_t>(std::countr_zero(lanes));
                if (visit(begin++)) return true;
            }
        }
        return false;
    }
    Boxes boxes(std::size_t level) const {
        const auto& row = boxes_[level].row;
        return {row[0].data(), row[1].data(), row[2].data(), row[3].data(), row[4].data(), row[5].data()};
    }
    static Positions3 positions(const Rows<3>& rows) {
        return {rows.row[0].data(), rows.row[1].data(), rows.row[2].data()};
    }

    Kernels kernels_;
    std::size_t count_ = 0, replaced_ = 0;
    std::vector<Number> next_;
    std::vector<Ends> segments_; ///< in the order of the chains, with a slot after every component
    Rows<3> positions_;
    std::array<Rows<6>, 2> boxes_;

    float shortest_ = 0;
    std::size_t edge_ = 1;
    std::vector<Direction> direction_;          ///< of each segment
    std::vector<std::uint32_t> cells_, sorted_; ///< where cells begin in what is sorted by them
    Rows<2> directions_;                        ///< sorted
    struct Run {
        std::uint32_t begin, end;
    };
    std::vector<Run> runs_;

    std::size_t loose_count_ = 0, first_new_ = 0;
    std::vector<Ends> loose_segments_;
    Rows<3> loose_;                       ///< both ends of each
    std::vector<std::uint32_t> loose_of_; ///< where the segment of a bead is among the loose
};

template <class Visit> bool SegmentIndex::search(const Filter& filter, Visit visit) {
    const Positions3 loose = positions(loose_), all = positions(positions_);
    const auto visit_if_there = [&](Ends ends) {
        return ends.from != no_bead && next_[ends.from] == ends.to && visit(ends.from);
    };
    const auto visit_loose = [&](std::size_t j) {
        return j % 2 == 0 && visit_if_there(loose_segments_[j / 2]);
    };
    if (for_each(kernels_.find_candidates, filter, loose, 0, 2 * loose_count_, visit_loose)) return true;

    const auto visit_segment = [&](std::size_t j) { return visit_if_there(segments_[j]); };
    const auto visit_box = [&](std::size_t box) {
        return for_each(kernels_.find_candidates, filter, all, box * group,
                        std::min((box + 1) * group, count_), visit_segment);
    };
    const BoxFilter box_filter(filter);
    const std::size_t count = (count_ + group - 1) / group, large = (count + group - 1) / group;
    const auto visit_large_box = [&](std::size_t box) {
        return for_each(kernels_.find_boxes, box_filter, boxes(0), box * group,
                        std::min((box + 1) * group, count), visit_box);
    };
    if (for_each(kernels_.find_boxes, box_filter, boxes(1), 0, large, visit_large_box)) return true;

    const float most = most_turn(filter, shortest_);
    const std::array<float, 5> n{filter.height.x, filter.height.y, filter.height.z, filter.height.x,
                                 filter.height.y};
    const Directions directions{directions_.row[0].data(), directions_.row[1].data()};
    for (std::size_t face = 0; face < 3; ++face) {
        const Turn turn{n[face], n[face + 1], n[face + 2], most};
        find_runs(face, turn);
        for (const Run& run : runs_)
            if (for_each(kernels_.find_directions, turn, directions, run.begin, run.end,
                         [&](std::size_t j) { return visit_if_there(segments_[sorted_[j]]); }))
                return true;
    }
    return false;
}

} // namespace loopwise
