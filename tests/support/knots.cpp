#include "support/knots.hpp"

#include <algorithm>
#include <array>

namespace knots {
namespace {

constexpr std::uint64_t prime = 2147483647;

/// Seen from a direction that no chain of the tests is aligned with.
PointR3 seen(const ChainAtom& a) {
    return {0.8017 * a.x - 0.5883 * a.y + 0.1049 * a.z, 0.3931 * a.x + 0.6465 * a.y + 0.6538 * a.z,
            -0.4525 * a.x - 0.4857 * a.y + 0.7493 * a.z};
}

/// Where an edge of one polygon passes over or under an edge of another, in the picture.
struct Crossing {
    double along, along_other; ///< how far along the two polygons: edge and part of the edge
    bool over;
    int sign;
};

std::vector<Crossing> crossings(const Chain& one, const Chain& other) {
    std::vector<Crossing> result;
    for (std::size_t i = 0; i < one.size(); ++i)
        for (std::size_t j = 0; j < other.size(); ++j) {
            const PointR3 a = seen(one[i]), b = seen(one[(i + 1) % one.size()]), c = seen(other[j]),
                          d = seen(other[(j + 1) % other.size()]);
            const double ux = b.x - a.x, uy = b.y - a.y, vx = d.x - c.x, vy = d.y - c.y;
            const double cross = ux * vy - uy * vx;
            const double s = ((c.x - a.x) * vy - (c.y - a.y) * vx) / cross;
            const double t = ((c.x - a.x) * uy - (c.y - a.y) * ux) / cross;
            if (!(s > 0 && s < 1 && t > 0 && t < 1)) continue;
            const bool over = a.z + s * (b.z - a.z) > c.z + t * (d.z - c.z);
            result.push_back(
                {static_cast<double>(i) + s, static_cast<double>(j) + t, over, (cross > 0) == over ? 1 : -1});
        }
    return result;
}

std::uint64_t power(std::uint64_t base, std::uint64_t exponent) {
    std::uint64_t result = 1;
    for (; exponent > 0; exponent /= 2, base = base * base % prime)
        if (exponent % 2 == 1) result = result * base % prime;
    return result;
}

/// By elimination of columns, smallest rows first, as nearly all entries are 0.
std::uint64_t determinant(std::vector<std::vector<std::uint64_t>> rows) {
    std::uint64_t product = 1;
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const auto pivot = std::find_if(rows.begin() + static_cast<std::ptrdiff_t>(k), rows.end(),
                                        [k](const auto& row) { return row[k] != 0; });
        if (pivot == rows.end()) return 0;
        std::swap(*pivot, rows[k]);
        product = product * rows[k][k] % prime;
        const std::uint64_t inverse = power(rows[k][k], prime - 2);
        for (std::size_t i = k + 1; i < rows.size(); ++i) {
            if (rows[i][k] == 0) continue;
            const std::uint64_t factor = prime - rows[i][k] * inverse % prime;
            for (std::size_t j = k; j < rows.size(); ++j)
                rows[i][j] = (rows[i][j] + factor * rows[k][j]) % prime;
        }
    }
    return std::min(product, prime - product);
}

} // namespace

/// The arcs between passages under something are the unknowns; every crossing says that twice the arc
/// above equals the sum of the two below. One row and one column are too many.
std::uint64_t determinant(const Chain& ring) {
    std::vector<Crossing> under;
    for (const Crossing& c : crossings(ring, ring))
        if (!c.over) under.push_back(c);
    std::sort(under.begin(), under.end(), [](const auto& a, const auto& b) { return a.along < b.along; });
    const std::size_t n = under.size();
    if (n < 3) return 1;
    std::vector<std::vector<std::uint64_t>> rows(n - 1, std::vector<std::uint64_t>(n - 1, 0));
    const auto add = [&](std::size_t row, std::size_t arc, std::uint64_t number) {
        if (row < n - 1 && arc < n - 1) rows[row][arc] = (rows[row][arc] + number) % prime;
    };
    for (std::size_t i = 0; i < n; ++i) {
        const auto above = std::upper_bound(under.begin(), under.end(), under[i].along_other,
                                            [](double at, const Crossing& c) { return at < c.along; });
        add(i, static_cast<std::size_t>(above - under.begin()) % n, 2);
        add(i, i, prime - 1);
        add(i, (i + 1) % n, prime - 1);
    }
    return determinant(std::move(rows));
}

int linking_number(const Chain& one, const Chain& other) {
    int signs = 0;
    for (const Crossing& c : crossings(one, other)) signs += c.sign;
    return signs / 2;
}

} // namespace knots
