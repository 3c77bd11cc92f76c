// Index of the segments of long chains: finds those that a triangle may meet without testing all.
#pragma once

#include "src/reduce/kernels.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

namespace loopwise::reduce {

/// The segments at the time when the index was made, and those that were added since. `next_` tells which
/// segments still exist; the others are skipped.
///
/// A segment that meets a triangle is near it, or its determinant is zero at any distance. For near segments,
/// sixteen in a row have a box around them, and sixteen boxes that are near each other have a larger box. A
/// determinant of zero means a direction perpendicular to the normal of the triangle. Such directions lie on
/// a great circle, which is a straight line on the faces of a cube around the origin. So the segments are
/// also sorted by direction, into the cells of a grid on these faces, and only cells that the line crosses
/// are searched. Opposite directions count as one, which leaves three faces.
///
/// Segments that are too short for a direction and those that were added since are loose: all are searched.
class SegmentIndex {
  public:
    using Number = std::uint32_t;
    static constexpr Number no_bead = UINT32_MAX;

    /// By the beads at its ends.
    struct Ends {
        Number from, to;
    };

    /// Allocates room for so many segments between beads with numbers below `numbers`.
    SegmentIndex(const Kernels& kernels, std::size_t segments, std::size_t numbers);

    /// Adds a segment. Call for all segments, by ascending numbers, and then sort().
    void add(Ends ends, PointR3 start, PointR3 end);
    void sort();

    /// Replaces the segments to and from a bead that has gone by one.
    void replace(Number gone, Ends ends, PointR3 start, PointR3 end);
    /// The bead after another, or no_bead.
    Number next(Number number) const { return next_[number]; }
    /// The number of segments.
    std::size_t size() const { return count_ - replaced_; }

    /// Calls visit(from) until it returns true, for all segments that may meet a triangle and some others.
    /// The triangle must have a normal.
    template <class Visit> bool search(const Filter& filter, const Triangle& in_frame, Visit visit);

  private:
    /// With more new segments or removals than one for so many segments, making the index again is faster.
    static constexpr std::size_t segments_per_new = 256, segments_per_removal = 8;

    /// The largest coordinate of a direction, and the two after it divided by it.
    struct Direction {
        float v, w, length;
        std::uint32_t face;
    };
    static Direction direction_of(PointR3 d);

    struct Range {
        float least = std::numeric_limits<float>::infinity(), most = -least;
        void widen(float from, float to) { least = std::min(least, from), most = std::max(most, to); }
        bool is_empty() const { return !(least <= most); }
    };

    /// By the sums and the differences of its sides.
    struct Box {
        std::array<float, 3> sum, difference;
        void put(std::size_t axis, Range range) {
            sum[axis] = range.least + range.most, difference[axis] = range.most - range.least;
        }
    };
    /// Fills up a group of boxes. It lies outside of the frame.
    static constexpr Box outside{{8, 8, 8}, {0, 0, 0}};
    static Box box_around(const SegmentGroup& group);
    /// The key by which boxes are sorted: their size and place.
    static std::uint32_t place_of(const Box& box, std::uint32_t bits);
    static void put_box(std::vector<BoxGroup>& groups, std::size_t i, const Box& box);

    /// Segments in groups. The last group may hold older segments behind the last one.
    class Segments {
      public:
        void reserve(std::size_t count) {
            groups_.resize(groups_for(count));
            ends_.resize(groups_.size() * group_size), directions_.resize(ends_.size());
        }
        void put(std::size_t j, Ends ends, PointR3 start, PointR3 end);
        void copy(std::size_t j, const Segments& from, std::size_t i);
        const SegmentGroup* groups() const { return groups_.data(); }
        Ends ends(std::size_t j) const { return ends_[j]; }
        const Direction& direction(std::size_t j) const { return directions_[j]; }

      private:
        std::vector<SegmentGroup> groups_;
        std::vector<Ends> ends_;
        std::vector<Direction> directions_;
    };

