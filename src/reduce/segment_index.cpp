#include "reduce/segment_index.hpp"

namespace loopwise {
namespace {

/// Cells along an edge of the cube, so that the runs of cells that a line crosses fill a group or two.
std::size_t cells_along_edge(std::size_t segments) {
    return std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(static_cast<double>(segments)) / 12));
}

/// A segment that is shorter than this part of the mean is loose, unless it is as long as this part of the frame:
/// most_turn() hardly grows with shorter ones before that. Late in a reduction the mean is that of a few long ones.
constexpr float least_of_mean = 0.25F, least_of_frame = 0x1p-9F;

/// What rounding may do to a coordinate on a face and to the bounds of a run, many times over.
constexpr float on_face = 1e-5F;

} // namespace

SegmentIndex::SegmentIndex(const Kernels& kernels, std::size_t segments, std::size_t components,
                           std::size_t numbers)
    : kernels_(kernels) {
    const std::size_t slots = segments + components, edge = cells_along_edge(slots);
    segments_.resize(slots), direction_.resize(slots), sorted_.resize(slots);
    positions_.resize(slots), directions_.resize(slots);
    boxes_[0].resize(slots / group + 1);
    boxes_[1].resize(slots / group / group + 1);
    cells_.resize(3 * edge * edge + 1);
    runs_.reserve(edge);
    loose_segments_.resize(slots + slots / segments_per_new + 2);
    loose_.resize(2 * loose_segments_.size());
    loose_of_.resize(numbers), next_.resize(numbers);
}

void SegmentIndex::clear() { count_ = replaced_ = 0; }

SegmentIndex::Direction SegmentIndex::direction_of(PointR3 d) {
    const std::array<double, 5> a{d.x, d.y, d.z, d.x, d.y};
    std::size_t face = std::fabs(d.y) > std::fabs(d.x) ? 1 : 0;
    if (std::fabs(d.z) > std::fabs(a[face])) face = 2;
    return {static_cast<float>(a[face + 1] / a[face]), static_cast<float>(a[face + 2] / a[face]),
            static_cast<float>(std::fabs(a[face])), face};
}

void SegmentIndex::add(Ends ends, PointR3 start, PointR3 end) {
    positions_.put(count_, start);
    positions_.put(count_ + 1, end);
    segments_[count_] = ends;
    next_[ends.from] = ends.to;
    direction_[count_++] = direction_of(end - start);
}

void SegmentIndex::sort() {
    loose_count_ = 0;
    std::fill(loose_of_.begin(), loose_of_.end(), no_bead);
    sort_directions();
    first_new_ = loose_count_;
    make_boxes();
}

std::size_t SegmentIndex::cell_of(const Direction& direction) const {
    const auto along = [&](float x) {
        return std::min(edge_ - 1, static_cast<std::size_t>((x + 1) / 2 * static_cast<float>(edge_)));
    };
    return (direction.face * edge_ + along(direction.w)) * edge_ + along(direction.v);
}

void SegmentIndex::sort_directions() {
    double sum = 0;
    std::size_t finite = 0;
    for (std::size_t j = 0; j < count_; ++j)
        if (segments_[j].from != no_bead && direction_[j].length <= 2)
            sum += static_cast<double>(direction_[j].length), ++finite;
    shortest_ = finite > 0 ? least_of_mean * static_cast<float>(sum / static_cast<double>(finite)) : 1;
    shortest_ = std::clamp(shortest_, 0x1p-60F, least_of_frame);
    edge_ = cells_along_edge(count_);

    const auto has_cell = [&](std::size_t j) {
        const Direction& d = direction_[j];
        return segments_[j].from != no_bead && d.length >= shortest_ && d.length <= 2 &&
               std::fabs(d.v) <= 1 && std::fabs(d.w) <= 1;
    };
    std::fill(cells_.begin(), cells_.end(), 0);
    for (std::size_t j = 0; j < count_; ++j) {
        if (has_cell(j))
            ++cells_[cell_of(direction_[j])];
        else if (segments_[j].from != no_bead)
            add_loose(j);
    }
    std::uint32_t end = 0;
    for (std::uint32_t& cell : cells_) end += cell, cell = end;
    for (std::size_t j = count_; j-- > 0;) {
        if (!has_cell(j)) continue;
        const std::uint32_t to = --cells_[cell_of(direction_[j])];
        sorted_[to] = static_cast<std::uint32_t>(j);
        directions_.row[0][to] = direction_[j].v;
        directions_.row[1][to] = direction_[j].w;
    }
}

