// What filter.cpp says of one segment, box, direction or atom, for LANES at a time: the same operations in the same order, so that
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

/// A number in all lanes; nothing is added, which would turn -0 to 0 and cost an instruction.
LOOPWISE_TARGET inline Floats all(float x) { return x - Floats{}; }

LOOPWISE_TARGET inline Floats size(Floats v) {
    return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) & (Ints{} + 0x7FFFFFFF));
}

/// The number with its sign turned where that of another is set.
LOOPWISE_TARGET inline Floats signed_by(Floats v, Floats sign) {
    const Ints only_sign = Ints{} + std::numeric_limits<std::int32_t>::min();
    return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) ^ (reinterpret_cast<Ints>(sign) & only_sign));
}

struct Points {
    Floats x, y, z;
};

/// GCC would read them anew for each function of them, mostly across two lines of the cache.
LOOPWISE_TARGET inline Points points(const Positions3& at, std::size_t j) {
    Points p{load(at.x + j), load(at.y + j), load(at.z + j)};
    asm("" : "+v"(p.x), "+v"(p.y), "+v"(p.z));
    return p;
}

LOOPWISE_TARGET inline Floats value(const Affine& f, const Points& p) {
    return FUSED(p.x, all(f.x), FUSED(p.y, all(f.y), FUSED(p.z, all(f.z), all(f.constant))));
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
    const Floats p0 = value(f.along_b, points(at, j)), p1 = value(f.along_b, points(at, j + 1));
    const Floats u = signed_by(FUSED(p0, h1, -(p1 * h0)), rise);
    const Floats v = signed_by(FUSED(q0, h1, -(q1 * h0)), rise);
    const std::uint32_t parallel = ~GREATER(drop, all(f.parallel));
    return parallel | ~(GREATER(-FUSED(drop, all(f.slack), all(f.edge_u)), u) |
                        GREATER(-FUSED(drop, all(f.slack), all(f.edge_v)), v) |
                        GREATER(u + v, FUSED(drop, all(f.whole), all(f.edge_w))));
}

LOOPWISE_TARGET Candidates find_candidates(const Filter& filter, const Positions3& positions, std::size_t begin,
                                std::size_t end) {
    if (begin >= end) return {end, 0};
    const Filter& f = filter;
    const Positions3 at = positions;
    const Points first = points(at, begin);
    Floats h0 = value(f.height, first), q0 = value(f.along_c, first);
    for (std::size_t j = begin; j < end; j += LANES) {
        const Points next = points(at, j + LANES);
        const Floats h_next = value(f.height, next), q_next = value(f.along_c, next);
        const Floats h1 = following(h0, h_next), q1 = following(q0, q_next);
        const Floats drop = size(h1 - h0);
        const std::uint32_t out =
            GREATER(drop, all(f.parallel)) &
            (GREATER(size(h0 + h1), FUSED(drop, all(side_factor), all(f.side))) |
             GREATER(size((q0 + q1) - f.squared),
                     FUSED(size(q1 - q0), all(side_factor), all(f.slab_v))));
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
    return FUSED(load(at.x + j), all(f.x),
                 FUSED(load(at.y + j), all(f.y),
                       FUSED(load(at.z + j), all(f.z), all(f.constant + f.constant))));
}

LOOPWISE_TARGET inline Floats spread(const Affine& f, const Boxes& at, std::size_t j) {
    return FUSED(load(at.dx + j), all(std::fabs(f.x)),
                 FUSED(load(at.dy + j), all(std::fabs(f.y)), load(at.dz + j) * std::fabs(f.z)));
}

LOOPWISE_TARGET inline Floats reach(const Affine& along, float margin, const Boxes& at, std::size_t j) {
    return FUSED(spread(along, at, j), all(side_factor), all(margin));
}

LOOPWISE_TARGET Candidates find_boxes(const BoxFilter& filter, const Boxes& boxes, std::size_t begin,
                                      std::size_t end) {
    const BoxFilter& f = filter;
    const Boxes at = boxes;
    for (std::size_t j = begin; j < end; j += LANES) {
        const Floats h = middle(f.height, at, j), p = middle(f.along_b, at, j), q = middle(f.along_c, at, j);
        const std::uint32_t out = GREATER(size(h), reach(f.height, f.side, at, j)) |
                                  GREATER(size(q - f.squared), reach(f.along_c, f.slab_v, at, j)) |
                                  GREATER(size(p - f.squared), reach(f.along_b, f.slab_u, at, j)) |
                                  GREATER((p + q) - f.squared, reach(f.along_both, f.slab_w, at, j));
        const std::uint32_t lanes = ~out & up_to(end - j);
        if (lanes != 0) return {j, lanes};
    }
    return {end, 0};
}

LOOPWISE_TARGET Candidates find_directions(const Turn& turn, const Directions& directions, std::size_t begin,
                                           std::size_t end) {
    const Turn t = turn;
    for (std::size_t j = begin; j < end; j += LANES) {
        const Floats v = load(directions.v + j), w = load(directions.w + j);
        const Floats d = FUSED(v, all(t.v), FUSED(w, all(t.w), all(t.one)));
        const std::uint32_t lanes = ~GREATER(size(d), all(t.most)) & up_to(end - j);
        if (lanes != 0) return {j, lanes};
    }
    return {end, 0};
}

/// Four atoms at a time: rows of x, y, z and what follows them are turned to columns.
LOOPWISE_TARGET void put_positions(const Frame& frame, std::span<const ChainAtom> atoms, float* x, float* y,
                                   float* z) {
    using Doubles4 = double __attribute__((vector_size(32)));
    using Bits4 = std::int64_t __attribute__((vector_size(32)));
    using Floats4 = float __attribute__((vector_size(16)));
    static_assert(sizeof(ChainAtom) == sizeof(Doubles4));
    const Bits4 coordinates{-1, -1, -1, 0};
    const Doubles4 centre{frame.centre.x, frame.centre.y, frame.centre.z, 0};
    Floats4 p[4];
    std::size_t j = 0;
    for (; j + 4 <= atoms.size(); j += 4) {
        for (std::size_t k = 0; k < 4; ++k) {
            Bits4 bits;
            __builtin_memcpy(&bits, &atoms[j + k], sizeof bits);
            const Doubles4 d = reinterpret_cast<Doubles4>(bits & coordinates) - centre;
            p[k] = __builtin_convertvector(d * frame.scale, Floats4);
        }
        const Floats4 xy01 = __builtin_shufflevector(p[0], p[1], 0, 4, 1, 5);
        const Floats4 xy23 = __builtin_shufflevector(p[2], p[3], 0, 4, 1, 5);
        const Floats4 z01 = __builtin_shufflevector(p[0], p[1], 2, 6, 3, 7);
        const Floats4 z23 = __builtin_shufflevector(p[2], p[3], 2, 6, 3, 7);
        const Floats4 column[] = {__builtin_shufflevector(xy01, xy23, 0, 1, 4, 5),
                                  __builtin_shufflevector(xy01, xy23, 2, 3, 6, 7),
                                  __builtin_shufflevector(z01, z23, 0, 1, 4, 5)};
        __builtin_memcpy(x + j, &column[0], sizeof(Floats4));
        __builtin_memcpy(y + j, &column[1], sizeof(Floats4));
        __builtin_memcpy(z + j, &column[2], sizeof(Floats4));
    }
    for (; j < atoms.size(); ++j) {
        const PointR3 at = frame(position(atoms[j]));
        x[j] = static_cast<float>(at.x), y[j] = static_cast<float>(at.y), z[j] = static_cast<float>(at.z);
    }
}
