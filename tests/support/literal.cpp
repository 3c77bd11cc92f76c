#include "support/literal.hpp"

#include "closure/point_tables.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <set>
#include <sstream>

namespace literal {
namespace {

PointR3 at(const Chain& chain, int i) {
    const ChainAtom& atom = chain.at(static_cast<std::size_t>(i));
    return {atom.x, atom.y, atom.z};
}

bool blocks(const PointR3 triangle[3], const Chain& chain, int from, int to) {
    const PointR3 segment[] = {at(chain, from), at(chain, to)};
    return intersection(triangle, segment) != 0;
}

bool own_obstacle(const PointR3 triangle[3], const Chain& chain, bool closed, int i) {
    const int n = static_cast<int>(chain.size());
    if (i >= 2)
        for (int j = (i + 2) % n <= 1 ? (i + 3) % n : 0; j <= i - 2; ++j)
            if (blocks(triangle, chain, j, j + 1)) return true;
    for (int j = i + 3; j <= n - 2; ++j)
        if (blocks(triangle, chain, j, j + 1)) return true;
    return closed && 1 <= i && i <= n - 4 && blocks(triangle, chain, n - 1, 0);
}

bool foreign_obstacle(const PointR3 triangle[3], const Chain& chain, bool closed) {
    const int n = static_cast<int>(chain.size());
    for (int j = 0; j <= n - 2; ++j)
        if (blocks(triangle, chain, j, j + 1)) return true;
    return closed && n > 0 && blocks(triangle, chain, n - 1, 0);
}

bool remove_first_free(Structure& structure, const std::vector<bool>& closed) {
    for (std::size_t c = 0; c < structure.size(); ++c) {
        Chain& chain = structure[c];
        const int n = static_cast<int>(chain.size());
        for (int i = 0; n > 3 && i < (closed[c] ? n : n - 2); ++i) {
            const PointR3 triangle[] = {at(chain, i), at(chain, (i + 1) % n), at(chain, (i + 2) % n)};
            bool blocked = own_obstacle(triangle, chain, closed[c], i);
            for (std::size_t d = 0; d < structure.size() && !blocked; ++d)
                blocked = d != c && foreign_obstacle(triangle, structure[d], closed[d]);
            if (blocked) continue;
            chain.erase(chain.begin() + (i + 1) % n);
            return true;
        }
    }
    return false;
}

} // namespace

int intersection(const PointR3 triangle[3], const PointR3 segment[2]) {
    const auto [ox, oy, oz] = triangle[0];
    const PointR3 s = segment[0];
    double m[3][3] = {{s.x - segment[1].x, triangle[1].x - ox, triangle[2].x - ox},
                      {s.y - segment[1].y, triangle[1].y - oy, triangle[2].y - oy},
                      {s.z - segment[1].z, triangle[1].z - oz, triangle[2].z - oz}};
    const double right[] = {s.x - ox, s.y - oy, s.z - oz};
    const double d = Determinant(m[0], m[1], m[2]);
    if (d == 0.0) return 1;
    double solution[3];
    for (int i = 0; i < 3; ++i) {
        double entry[3];
        for (int j = 0; j < 3; ++j) {
            const int r1 = (j + 1) % 3, r2 = (j + 2) % 3, c1 = (i + 1) % 3, c2 = (i + 2) % 3;
            entry[j] = (m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1]) / d;
        }
        solution[i] = entry[0] * right[0] + entry[1] * right[1] + entry[2] * right[2];
    }
    const double t = solution[0], u = solution[1], v = solution[2], w = u + v;
    const auto Gt = CompareGt, Geq = CompareGeq;
    const auto Eq = CompareEq;
    if (Gt(t, 0) && Gt(1, t) && Gt(u, 0) && Gt(1, u) && Gt(v, 0) && Gt(1, v) && Gt(1, w)) return 1;
    if (Eq(u, 0) && Geq(v, 0) && Geq(1, v) && Geq(t, 0) && Geq(1, t)) return 2;
    if (Eq(v, 0) && Geq(u, 0) && Geq(1, u) && Geq(t, 0) && Geq(1, t)) return 2;
    if (Eq(w, 1) && Geq(u, 0) && Geq(1, u) && Geq(v, 0) && Geq(1, v) && Geq(t, 0) && Geq(1, t)) return 2;
    if (Eq(t, 0) && Geq(u, 0) && Geq(v, 0) && Geq(1, w)) return 2;
    if (Eq(t, 1) && Geq(u, 0) && Geq(v, 0) && Geq(1, w)) return 2;
    return 0;
}

bool repeats_end(const Chain& chain) {
    if (chain.empty() || chain.front().id != chain.back().id) return false;
    return CompareEq(0, Dist(at(chain, 0), at(chain, static_cast<int>(chain.size()) - 1)));
}

int reduce(Structure& structure, bool closed_by_caller) {
    std::vector<bool> closed(structure.size(), closed_by_caller), repeated(structure.size(), false);
    const Structure before = structure;
    for (std::size_t k = 0; k < structure.size(); ++k) {
        repeated[k] = repeats_end(structure[k]);
        if (repeated[k]) structure[k].pop_back();
    }
    if (std::count(repeated.begin(), repeated.end(), true) > 0) closed = repeated;

    while (remove_first_free(structure, closed)) {}

    int total = 0;
    for (std::size_t k = 0; k < structure.size(); ++k) {
        if (repeated[k]) structure[k].push_back(structure[k].empty() ? before[k][0] : structure[k][0]);
        total += static_cast<int>(structure[k].size());
    }
    return total;
}

