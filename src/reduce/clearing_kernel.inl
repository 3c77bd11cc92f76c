// find_doubts_plain() for LANES segments at a time: the same operations in the same order, so that the
// answer is the same to the last bit. Included once per instruction set, with LOOPWISE_TARGET as the
// attribute that allows the instructions, GREATER(a, b) for the lanes where a > b as bits and FUSED(a, b, c)
// for a * b + c, rounded once where there is an instruction for it.

using Floats = float __attribute__((vector_size(4 * LANES)));
using Ints = std::int32_t __attribute__((vector_size(4 * LANES)));

LOOPWISE_TARGET inline Floats load(const float* from) {
    Floats v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}

LOOPWISE_TARGET inline Floats size(Floats v) {
    const Ints without_sign = Ints{} + 0x7FFFFFFF;
    return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) & without_sign);
}

/// The number with the sign of another, which is 1 or -1.
LOOPWISE_TARGET inline Floats signed_by(Floats v, Floats sign) {
    const Ints only_sign = Ints{} + std::numeric_limits<std::int32_t>::min();
    return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) ^ (reinterpret_cast<Ints>(sign) & only_sign));
}

LOOPWISE_TARGET inline Floats value(const Affine& f, Floats x, Floats y, Floats z) {
    return FUSED(x, Floats{} + f.x, FUSED(y, Floats{} + f.y, FUSED(z, Floats{} + f.z, Floats{} + f.constant)));
}

/// The bits of the segments from j on that are in doubt among those of `wanted`.
LOOPWISE_TARGET inline std::uint64_t doubts_among(std::uint64_t wanted, const Clearance& c, const float* x,
                                                  const float* y, const float* z) {
    const Floats x0 = load(x), y0 = load(y), z0 = load(z);
    const Floats x1 = load(x + 1), y1 = load(y + 1), z1 = load(z + 1);
    const Floats h0 = value(c.height, x0, y0, z0), h1 = value(c.height, x1, y1, z1);
    const Floats rise = h1 - h0;
    const Floats drop = size(rise);
    const std::uint64_t crosses_planes = GREATER(drop, Floats{} + c.parallel);
    const std::uint64_t off_plane = GREATER(size(h0 + h1), FUSED(drop, Floats{} + side_factor, Floats{} + c.side));
    wanted &= ~(crosses_planes & off_plane);
    if (wanted == 0) return 0;

    const Floats p0 = value(c.along_b, x0, y0, z0), p1 = value(c.along_b, x1, y1, z1);
    const Floats q0 = value(c.along_c, x0, y0, z0), q1 = value(c.along_c, x1, y1, z1);
    const Floats u = signed_by(FUSED(p0, h1, -(p1 * h0)), rise);
    const Floats v = signed_by(FUSED(q0, h1, -(q1 * h0)), rise);
    const Floats slack = beyond * drop;
    const std::uint64_t off_triangle = GREATER(-(slack + c.edge_u), u) | GREATER(-(slack + c.edge_v), v) |
                                       GREATER(u + v, drop + (slack + c.edge_w));
    return wanted & ~(crosses_planes & off_triangle);
}

LOOPWISE_TARGET std::size_t find_doubts(const Clearance& clearance, const Cloud& cloud, std::size_t block,
                                        std::size_t end, std::uint64_t& doubts) {
    constexpr std::uint64_t all_lanes = (std::uint64_t{1} << LANES) - 1;
    const Clearance c = clearance;
    for (; block < end; ++block) {
        const std::uint64_t segments = cloud.segments[block];
        std::uint64_t found = 0;
        for (std::size_t lane = 0; lane < block_size; lane += LANES) {
            const std::size_t j = block * block_size + lane;
            const std::uint64_t wanted = segments >> lane & all_lanes;
            if (wanted != 0) found |= doubts_among(wanted, c, cloud.x + j, cloud.y + j, cloud.z + j) << lane;
        }
        if (found != 0) {
            doubts = found;
            return block;
        }
    }
    return end;
}
