// What filter.cpp says of one segment, box, direction or atom, for LANES at a time: the same operations in the same
// order, so that the answer is the same to the last bit. Included once per instruction set, with LOOPWISE_TARGET as the
// attribute that allows the instructions, GREATER(a, b) for the lanes where a > b as bits, FUSED(a, b, c)
// for a * b + c, rounded once where there is an instruction for it, and FOLLOWING(these, next) for the lanes after the
// first of these and the first of the next.

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

/// GCC would read them anew for each function of them, mostly across two lines of the cache, and as members write them
/// to memory first.
LOOPWISE_TARGET inline Points points(const Positions3& at, std::size_t j) {
    Floats x = load(at.x + j), y = load(at.y + j), z = load(at.z + j);
    asm("" : "+v"(x), "+v"(y), "+v"(z));
    return {x, y, z};
}

LOOPWISE_TARGET inline Floats value(const Affine& f, const Points& p) {
    return FUSED(p.x, all(f.x), FUSED(p.y, all(f.y), FUSED(p.z, all(f.z), all(f.constant))));
}

constexpr std::uint32_t all_lanes = (2U << (LANES - 1)) - 1;

/// The lanes that belong to a range with so many left.
LOOPWISE_TARGET inline std::uint32_t up_to(std::size_t left) {
    return left < LANES ? (1U << left) - 1 : all_lanes;
}

/// Those of the lanes that the coordinates u, v and u + v do not put out of reach.
LOOPWISE_TARGET inline std::uint32_t within_edges(const Filter& f, const Points& start, const Points& end,
                                                  Floats h0, Floats h1, Floats q0, Floats q1) {
    const Floats rise = h1 - h0, drop = size(rise);
    const Floats p0 = value(f.along_b, start), p1 = value(f.along_b, end);
    const Floats u = signed_by(FUSED(p0, h1, -(p1 * h0)), rise);
    const Floats v = signed_by(FUSED(q0, h1, -(q1 * h0)), rise);
    const std::uint32_t parallel = ~GREATER(drop, all(f.parallel));
    return parallel | ~(GREATER(-FUSED(drop, all(f.slack), all(f.edge_u)), u) |
                        GREATER(-FUSED(drop, all(f.slack), all(f.edge_v)), v) |
                        GREATER(u + v, FUSED(drop, all(f.whole), all(f.edge_w))));
}

/// Those of the lanes whose determinants are not zero and which the height or the slab along the first edge puts
/// out of reach.
LOOPWISE_TARGET inline std::uint32_t out_of_slab(const Filter& f, Floats h0, Floats h1, Floats q0,
                                                 Floats q1) {
    const Floats drop = size(h1 - h0);
    return GREATER(drop, all(f.parallel)) &
           (GREATER(size(h0 + h1), FUSED(drop, all(side_factor), all(f.side))) |
            GREATER(size((q0 + q1) - f.squared), FUSED(size(q1 - q0), all(side_factor), all(f.slab_v))));
}

LOOPWISE_TARGET Candidates find_candidates(const Filter& filter, const Positions3& positions,
                                           std::size_t begin, std::size_t end) {
    if (begin >= end) return {end, 0};
    const Filter& f = filter;
    const Positions3 at = positions;
    const Points first = points(at, begin);
    Floats h0 = value(f.height, first), q0 = value(f.along_c, first);
    // Every bead is looked at once: the other ends of the segments are the lanes after theirs.
#if !defined(__clang__) // which warns of loops that it does not unroll
#pragma GCC unroll 2
#endif
    for (std::size_t j = begin; j < end; j += LANES) {
        const Points next = points(at, j + LANES);
        const Floats h_next = value(f.height, next), q_next = value(f.along_c, next);
        const Floats h1 = FOLLOWING(h0, h_next), q1 = FOLLOWING(q0, q_next);
        std::uint32_t lanes = ~out_of_slab(f, h0, h1, q0, q1) & all_lanes;
        if (__builtin_expect(lanes != 0, 0)) {
            lanes &= up_to(end - j);
            if (lanes != 0) lanes &= within_edges(f, points(at, j), points(at, j + 1), h0, h1, q0, q1);
            if (lanes != 0) return {j, lanes};
        }
        h0 = h_next, q0 = q_next;
    }
    return {end, 0};
}

#if LANES == 16
/// Two atoms, with nothing after x, y, z of each. The scale is a power of two: to round once here is to round the
/// difference.
LOOPWISE_TARGET inline __m256 two_atoms(const double* from, __m512d scale, __m512d scaled_centre) {
    constexpr __mmask8 coordinates = 0b01110111;
    return __builtin_convertvector(
        _mm512_maskz_fmsub_pd(coordinates, _mm512_loadu_pd(from), scale, scaled_centre), __m256);
}

