// Source of the kernels for any instruction set. A file that includes it first enables the instructions of
// one set for all functions that follow. So this header must include nothing that the file has not included
// before.
#pragma once

#include "src/reduce/kernels.hpp"

namespace loopwise::reduce {

/// Vector types of the compiler, whose operators work lane by lane. An instruction set adds:
///
///     multiply_add(a, b, c)    a * b + c, rounded once where there is an instruction for it
///     greater(a, b)            the lanes where a > b, as bits
///     following(these, next)   the lanes after the first of these, and the first of the next
///     keep(a)                  makes the compiler keep a in a register
template <std::size_t count> struct Lanes {
    static constexpr std::size_t lanes = count;
    using Floats [[gnu::vector_size(4 * count)]] = float;
    using Ints [[gnu::vector_size(4 * count)]] = std::int32_t;

    /// Chosen lanes of a and b; those of b are numbered after those of a. g++ 11 has no builtin for it.
    template <std::size_t... index> static auto shuffled(Floats a, Floats b) {
#if __has_builtin(__builtin_shufflevector)
        return __builtin_shufflevector(a, b, index...);
#else
        float both[2 * count];
        __builtin_memcpy(both, &a, sizeof a);
        __builtin_memcpy(both + count, &b, sizeof b);
        const float chosen[] = {both[index]...};
        using Chosen [[gnu::vector_size(4 * sizeof...(index))]] = float;
        Chosen v;
        __builtin_memcpy(&v, chosen, sizeof v);
        return v;
#endif
    }

    /// The compiler vectorises this loop.
    static void put_positions(const Frame& frame, std::span<const ChainAtom> atoms, float* __restrict x,
                              float* __restrict y, float* __restrict z) {
        const auto [cx, cy, cz] = frame.centre;
        const double scale = frame.scale;
        for (std::size_t j = 0; j < atoms.size(); ++j) {
            x[j] = static_cast<float>((atoms[j].x - cx) * scale);
            y[j] = static_cast<float>((atoms[j].y - cy) * scale);
            z[j] = static_cast<float>((atoms[j].z - cz) * scale);
        }
    }
};

template <class Set> class FilterKernels : Set {
  public:
    static constexpr Kernels table() {
        return {find_candidates, find_in_groups<segments_of, Filter, SegmentGroup>,
                find_in_groups<boxes_of, BoxFilter, BoxGroup>,
                find_in_groups<directions_of, ParallelQuery, DirectionGroup>, Set::put_positions};
    }

  private:
    using Set::lanes, Set::multiply_add, Set::greater, Set::following;
    using typename Set::Floats, typename Set::Ints;
    static constexpr std::uint32_t all_lanes = (2U << (lanes - 1)) - 1;

    static Floats load(const float* from) {
        Floats v;
        __builtin_memcpy(&v, from, sizeof v);
        return v;
    }
    /// A number in all lanes. Adding 0 instead would turn -0 into 0.
    static Floats all(float x) { return x - Floats{}; }
    static Floats size(Floats v) { return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) & (Ints{} + 0x7FFFFFFF)); }
    /// Flips the sign in lanes where another number is negative.
    static Floats signed_by(Floats v, Floats sign) {
        const Ints only_sign = Ints{} + std::numeric_limits<std::int32_t>::min();
        return reinterpret_cast<Floats>(reinterpret_cast<Ints>(v) ^ (reinterpret_cast<Ints>(sign) & only_sign));
    }

    struct Points {
        Floats x, y, z;
    };
    /// Without keep(), GCC reads the positions again for each function of them, mostly across two cache
    /// lines.
    static Points points(const Positions3& at, std::size_t j) {
        Floats x = load(at.x + j), y = load(at.y + j), z = load(at.z + j);
        Set::keep(x), Set::keep(y), Set::keep(z);
        return {x, y, z};
    }
    static Floats value(const Affine& f, const Points& p) {
        const Floats along_z = multiply_add(p.z, all(f.z), all(f.constant));
        return multiply_add(p.x, all(f.x), multiply_add(p.y, all(f.y), along_z));
    }

    /// The lanes whose determinants are not zero and that are out of reach by their heights or the slab along
    /// the first edge.
    static std::uint32_t out_of_slab(const Filter& f, Floats h0, Floats h1, Floats q0, Floats q1) {
        const Floats drop = size(h1 - h0);
        const Floats side = multiply_add(drop, all(side_factor), all(f.side));
        const Floats slab = multiply_add(size(q1 - q0), all(side_factor), all(f.slab_v));
        return greater(drop, all(f.parallel)) &
               (greater(size(h0 + h1), side) | greater(size((q0 + q1) - f.squared), slab));
    }

    /// The lanes that are not out of reach by the coordinates u, v and u + v.
    static std::uint32_t within_edges(const Filter& f, const Points& start, const Points& end, Floats h0, Floats h1,
                                      Floats q0, Floats q1) {
        const Floats rise = h1 - h0, drop = size(rise);
        const Floats p0 = value(f.along_b, start), p1 = value(f.along_b, end);
        const Floats u = signed_by(multiply_add(p0, h1, -(p1 * h0)), rise);
        const Floats v = signed_by(multiply_add(q0, h1, -(q1 * h0)), rise);
        const std::uint32_t parallel = ~greater(drop, all(f.parallel));
        return parallel | ~(greater(-multiply_add(drop, all(f.slack), all(f.edge_u)), u) |
                            greater(-multiply_add(drop, all(f.slack), all(f.edge_v)), v) |
                            greater(u + v, multiply_add(drop, all(f.whole), all(f.edge_w))));
    }

    /// Reads every bead once: the other ends of the segments are the following lanes.
    static Candidates find_candidates(const Filter& filter, const Positions3& positions, std::size_t begin,
                                      std::size_t end) {
        if (begin >= end) return {end, 0};
        const Filter& f = filter;
        const Positions3 at = positions;
        const Points first = points(at, begin);
        Floats h0 = value(f.height, first), q0 = value(f.along_c, first);
#if !defined(__clang__) // which warns of loops that it does not unroll
#pragma GCC unroll 2
#endif
        for (std::size_t j = begin; j < end; j += lanes) {
            const Points next = points(at, j + lanes);
            const Floats h_next = value(f.height, next), q_next = value(f.along_c, next);
            const Floats h1 = following(h0, h_next), q1 = following(q0, q_next);
            std::uint32_t found = ~out_of_slab(f, h0, h1, q0, q1) & all_lanes;
            if (__builtin_expect(found != 0, 0)) {
                if (end - j < lanes) found &= (1U << (end - j)) - 1;
                if (found != 0) found &= within_edges(f, points(at, j), points(at, j + 1), h0, h1, q0, q1);
                if (found != 0) return {j, found};
            }
            h0 = h_next, q0 = q_next;
        }
        return {end, 0};
    }

    /// `lanes_of` returns which lanes of a group, from a given one on, are candidates.
    template <auto lanes_of, class What, class Group>
    static Candidates find_in_groups(const What& what, const Group* groups, std::size_t begin, std::size_t end) {
        for (; begin < end; ++begin) {
            std::uint32_t found = 0;
            for (std::size_t j = 0; j < group_size; j += lanes) found |= lanes_of(what, groups[begin], j) << j;
            if (found != 0) return {begin, found};
        }
        return {end, 0};
    }

    static std::uint32_t segments_of(const Filter& f, const SegmentGroup& g, std::size_t j) {
        const Points start = points({g.x0.data(), g.y0.data(), g.z0.data()}, j);
        const Points end = points({g.x1.data(), g.y1.data(), g.z1.data()}, j);
        const Floats h0 = value(f.height, start), h1 = value(f.height, end);
        const Floats q0 = value(f.along_c, start), q1 = value(f.along_c, end);
        const std::uint32_t found = ~out_of_slab(f, h0, h1, q0, q1) & all_lanes;
        return found == 0 ? 0 : found & within_edges(f, start, end, h0, h1, q0, q1);
    }

    /// Twice the value in the middle of a box.
    static Floats middle(const Affine& f, const BoxGroup& box, std::size_t j) {
        const Floats along_z = multiply_add(load(&box.z[j]), all(f.z), all(f.constant + f.constant));
        return multiply_add(load(&box.x[j]), all(f.x), multiply_add(load(&box.y[j]), all(f.y), along_z));
    }
    /// The difference of the values at the corners of a box, with the margin of the filter.
    static Floats reach(const Affine& f, float margin, const BoxGroup& box, std::size_t j) {
        const Floats along_z = load(&box.dz[j]) * size(all(f.z));
        const Floats along_yz = multiply_add(load(&box.dy[j]), size(all(f.y)), along_z);
        const Floats spread = multiply_add(load(&box.dx[j]), size(all(f.x)), along_yz);
        return multiply_add(spread, all(side_factor), all(margin));
    }
    static std::uint32_t apart(const BoxFilter& f, std::size_t axis, const float* sum, const float* difference) {
        return greater(size(load(sum) - all(f.sum[axis])),
                       multiply_add(load(difference), all(side_factor), all(f.room[axis])));
    }

    /// As for segments: no sum of two heights in a box is nearer to zero, and no difference larger, than the
    /// box's.
    static std::uint32_t boxes_of(const BoxFilter& f, const BoxGroup& box, std::size_t j) {
        const std::uint32_t close = ~(apart(f, 0, &box.x[j], &box.dx[j]) | apart(f, 1, &box.y[j], &box.dy[j]) |
                                      apart(f, 2, &box.z[j], &box.dz[j])) &
                                    all_lanes;
        if (close == 0) return 0;
        const Floats h = middle(f.height, box, j), p = middle(f.along_b, box, j), q = middle(f.along_c, box, j);
        return ~(greater(size(h), reach(f.height, f.side, box, j)) |
                 greater(size(q - f.squared), reach(f.along_c, f.slab_v, box, j)) |
                 greater(size(p - f.squared), reach(f.along_b, f.slab_u, box, j)) |
                 greater((p + q) - f.squared, reach(f.along_both, f.slab_w, box, j))) &
               close;
    }

    static std::uint32_t directions_of(const ParallelQuery& query, const DirectionGroup& d, std::size_t j) {
        const Floats along_w = multiply_add(load(&d.w[j]), all(query.w), all(query.one));
        const Floats along = multiply_add(load(&d.v[j]), all(query.v), along_w);
        return ~greater(size(along), all(query.most)) & all_lanes;
    }
};

} // namespace loopwise::reduce
