// The same for groups, after filter_kernel.inl and with its names: all lanes of a group at a time.

/// The first group of which lanes_of(what, group, j) has lanes, sixteen from all its parts of LANES.
#define FIND_IN_GROUPS(name, What, Group, lanes_of)                                                          \
    LOOPWISE_TARGET Candidates name(const What& what, const Group* groups, std::size_t begin,                \
                                    std::size_t end) {                                                       \
        for (; begin < end; ++begin) {                                                                       \
            std::uint32_t lanes = 0;                                                                         \
            for (std::size_t j = 0; j < group_size; j += LANES)                                              \
                lanes |= lanes_of(what, groups[begin], j) << j;                                              \
            if (lanes != 0) return {begin, lanes};                                                           \
        }                                                                                                    \
        return {end, 0};                                                                                     \
    }

LOOPWISE_TARGET inline std::uint32_t segments_of(const Filter& f, const SegmentGroup& g, std::size_t j) {
    const Points start = points({g.x0.data(), g.y0.data(), g.z0.data()}, j);
    const Points end = points({g.x1.data(), g.y1.data(), g.z1.data()}, j);
    const Floats h0 = value(f.height, start), h1 = value(f.height, end);
    const Floats q0 = value(f.along_c, start), q1 = value(f.along_c, end);
    const std::uint32_t lanes = ~out_of_slab(f, h0, h1, q0, q1) & all_lanes;
    return lanes == 0 ? 0 : lanes & within_edges(f, start, end, h0, h1, q0, q1);
}
FIND_IN_GROUPS(find_segments, Filter, SegmentGroup, segments_of)

LOOPWISE_TARGET inline Floats middle(const Affine& f, const BoxGroup& at, std::size_t j) {
    return FUSED(
        load(&at.x[j]), all(f.x),
        FUSED(load(&at.y[j]), all(f.y), FUSED(load(&at.z[j]), all(f.z), all(f.constant + f.constant))));
}

LOOPWISE_TARGET inline Floats spread(const Affine& f, const BoxGroup& at, std::size_t j) {
    return FUSED(load(&at.dx[j]), all(std::fabs(f.x)),
                 FUSED(load(&at.dy[j]), all(std::fabs(f.y)), load(&at.dz[j]) * std::fabs(f.z)));
}

LOOPWISE_TARGET inline Floats reach(const Affine& along, float margin, const BoxGroup& at, std::size_t j) {
    return FUSED(spread(along, at, j), all(side_factor), all(margin));
}

LOOPWISE_TARGET inline std::uint32_t apart(const BoxFilter& f, std::size_t axis, const float* sum,
                                           const float* difference) {
    return GREATER(size(load(sum) - all(f.sum[axis])),
                   FUSED(load(difference), all(side_factor), all(f.room[axis])));
}

LOOPWISE_TARGET inline std::uint32_t boxes_of(const BoxFilter& f, const BoxGroup& at, std::size_t j) {
    const std::uint32_t close = ~(apart(f, 0, &at.x[j], &at.dx[j]) | apart(f, 1, &at.y[j], &at.dy[j]) |
                                  apart(f, 2, &at.z[j], &at.dz[j])) &
                                all_lanes;
    if (close == 0) return 0;
    const Floats h = middle(f.height, at, j), p = middle(f.along_b, at, j), q = middle(f.along_c, at, j);
    return ~(GREATER(size(h), reach(f.height, f.side, at, j)) |
             GREATER(size(q - f.squared), reach(f.along_c, f.slab_v, at, j)) |
             GREATER(size(p - f.squared), reach(f.along_b, f.slab_u, at, j)) |
             GREATER((p + q) - f.squared, reach(f.along_both, f.slab_w, at, j))) &
           close;
}
FIND_IN_GROUPS(find_boxes, BoxFilter, BoxGroup, boxes_of)

LOOPWISE_TARGET inline std::uint32_t directions_of(const Turn& t, const DirectionGroup& g, std::size_t j) {
    const Floats d = FUSED(load(&g.v[j]), all(t.v), FUSED(load(&g.w[j]), all(t.w), all(t.one)));
    return ~GREATER(size(d), all(t.most)) & all_lanes;
}
FIND_IN_GROUPS(find_directions, Turn, DirectionGroup, directions_of)

#undef FIND_IN_GROUPS
