// Centre, radius and diameter. A distance only ever replaces a smaller one, so a not-a-number leaves the
// value as it was.
#include "src/model/diameter.hpp"
#include "src/model/points.hpp"

#include <cmath>

using namespace loopwise::model;

PointR3 CentreOfChain(const std::vector<ChainAtom>& chain) {
    PointR3 sum{0.0, 0.0, 0.0};
    if (chain.empty()) return sum;
    for (const ChainAtom& atom : chain) {
        sum.x += atom.x;
        sum.y += atom.y;
        sum.z += atom.z;
    }
    const auto count = static_cast<double>(chain.size());
    return {sum.x / count, sum.y / count, sum.z / count};
}

double RadiusOfChain(const std::vector<ChainAtom>& chain) {
    const PointR3 centre = CentreOfChain(chain);
    double squared = 0.0;
    for (const ChainAtom& atom : chain) {
        const double candidate = squared_distance(position(atom), centre);
        if (candidate > squared) squared = candidate;
    }
    return std::sqrt(squared);
}

double DiameterOfChain(const std::vector<ChainAtom>& chain) { return Diameter({&chain, 1}).value(); }

double DiameterOfStructure(const std::vector<std::vector<ChainAtom>>& structure) { return Diameter(structure).value(); }
