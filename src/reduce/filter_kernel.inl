// What filter.cpp says of one segment, box or direction, for LANES at a time: the same operations in the same order, so that
// the answer is the same to the last bit. Included once per instruction set, with LOOPWISE_TARGET as the
// attribute that allows the instructions, GREATER(a, b) for the lanes where a > b as bits, FUSED(a, b, c)
// for a * b + c, rounded once where there is an instruction for it, and FOLLOWING as the numbers of the
// lanes after the first.

using Floats = float __attribute__((vector_size(4 * LANES)));
using Ints = std::int32_t __attribute__((vector_size(4 * LANES)));

LOOPWISE_TARGET inline Floats load(const float* from) {
    Floats v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}

LOOPWISE_TARGET inline Floats size(Floats v) {
    return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) & (Ints{} + 0x7FFFFFFF));
}

/// The number with its sign turned where that of another is set.
LOOPWISE_TARGET inline Floats signed_by(Floats v, Floats sign) {
    const Ints only_sign = Ints{} + std::numeric_limits<std::int32_t>::min();
    return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) ^ (reinterpret_cast<Ints>(sign) & only_sign));
}

LOOPWISE_TARGET inline Floats value(const Affine& f, const Positions3& at, std::size_t j) {
    return FUSED(load(at.x + j), Floats{} + f.x,
                 FUSED(load(at.y + j), Floats{} + f.y,
                       FUSED(load(at.z + j), Floats{} + f.z, Floats{} + f.constant)));
}

constexpr std::uint32_t all_lanes = (2U << (LANES - 1)) - 1;

/// The lanes that belong to a range with so many left.
LOOPWISE_TARGET inline std::uint32_t up_to(std::size_t left) {
    return left < LANES ? (1U << left) - 1 : all_lanes;
}

/// Every bead is looked at once: the other ends of the segments are the lanes after theirs.
LOOPWISE_TARGET inline Floats following(Floats these, Floats next) {
    return __builtin_shufflevector(these, next, FOLLOWING);
}

/// Those of the lanes that the coordinates u, v and u + v do not put out of reach.
LOOPWISE_TARGET inline std::uint32_t within_edges(const Filter& f, const Positions3& at, std::size_t j, Floats h0,
                                                  Floats h1, Floats q0, Floats q1) {
    const Floats rise = h1 - h0, drop = size(rise);
    const Floats p0 = value(f.along_b, at, j), p1 = value(f.along_b, at, j + 1);
    const Floats u = signed_by(FUSED(p0, h1, -(p1 * h0)), rise);
    const Floats v = signed_by(FUSED(q0, h1, -(q1 * h0)), rise);
    const std::uint32_t parallel = ~GREATER(drop, Floats{} + f.parallel);
    return parallel | ~(GREATER(-FUSED(drop, Floats{} + f.slack, Floats{} + f.edge_u), u) |
                        GREATER(-FUSED(drop, Floats{} + f.slack, Floats{} + f.edge_v), v) |
                        GREATER(u + v, FUSED(drop, Floats{} + f.whole, Floats{} + f.edge_w)));
}

LOOPWISE_TARGET Candidates find_candidates(const Filter& filter, const Positions3& positions, std::size_t begin,
                                std::size_t end) {
    if (begin >= end) return {end, 0};
    const Filter f = filter;
    const Positions3 at = positions;
    Floats h0 = value(f.height, at, begin), q0 = value(f.along_c, at, begin);
    for (std::size_t j = begin; j < end; j += LANES) {
        const Floats h_next = value(f.height, at, j + LANES), q_next = value(f.along_c, at, j + LANES);
        const Floats h1 = following(h0, h_next), q1 = following(q0, q_next);
        const Floats drop = size(h1 - h0);
        const std::uint32_t out =
            GREATER(drop, Floats{} + f.parallel) &
            (GREATER(size(h0 + h1), FUSED(drop, Floats{} + side_factor, Floats{} + f.side)) |
             GREATER(size((q0 + q1) - f.squared),
                     FUSED(size(q1 - q0), Floats{} + side_factor, Floats{} + f.slab_v)));
        std::uint32_t lanes = ~out & all_lanes;
        if (__builtin_expect(lanes != 0, 0)) {
            lanes &= up_to(end - j);
            if (lanes != 0) lanes &= within_edges(f, at, j, h0, h1, q0, q1);
            if (lanes != 0) return {j, lanes};
        }
        h0 = h_next, q0 = q_next;
    }
    return {end, 0};
}

LOOPWISE_TARGET inline Floats middle(const Affine& f, const Boxes& at, std::size_t j) {
    return FUSED(load(at.x + j), Floats{} + f.x,
                 FUSED(load(at.y + j), Floats{} + f.y,
                       FUSED(load(at.z + j), Floats{} + f.z, Floats{} + (f.constant + f.constant))));
}

LOOPWISE_TARGET inline Floats spread(const Affine& f, const Boxes& at, std::size_t j) {
    return FUSED(load(at.dx + j), Floats{} + std::fabs(f.x),
                 FUSED(load(at.dy + j), Floats{} + std::fabs(f.y), load(at.dz + j) * std::fabs(f.z)));
}

LOOPWISE_TARGET inline std::uint32_t is_out(const Affine& along, float offset, float margin, const Boxes& at,
                                            std::size_t j) {
    return GREATER(size(middle(along, at, j) - offset),
                   FUSED(spread(along, at, j), Floats{} + side_factor, Floats{} + margin));
}

LOOPWISE_TARGET Candidates find_boxes(const Filter& filter, const Boxes& boxes, std::size_t begin,
                                      std::size_t end) {
    const Filter f = filter;
    const Boxes at = boxes;
    for (std::size_t j = begin; j < end; j += LANES) {
        const std::uint32_t lanes =
            ~(is_out(f.height, 0, f.side, at, j) | is_out(f.along_c, f.squared, f.slab_v, at, j) |
              is_out(f.along_b, f.squared, f.slab_u, at, j)) &
            up_to(end - j);
        if (lanes != 0) return {j, lanes};
    }
    return {end, 0};
}

LOOPWISE_TARGET Candidates find_directions(const Turn& turn, const Directions& directions, std::size_t begin,
                                           std::size_t end) {
    const Turn t = turn;
    for (std::size_t j = begin; j < end; j += LANES) {
        const Floats v = load(directions.v + j), w = load(directions.w + j);
        const Floats d = FUSED(v, Floats{} + t.v, FUSED(w, Floats{} + t.w, Floats{} + t.one));
        const std::uint32_t lanes = ~GREATER(size(d), Floats{} + t.most) & up_to(end - j);
        if (lanes != 0) return {j, lanes};
    }
    return {end, 0};
}