    static constexpr std::size_t groups_for(std::size_t count) {
        return (count + group_size - 1) / group_size;
    }

    /// Makes the index again from the segments that exist.
    void renew();
    void sort_directions();
    void sort_boxes();
    std::size_t cell_of(const Direction& direction) const;
    /// The groups of the cells of a face that a line crosses, row by row.
    void find_runs(std::size_t face, const ParallelQuery& query);

    template <class What, class Group, class Visit>
    static bool for_each(FindInGroups<What, Group> find, const What& what, const Group* groups,
                         std::size_t begin, std::size_t end, Visit visit) {
        for (; begin < end; ++begin) {
            const Candidates found = find(what, groups, begin, end);
            begin = found.first;
            for (std::uint32_t lanes = found.lanes; lanes != 0; lanes &= lanes - 1)
                if (visit(begin * group_size + static_cast<std::size_t>(std::countr_zero(lanes))))
                    return true;
        }
        return false;
    }

    Kernels kernels_;
    std::vector<std::uint32_t> keys_; ///< of what is being sorted
    std::size_t count_ = 0, replaced_ = 0;
    std::vector<Number> next_;
    Segments segments_; ///< in the order of the chains

    std::vector<BoxGroup> boxes_, large_boxes_;
    std::vector<std::uint32_t> group_in_; ///< which group a box is around
    std::vector<Box> box_;                ///< around each group
    std::vector<std::uint32_t> places_;   ///< where those of a place begin in what is sorted by it

    float shortest_ = 0;
    std::size_t edge_ = 1;
    std::vector<std::uint32_t> cells_; ///< where the directions of a cell begin in what is sorted by them
    std::vector<DirectionGroup> directions_; ///< sorted
    std::vector<std::uint32_t> sorted_;      ///< which segment's
    struct Run {
        std::uint32_t begin, end;
    };
    std::vector<Run> runs_;

    std::size_t loose_count_ = 0, first_new_ = 0;
    Segments loose_;
    std::vector<std::uint32_t> loose_of_; ///< where the segment of a bead is among the loose
};

template <class Visit>
bool SegmentIndex::search(const Filter& filter, const Triangle& in_frame, Visit visit) {
    const auto visit_if_there = [&](Ends ends) { return next_[ends.from] == ends.to && visit(ends.from); };
    if (for_each(kernels_.find_segments, filter, loose_.groups(), 0, groups_for(loose_count_),
                 [&](std::size_t j) { return visit_if_there(loose_.ends(j)); }))
        return true;

    const auto visit_segment = [&](std::size_t j) { return visit_if_there(segments_.ends(j)); };
    const auto visit_box = [&](std::size_t box) {
        const std::size_t group = group_in_[box];
        return for_each(kernels_.find_segments, filter, segments_.groups(), group, group + 1, visit_segment);
    };
    const BoxFilter box_filter(filter, in_frame);
    const auto visit_large_box = [&](std::size_t box) {
        return for_each(kernels_.find_boxes, box_filter, boxes_.data(), box, box + 1, visit_box);
    };
    const std::size_t large = groups_for(groups_for(groups_for(count_)));
    if (for_each(kernels_.find_boxes, box_filter, large_boxes_.data(), 0, large, visit_large_box))
        return true;

    const float most = most_parallel(filter, shortest_);
    const std::array<float, 5> n{filter.height.x, filter.height.y, filter.height.z, filter.height.x,
                                 filter.height.y};
    for (std::size_t face = 0; face < 3; ++face) {
        const ParallelQuery query{n[face], n[face + 1], n[face + 2], most};
        find_runs(face, query);
        for (const Run& run : runs_)
            if (for_each(kernels_.find_directions, query, directions_.data(), run.begin, run.end,
                         [&](std::size_t j) { return visit_segment(sorted_[j]); }))
                return true;
    }
    return false;
}

} // namespace loopwise::reduce