int reduce(Chain& chain, bool closed) {
    Structure structure{chain};
    const int left = reduce(structure, closed);
    chain = structure[0];
    return left;
}

PointR3 centre(const Chain& chain) {
    double x = 0, y = 0, z = 0;
    for (const ChainAtom& a : chain) x += a.x, y += a.y, z += a.z;
    const double n = chain.empty() ? 1 : static_cast<double>(chain.size());
    return {x / n, y / n, z / n};
}

double radius(const Chain& chain) {
    double largest = 0;
    for (const ChainAtom& a : chain) {
        const double d = Dist({a.x, a.y, a.z}, centre(chain));
        if (d > largest) largest = d;
    }
    return largest;
}

double diameter(const Structure& structure) {
    Chain all;
    for (const Chain& chain : structure) all.insert(all.end(), chain.begin(), chain.end());
    double largest = 0;
    for (std::size_t i = 0; i < all.size(); ++i)
        for (std::size_t j = i + 1; j < all.size(); ++j) {
            const double d = Dist({all[i].x, all[i].y, all[i].z}, {all[j].x, all[j].y, all[j].z});
            if (d > largest) largest = d;
        }
    return largest;
}

int close(Structure& structure, Closure how, bool alone, double scale) {
    const auto hollow = [](const Chain& chain) { return chain.empty(); };
    if (structure.empty() || std::any_of(structure.begin(), structure.end(), hollow)) return 0;
    constexpr std::size_t most[] = {60, 400, 200, std::numeric_limits<std::size_t>::max()};
    if (structure.size() > most[static_cast<std::size_t>(how)]) return -1;

    std::set<int> used;
    const auto draw = [&](int rows, int redrawn) {
        int row = std::rand() % rows;
        while (!used.insert(row).second) row = std::rand() % redrawn;
        return loopwise::uniform[static_cast<std::size_t>(row)];
    };
    const double far = (alone ? radius(structure[0]) : diameter(structure)) * scale;
    for (Chain& chain : structure) {
        const ChainAtom first = chain.front(), last = chain.back();
        const PointR3 c = centre(chain);
        const auto add = [&](PointR3 from, PointR3 u, double distance) {
            const double length = std::sqrt(u.x * u.x + u.y * u.y + u.z * u.z);
            chain.push_back({from.x + u.x * distance / length, from.y + u.y * distance / length,
                             from.z + u.z * distance / length,
                             static_cast<int>(static_cast<unsigned>(chain.back().id) + 1)});
        };
        const auto add_arc = [&](PointR3 from, PointR3 to) {
            int largest = alone ? first.id : -1;
            for (const Chain& component : structure)
                for (const ChainAtom& a : component) largest = std::max(largest, a.id);
            const Chain arc = GivePointsOnTheCircle(from, to, c, far, largest);
            chain.insert(chain.end(), arc.begin(), arc.end());
            return !arc.empty();
        };
        if (how == Closure::one_point) add(c, draw(alone ? 400 : 60, 60), far);
        if (how == Closure::direction) {
            const PointR3 u = draw(400, 400);
            const double shift = 1.02 * diameter(structure); // of what the earlier components got, too
            for (const ChainAtom& end : {last, first}) add({end.x, end.y, end.z}, u, shift);
        }
        if (how == Closure::two_points) {
            const PointR3 u = draw(400, 400), v = draw(400, alone ? 60 : 400);
            if (!add_arc({c.x + u.x, c.y + u.y, c.z + u.z}, {c.x + v.x, c.y + v.y, c.z + v.z})) return -1;
        }
        if (how == Closure::outside)
            if (chain.size() < 3 || !add_arc({last.x, last.y, last.z}, {first.x, first.y, first.z}))
                return -1;
    }
    return 0;
}

Chain read(const std::string& text, bool& error) {
    ChainAtom current{1.412341234, 3.432312, 0.65436, 0};
    Chain chain;
    error = false;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const ChainAtom previous = current;
        std::istringstream fields(line);
        fields >> current.id >> current.x >> current.y >> current.z;
        error = Dist({current.x, current.y, current.z}, {previous.x, previous.y, previous.z}) == 0.0;
        if (error) return {};
        chain.push_back(current);
    }
    return chain;
}

std::string write(const Chain& chain, bool plain) {
    const auto text = [](auto number) {
        std::ostringstream stream;
        stream << number;
        return stream.str();
    };
    std::string all;
    for (const ChainAtom& a : chain) {
        const std::string id = text(a.id), x = text(a.x), y = text(a.y), z = text(a.z);
        char line[100];
        std::snprintf(line, sizeof line, "ATOM  %5s  CA  %s %s%4s    %8s%8s%8s  1.00  1.00 C\n", id.c_str(),
                      "XXX", "A", id.c_str(), x.substr(0, 7).c_str(), y.substr(0, 7).c_str(),
                      z.substr(0, 7).c_str());
        all += plain ? id + ' ' + x + ' ' + y + ' ' + z + '\n' : std::string(line);
    }
    return all;
}

} // namespace literal