void SegmentIndex::add_loose(std::size_t j) {
    for (std::size_t i = 0; i < 3; ++i) {
        loose_.row[i][2 * loose_count_] = positions_.row[i][j];
        loose_.row[i][2 * loose_count_ + 1] = positions_.row[i][j + 1];
    }
    loose_segments_[loose_count_++] = segments_[j];
}

void SegmentIndex::replace(Number gone, Ends ends, PointR3 start, PointR3 end) {
    next_[ends.from] = ends.to;
    next_[gone] = no_bead;
    ++replaced_;
    std::uint32_t& slot = loose_of_[ends.from];
    if (slot == no_bead) slot = static_cast<std::uint32_t>(loose_count_++);
    loose_.put(2 * slot, start);
    loose_.put(2 * slot + 1, end);
    loose_segments_[slot] = ends;
}

void SegmentIndex::make_boxes() {
    const std::size_t count = (count_ + group - 1) / group;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (std::size_t row = 0; row < 3; ++row) {
        const std::vector<float>& x = positions_.row[row];
        float large_least = infinity, large_most = -infinity;
        const auto put = [&](std::size_t level, std::size_t box, float least, float most) {
            boxes_[level].row[row][box] = least <= most ? least + most : 0;
            boxes_[level].row[row + 3][box] = least <= most ? most - least : 0;
        };
        for (std::size_t box = 0; box < count; ++box) {
            float least = infinity, most = -infinity;
            // The last position is that of an end; what is not finite is loose, and neither less nor greater.
            for (std::size_t j = box * group; j < std::min((box + 1) * group + 1, count_); ++j)
                if (std::fabs(x[j]) <= 1) least = std::min(least, x[j]), most = std::max(most, x[j]);
            put(0, box, least, most);
            large_least = std::min(large_least, least), large_most = std::max(large_most, most);
            if (box % group != group - 1 && box + 1 != count) continue;
            put(1, box / group, large_least, large_most);
            large_least = infinity, large_most = -infinity;
        }
    }
}

void SegmentIndex::find_runs(std::size_t face, const Turn& turn) {
    runs_.clear();
    const auto edge = static_cast<float>(edge_);
    const auto cell = [&](float x) {
        return static_cast<std::size_t>(std::clamp((x + 1) / 2 * edge, 0.0F, edge - 1));
    };
    // Of a division by zero, all or nothing is left.
    const auto divisor = [](float x) { return std::copysign(std::max(std::fabs(x), 1e-30F), x); };
    const float v = divisor(turn.v), w = divisor(turn.w);
    const float middle = -turn.one / w, reach = (std::fabs(v) + 2 * turn.most) / std::fabs(w) + on_face;
    if (middle - reach > 1 || middle + reach < -1) return;
    const std::size_t last_row = cell(middle + reach);
    for (std::size_t row = cell(middle - reach); row <= last_row; ++row) {
        const float at = (2 * static_cast<float>(row) + 1) / edge - 1;
        const float centre = -(turn.one + turn.w * at) / v;
        const float width =
            (std::fabs(turn.w) * (1 / edge + on_face) + 2 * turn.most) / std::fabs(v) + on_face;
        if (!(centre - width <= 1 && centre + width >= -1)) continue;
        const std::size_t first = (face * edge_ + row) * edge_;
        const Run run{cells_[first + cell(centre - width)], cells_[first + cell(centre + width) + 1]};
        if (run.begin < run.end) runs_.push_back(run);
    }
}

} // namespace loopwise
