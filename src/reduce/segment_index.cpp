#include "src/reduce/segment_index.hpp"

#include <numeric>
#include <span>

namespace loopwise::reduce {
namespace {

/// Number of cells along an edge of the cube: the cells of a row that a line crosses fill a group or two.
/// More rows take longer than they save.
std::size_t cells_along_edge(std::size_t segments) {
    return std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(static_cast<double>(segments)) / 16));
}

/// A segment that is shorter than this part of the mean is loose, unless it is as long as this part of the
/// frame: most_parallel() hardly grows with shorter ones before that. Late in a reduction the mean is that of
/// a few long ones.
constexpr float least_of_mean = 0.25F, least_of_frame = 0x1p-9F;

/// What rounding may do to a coordinate on a face and to the bounds of a run, many times over.
constexpr float on_face = 1e-5F;

/// Boxes are sorted by their largest side first, into those above 1/2, 1/4, 1/8, 1/16 and the others: one
/// large box would inflate its parent.
constexpr std::uint32_t sizes_of_boxes = 5;

/// Boxes are then sorted by the cell of a cubic grid that holds their middle. The grid has two to the power
/// of this cells along an edge.
std::uint32_t bits_of_place(std::size_t boxes) {
    return std::max<std::uint32_t>(1, static_cast<std::uint32_t>(std::bit_width(boxes) + 2) / 3);
}

/// Inserts two zeros after each bit. Three such numbers make a key that is similar for cells near each other.
std::uint32_t spread_bits(std::uint32_t x, std::uint32_t bits) {
    std::uint32_t spread = 0;
    for (std::uint32_t bit = 0; bit < bits; ++bit) spread |= (x >> bit & 1) << 3 * bit;
    return spread;
}

/// Calls put(place, i) for every key, the places in the order of the keys. Those of a key begin at
/// starts[key] then.
template <class Put>
void sort_by_key(std::span<const std::uint32_t> keys, std::span<std::uint32_t> starts, Put put) {
    std::fill(starts.begin(), starts.end(), 0);
    for (const std::uint32_t key : keys) ++starts[key];
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    for (std::size_t i = keys.size(); i-- > 0;) put(--starts[keys[i]], i);
}

} // namespace

SegmentIndex::SegmentIndex(const Kernels& kernels, std::size_t segments, std::size_t numbers)
    : kernels_(kernels) {
    const std::size_t groups = groups_for(segments), edge = cells_along_edge(segments);
    segments_.reserve(segments);
    keys_.resize(segments);
    sorted_.resize(groups * group_size), directions_.resize(groups);
    group_in_.resize(groups_for(groups) * group_size), box_.resize(groups);
    boxes_.resize(groups_for(groups)), large_boxes_.resize(groups_for(boxes_.size()));
    places_.resize(std::size_t{sizes_of_boxes} << 3 * bits_of_place(groups));
    cells_.resize(3 * edge * edge + 1);
    runs_.reserve(edge);
    loose_.reserve(segments + segments / segments_per_new + 2);
    loose_of_.assign(numbers, no_bead), next_.assign(numbers, no_bead);
}

SegmentIndex::Direction SegmentIndex::direction_of(PointR3 d) {
    const std::array<double, 5> a{d.x, d.y, d.z, d.x, d.y};
    std::uint32_t face = std::fabs(d.y) > std::fabs(d.x) ? 1 : 0;
    if (std::fabs(d.z) > std::fabs(a[face])) face = 2;
    return {static_cast<float>(a[face + 1] / a[face]), static_cast<float>(a[face + 2] / a[face]),
            static_cast<float>(std::fabs(a[face])), face};
}

void SegmentIndex::Segments::put(std::size_t j, Ends ends, PointR3 start, PointR3 end) {
    SegmentGroup& group = groups_[j / group_size];
    const std::size_t lane = j % group_size;
    const auto narrow = [](double x) { return static_cast<float>(x); };
    group.x0[lane] = narrow(start.x), group.y0[lane] = narrow(start.y), group.z0[lane] = narrow(start.z);
    group.x1[lane] = narrow(end.x), group.y1[lane] = narrow(end.y), group.z1[lane] = narrow(end.z);
    ends_[j] = ends;
    directions_[j] = direction_of(end - start);
}

