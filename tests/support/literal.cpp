#include "support/literal.hpp"

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace literal {
namespace {

PointR3 at(const Chain& chain, int i) {
    const ChainAtom& atom = chain.at(static_cast<std::size_t>(i));
    return {atom.x, atom.y, atom.z};
}

/// Whether a segment of any component meets the triangle that begins at a place, without sharing an atom with it.
bool is_blocked(const Structure& structure, const std::vector<bool>& closed, std::size_t component, int place) {
    const int own = static_cast<int>(structure[component].size());
    const int corners[] = {place, (place + 1) % own, (place + 2) % own};
    const PointR3 triangle[] = {at(structure[component], corners[0]), at(structure[component], corners[1]),
                                at(structure[component], corners[2])};
    const auto is_corner = [&](int i) { return std::find(corners, corners + 3, i) != corners + 3; };
    for (std::size_t c = 0; c < structure.size(); ++c) {
        const int n = static_cast<int>(structure[c].size());
        for (int j = 0; j < (closed[c] ? n : n - 1); ++j) {
            if (c == component && (is_corner(j) || is_corner((j + 1) % n))) continue;
            const PointR3 segment[] = {at(structure[c], j), at(structure[c], (j + 1) % n)};
            if (literal::intersection(triangle, segment) != 0) return true;
        }
    }
    return false;
}

bool remove_first_free(Structure& structure, const std::vector<bool>& closed) {
    for (std::size_t c = 0; c < structure.size(); ++c) {
        Chain& chain = structure[c];
        const int n = static_cast<int>(chain.size());
        for (int i = 0; n > 3 && i < (closed[c] ? n : n - 2); ++i) {
            if (is_blocked(structure, closed, c, i)) continue;
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
        std::snprintf(line, sizeof line, "ATOM  %5s  CA  %s %s%4s    %8s%8s%8s  1.00  1.00 C\n", id.c_str(), "XXX", "A",
                      id.c_str(), x.substr(0, 7).c_str(), y.substr(0, 7).c_str(), z.substr(0, 7).c_str());
        all += plain ? id + ' ' + x + ' ' + y + ' ' + z + '\n' : std::string(line);
    }
    return all;
}

} // namespace literal
