#include "support/chains.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <sstream>

namespace chains {
namespace {

constexpr double bond = 3.8;
constexpr double inf = std::numeric_limits<double>::infinity();

PointR3 step(const ChainAtom& from, PointR3 direction, double length) {
    return {from.x + length * direction.x, from.y + length * direction.y, from.z + length * direction.z};
}

/// Grows bead by bead, away from all others and inside the sphere; goes back some beads where stuck.
Chain grow_compact(int length, Random& random) {
    const auto wanted = static_cast<std::size_t>(length);
    const double radius = bond * std::cbrt(static_cast<double>(length)) + bond;
    Chain chain{{0, 0, 0, 1}};
    const auto fits = [&](PointR3 p) {
        if (Dist(p, {0, 0, 0}) > radius) return false;
        return std::none_of(chain.begin(), chain.end() - 1, [p](const ChainAtom& a) {
            return std::fabs(a.x - p.x) < bond && Dist({a.x, a.y, a.z}, p) < bond;
        });
    };
    while (chain.size() < wanted) {
        bool grown = false;
        for (int attempt = 0; attempt < 40 && !grown; ++attempt) {
            const PointR3 p = step(chain.back(), random.direction(), bond);
            grown = fits(p);
            if (grown) chain.push_back({p.x, p.y, p.z, static_cast<int>(chain.size()) + 1});
        }
        if (!grown) chain.resize(chain.size() - std::min<std::size_t>(chain.size() - 1, 12));
    }
    return chain;
}

PointR3 point(Kind kind, const ChainAtom& last, Random& random) {
    if (kind == Kind::lattice) {
        PointR3 p{last.x, last.y, last.z};
        double* const axes[] = {&p.x, &p.y, &p.z};
        *axes[random.below(3)] += random.below(2) == 0 ? 1 : -1;
        return p;
    }
    if (kind == Kind::planar) return {random.between(-9, 9), random.between(-9, 9), 0};
    if (kind == Kind::straight) return step({1, 2, 3, 0}, {0.3, 0.4, 0.5}, random.between(-9, 9));
    if (kind == Kind::coincident) return {1.0 * random.below(2), 1.0 * random.below(2), 1.0 * random.below(3)};
    if (kind == Kind::any_bits) return std::bit_cast<PointR3>(std::array{random.bits(), random.bits(), random.bits()});
    const double half = kind == Kind::near           ? 4 * EPS
                        : kind == Kind::huge         ? 1e150
                        : kind == Kind::tiny         ? 1e-160
                        : kind == Kind::mixed_scales ? std::pow(10.0, 6 * random.below(5) - 12)
                                                     : 9;
    PointR3 p{random.between(-half, half), random.between(-half, half), random.between(-half, half)};
    constexpr double odd[] = {inf, -inf, std::numeric_limits<double>::quiet_NaN(), 1e308};
    if (kind == Kind::not_finite && random.below(6) == 0) p.y = odd[random.below(4)];
    return p;
}

} // namespace

PointR3 Random::direction() {
    while (true) {
        const PointR3 p{between(-1, 1), between(-1, 1), between(-1, 1)};
        const double size = std::sqrt(p.x * p.x + p.y * p.y + p.z * p.z);
        if (size > 0.1 && size < 1) return {p.x / size, p.y / size, p.z / size};
    }
}

Chain make(Kind kind, int length, Random& random) {
    if (kind == Kind::compact) return grow_compact(length, random);
    Chain chain;
    for (int i = 0; i < length; ++i) {
        const PointR3 p = point(kind, chain.empty() ? ChainAtom{} : chain.back(), random);
        chain.push_back({p.x, p.y, p.z, i + 1});
    }
    return chain;
}

Chain sum(Chain a, Chain b) {
    const auto left_of = [](const ChainAtom& p, const ChainAtom& q) { return p.x < q.x; };
    std::rotate(a.begin(), std::max_element(a.begin(), a.end(), left_of), a.end());
    std::rotate(b.begin(), std::min_element(b.begin(), b.end(), left_of), b.end());
    const double shift = a.front().x - b.front().x + 2;
    for (ChainAtom& p : b) p.x += shift;
    a.insert(a.end(), b.begin(), b.end());
    for (std::size_t i = 0; i < a.size(); ++i) a[i].id = static_cast<int>(i) + 1;
    return a;
}

Structure make_structure(Random& random) {
    const Kind kind = all_kinds[random.below(std::size(all_kinds))];
    const int longest = random.below(9) == 0 ? 110 : 24;
    const bool apart = random.below(3) == 0, any_ids = random.below(3) == 0;
    Structure structure(static_cast<std::size_t>(random.below(7)));
    for (Chain& chain : structure) {
        chain = make(kind, random.below(random.below(4) == 0 ? 4 : longest), random);
        if (random.below(20) == 0) chain = {{1, 2, 3, 4}, {1, 2, 3, 4}};
        for (ChainAtom& atom : chain) {
            if (apart) atom.x += 100.0 * static_cast<double>(&chain - structure.data());
            if (any_ids) atom.id = random.below(40) == 0 ? 2147483647 : random.below(9) - 5;
        }
        if (random.below(5) == 0) chain = with_repeated_end(chain);
    }
    return structure;
}

Chain with_repeated_end(Chain chain) {
    if (!chain.empty()) chain.push_back(ChainAtom(chain.front()));
    return chain;
}

Chain on_sphere(int length, Random& random) {
    Chain chain;
    for (int i = 0; i < length; ++i) {
        const PointR3 p = random.direction();
        chain.push_back({50 * p.x, 50 * p.y, 50 * p.z, i + 1});
    }
    return chain;
}

bool same_bits(const Chain& a, const Chain& b) {
    const auto bits = [](double x) { return std::bit_cast<std::uint64_t>(std::isnan(x) ? NAN : x); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const ChainAtom& p, const ChainAtom& q) {
        return bits(p.x) == bits(q.x) && bits(p.y) == bits(q.y) && bits(p.z) == bits(q.z) && p.id == q.id;
    });
}

bool starts_with(const Chain& chain, const Chain& start) {
    if (chain.size() < start.size()) return false;
    return same_bits({chain.begin(), chain.begin() + static_cast<std::ptrdiff_t>(start.size())}, start);
}

std::string text(const Chain& chain) {
    std::ostringstream out;
    out << std::hexfloat;
    for (const ChainAtom& a : chain) out << "{" << a.x << ", " << a.y << ", " << a.z << ", " << a.id << "}, ";
    return out.str();
}

} // namespace chains