void SegmentIndex::Segments::copy(std::size_t j, const Segments& from, std::size_t i) {
    SegmentGroup& group = groups_[j / group_size];
    const SegmentGroup& other = from.groups_[i / group_size];
    for (GroupRow SegmentGroup::*const row : {&SegmentGroup::x0, &SegmentGroup::y0, &SegmentGroup::z0,
                                              &SegmentGroup::x1, &SegmentGroup::y1, &SegmentGroup::z1})
        (group.*row)[j % group_size] = (other.*row)[i % group_size];
    ends_[j] = from.ends_[i];
    directions_[j] = from.directions_[i];
}

void SegmentIndex::add(Ends ends, PointR3 start, PointR3 end) {
    next_[ends.from] = ends.to;
    segments_.put(count_++, ends, start, end);
}

void SegmentIndex::replace(Number gone, Ends ends, PointR3 start, PointR3 end) {
    next_[ends.from] = ends.to;
    next_[gone] = no_bead;
    std::uint32_t& slot = loose_of_[ends.from];
    if (slot == no_bead) slot = static_cast<std::uint32_t>(loose_count_++);
    loose_.put(slot, ends, start, end);
    if (++replaced_ * segments_per_removal > count_ ||
        (loose_count_ - first_new_) * segments_per_new > count_)
        renew();
}

void SegmentIndex::renew() {
    std::size_t kept = 0;
    for (std::size_t j = 0; j < count_; ++j) {
        const Number from = segments_.ends(j).from;
        if (next_[from] == no_bead) continue;
        const bool is_new = loose_of_[from] != no_bead;
        segments_.copy(kept++, is_new ? loose_ : segments_, is_new ? loose_of_[from] : j);
    }
    for (std::size_t j = first_new_; j < loose_count_; ++j) loose_of_[loose_.ends(j).from] = no_bead;
    count_ = kept;
    sort();
}

void SegmentIndex::sort() {
    replaced_ = loose_count_ = 0;
    for (std::size_t j = count_; j % group_size != 0; ++j) segments_.copy(j, segments_, count_ - 1);
    sort_directions();
    first_new_ = loose_count_;
    sort_boxes();
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
        if (segments_.direction(j).length <= 2)
            sum += static_cast<double>(segments_.direction(j).length), ++finite;
    shortest_ = finite > 0 ? least_of_mean * static_cast<float>(sum / static_cast<double>(finite)) : 1;
    shortest_ = std::clamp(shortest_, 0x1p-60F, least_of_frame);
    edge_ = cells_along_edge(count_);

    const auto has_cell = [&](const Direction& d) {
        return d.length >= shortest_ && d.length <= 2 && std::fabs(d.v) <= 1 && std::fabs(d.w) <= 1;
    };
    const auto none = static_cast<std::uint32_t>(3 * edge_ * edge_);
    for (std::size_t j = 0; j < count_; ++j) {
        const Direction& d = segments_.direction(j);
        keys_[j] = has_cell(d) ? static_cast<std::uint32_t>(cell_of(d)) : none;
        if (keys_[j] == none) loose_.copy(loose_count_++, segments_, j);
    }
    sort_by_key(std::span(keys_).first(count_), std::span(cells_).first(none + 1),
                [&](std::size_t to, std::size_t j) {
                    sorted_[to] = static_cast<std::uint32_t>(j);
                    directions_[to / group_size].v[to % group_size] = segments_.direction(j).v;
                    directions_[to / group_size].w[to % group_size] = segments_.direction(j).w;
                });
}

SegmentIndex::Box SegmentIndex::box_around(const SegmentGroup& group) {
    const std::array<const GroupRow*, 6> row{&group.x0, &group.y0, &group.z0,
                                             &group.x1, &group.y1, &group.z1};
    Box box{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Range range;
        for (const GroupRow* const ends : {row[axis], row[axis + 3]})
            for (const float x : *ends)
                if (std::fabs(x) <= 1) range.widen(x, x); // what is not finite is loose
        if (!range.is_empty()) box.put(axis, range);
    }
    return box;
}

