#include "closure/closing.hpp"

#include "model/comparisons.hpp"
#include "model/identifiers.hpp"
#include "model/points.hpp"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace loopwise {
namespace {

bool warn_if(bool empty) {
    if (empty) std::clog << "[WARNING] You are trying to CLOSE an EMPTY chain.\n";
    return empty;
}

} // namespace

bool refuse_empty(const Chain& chain) { return warn_if(chain.empty()); }

bool refuse_empty(Structure& structure) { return warn_if(IsEmptyStructure(structure)); }

int UnusedRows::draw(int rows) {
    int row = std::rand() % rows;
    while (!used_.insert(row).second) row = std::rand() % rows;
    return row;
}

std::optional<PointR3> at_length(PointR3 direction, double wanted) {
    const double actual = length(direction);
    if (equal(actual, 0.0)) return std::nullopt;
    return PointR3{direction.x * wanted / actual, direction.y * wanted / actual,
                   direction.z * wanted / actual};
}

ChainAtom atom_after(const ChainAtom& last, PointR3 point, std::uint32_t steps) {
    return {point.x, point.y, point.z, id_after(last.id, steps)};
}

int largest_id(const Chain& chain) {
    return std::max_element(chain.begin(), chain.end(),
                            [](const ChainAtom& a, const ChainAtom& b) { return a.id < b.id; })
        ->id;
}

int append_arc(Chain& chain, const Chain& arc) {
    if (arc.empty()) return not_closed;
    chain.insert(chain.end(), arc.begin(), arc.end());
    return closed;
}

} // namespace loopwise