/// Atoms in a frame, their rows turned to columns.
LOOPWISE_TARGET inline Points place(const Frame& frame, const ChainAtom* atoms) {
    const double* const from = reinterpret_cast<const double*>(atoms);
    const PointR3 centre = frame.centre;
    const __m512d scale = frame.scale - __m512d{};
    const __m512d scaled_centre =
        __m512d{centre.x, centre.y, centre.z, 0, centre.x, centre.y, centre.z, 0} * scale;
    Floats four[4], xy[2], zz[2];
    for (std::size_t k = 0; k < 4; ++k) {
        const __m256 low = two_atoms(from + 16 * k, scale, scaled_centre);
        const __m256 high = two_atoms(from + 16 * k + 8, scale, scaled_centre);
        // Of a shuffle GCC would clear the upper half first.
        four[k] = reinterpret_cast<Floats>(_mm512_maskz_insertf64x4(
            0xFF, _mm512_castps_pd(_mm512_castps256_ps512(low)), _mm256_castps_pd(high), 1));
    }
    for (std::size_t k = 0; k < 2; ++k) {
        const Floats a = four[2 * k], b = four[2 * k + 1];
        xy[k] = __builtin_shufflevector(a, b, 0, 4, 8, 12, 16, 20, 24, 28, 1, 5, 9, 13, 17, 21, 25, 29);
        zz[k] = __builtin_shufflevector(a, b, 2, 6, 10, 14, 18, 22, 26, 30, 2, 6, 10, 14, 18, 22, 26, 30);
    }
    return {
        __builtin_shufflevector(xy[0], xy[1], 0, 1, 2, 3, 4, 5, 6, 7, 16, 17, 18, 19, 20, 21, 22, 23),
        __builtin_shufflevector(xy[0], xy[1], 8, 9, 10, 11, 12, 13, 14, 15, 24, 25, 26, 27, 28, 29, 30, 31),
        __builtin_shufflevector(zz[0], zz[1], 0, 1, 2, 3, 4, 5, 6, 7, 16, 17, 18, 19, 20, 21, 22, 23)};
}
#else
using Floats4 = float __attribute__((vector_size(16)));

struct Points4 {
    Floats4 x, y, z;
};

/// Four atoms in a frame: rows of x, y, z and what follows them are turned to columns.
LOOPWISE_TARGET inline Points4 place_four(const Frame& frame, const ChainAtom* atoms) {
    using Doubles4 = double __attribute__((vector_size(32)));
    using Bits4 = std::int64_t __attribute__((vector_size(32)));
    const Bits4 coordinates{-1, -1, -1, 0};
    const Doubles4 centre{frame.centre.x, frame.centre.y, frame.centre.z, 0};
    Floats4 p[4];
    for (std::size_t k = 0; k < 4; ++k) {
        Bits4 bits;
        __builtin_memcpy(&bits, &atoms[k], sizeof bits);
        const Doubles4 d = reinterpret_cast<Doubles4>(bits & coordinates) - centre;
        p[k] = __builtin_convertvector(d * frame.scale, Floats4);
    }
    const Floats4 xy01 = __builtin_shufflevector(p[0], p[1], 0, 4, 1, 5);
    const Floats4 xy23 = __builtin_shufflevector(p[2], p[3], 0, 4, 1, 5);
    const Floats4 z01 = __builtin_shufflevector(p[0], p[1], 2, 6, 3, 7);
    const Floats4 z23 = __builtin_shufflevector(p[2], p[3], 2, 6, 3, 7);
    return {__builtin_shufflevector(xy01, xy23, 0, 1, 4, 5), __builtin_shufflevector(xy01, xy23, 2, 3, 6, 7),
            __builtin_shufflevector(z01, z23, 0, 1, 4, 5)};
}

LOOPWISE_TARGET inline Points place(const Frame& frame, const ChainAtom* atoms) {
    const Points4 a = place_four(frame, atoms);
#if LANES == 4
    return {a.x, a.y, a.z};
#else
    const Points4 b = place_four(frame, atoms + 4);
    return {__builtin_shufflevector(a.x, b.x, 0, 1, 2, 3, 4, 5, 6, 7),
            __builtin_shufflevector(a.y, b.y, 0, 1, 2, 3, 4, 5, 6, 7),
            __builtin_shufflevector(a.z, b.z, 0, 1, 2, 3, 4, 5, 6, 7)};
#endif
}
#endif

static_assert(sizeof(ChainAtom) == 4 * sizeof(double));

LOOPWISE_TARGET void put_positions(const Frame& frame, std::span<const ChainAtom> atoms, float* x, float* y,
                                   float* z) {
    const Frame here = frame; // which no row can alias
    std::size_t j = 0;
    for (; j + LANES <= atoms.size(); j += LANES) {
        const Points p = place(here, &atoms[j]);
        __builtin_memcpy(x + j, &p.x, sizeof p.x);
        __builtin_memcpy(y + j, &p.y, sizeof p.y);
        __builtin_memcpy(z + j, &p.z, sizeof p.z);
    }
    for (; j < atoms.size(); ++j) {
        const PointR3 at = here(position(atoms[j]));
        x[j] = static_cast<float>(at.x), y[j] = static_cast<float>(at.y), z[j] = static_cast<float>(at.z);
    }
}