std::uint32_t SegmentIndex::place_of(const Box& box, std::uint32_t bits) {
    const float cells = static_cast<float>(1U << bits);
    std::uint32_t place = 0;
    float largest = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const float cell = std::min((box.sum[axis] + 2) / 4 * cells, cells - 1);
        place |= spread_bits(static_cast<std::uint32_t>(cell), bits) << axis;
        largest = std::max(largest, box.difference[axis]);
    }
    std::uint32_t size = 0;
    for (float side = 0.5F; size + 1 < sizes_of_boxes && largest <= side; side /= 2) ++size;
    return size << 3 * bits | place;
}

void SegmentIndex::sort_boxes() {
    const std::size_t count = groups_for(count_), large = groups_for(count);
    const std::uint32_t bits = bits_of_place(count);
    for (std::size_t g = 0; g < count; ++g) {
        box_[g] = box_around(segments_.groups()[g]);
        keys_[g] = place_of(box_[g], bits);
    }
    sort_by_key(std::span(keys_).first(count), std::span(places_).first(sizes_of_boxes << 3 * bits),
                [&](std::size_t to, std::size_t g) {
                    group_in_[to] = static_cast<std::uint32_t>(g);
                    put_box(boxes_, to, box_[g]);
                });
    for (std::size_t i = count; i % group_size != 0; ++i) put_box(boxes_, i, outside);

    for (std::size_t i = 0; i < large; ++i) {
        Box box{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Range range;
            for (std::size_t k = i * group_size; k < std::min((i + 1) * group_size, count); ++k) {
                const Box& one = box_[group_in_[k]];
                range.widen((one.sum[axis] - one.difference[axis]) / 2,
                            (one.sum[axis] + one.difference[axis]) / 2);
            }
            box.put(axis, range);
        }
        put_box(large_boxes_, i, box);
    }
    for (std::size_t i = large; i % group_size != 0; ++i) put_box(large_boxes_, i, outside);
}

void SegmentIndex::put_box(std::vector<BoxGroup>& groups, std::size_t i, const Box& box) {
    BoxGroup& group = groups[i / group_size];
    const std::size_t lane = i % group_size;
    group.x[lane] = box.sum[0], group.y[lane] = box.sum[1], group.z[lane] = box.sum[2];
    group.dx[lane] = box.difference[0], group.dy[lane] = box.difference[1],
    group.dz[lane] = box.difference[2];
}

void SegmentIndex::find_runs(std::size_t face, const ParallelQuery& query) {
    runs_.clear();
    const auto edge = static_cast<float>(edge_);
    const auto cell = [&](float x) {
        return static_cast<std::size_t>(std::clamp((x + 1) / 2 * edge, 0.0F, edge - 1));
    };
    // Instead of dividing by zero: the line crosses all cells or none.
    const auto divisor = [](float x) { return std::copysign(std::max(std::fabs(x), 1e-30F), x); };
    const float v = divisor(query.v), w = divisor(query.w);
    const float middle = -query.one / w, reach = (std::fabs(v) + 2 * query.most) / std::fabs(w) + on_face;
    if (middle - reach > 1 || middle + reach < -1) return;
    // In cells: the line goes through the middle of a row at start + row * slope.
    const float slope = -query.w / v, start = (1 - (query.one + query.w * (1 / edge - 1)) / v) / 2 * edge;
    const float width =
        ((std::fabs(query.w) * (1 / edge + on_face) + 2 * query.most) / std::fabs(v) + on_face) / 2 * edge;
    const std::size_t last_row = cell(middle + reach);
    for (std::size_t row = cell(middle - reach); row <= last_row; ++row) {
        const float at = start + slope * static_cast<float>(row), least = at - width, most = at + width;
        if (least >= edge || most < 0) continue;
        const std::uint32_t* const cells = &cells_[(face * edge_ + row) * edge_];
        const std::uint32_t begin = cells[static_cast<std::size_t>(std::max(0.0F, least))];
        const std::uint32_t end = cells[static_cast<std::size_t>(std::min(edge - 1, most)) + 1];
        if (begin == end) continue;
        runs_.push_back(
            {begin / static_cast<std::uint32_t>(group_size), static_cast<std::uint32_t>(groups_for(end))});
    }
}

} // namespace loopwise::reduce
