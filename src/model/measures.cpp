// Centre, radius and diameter. A distance only ever replaces a smaller one, so a not-a-number
// leaves the value as it was.
#include "model/points.hpp"

namespace {

void widen(double& largest, double candidate) {
    if (candidate > largest) largest = candidate;
}

} // namespace

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
    double radius = 0.0;
    for (const ChainAtom& atom : chain) widen(radius, loopwise::distance(loopwise::position(atom), centre));
    return radius;
}

double DiameterOfChain(const std::vector<ChainAtom>& chain) {
    double diameter = 0.0;
    for (std::size_t i = 0; i < chain.size(); ++i)
        for (std::size_t j = i + 1; j < chain.size(); ++j)
            widen(diameter, loopwise::distance(loopwise::position(chain[i]), loopwise::position(chain[j])));
    return diameter;
}

double DiameterOfStructure(const std::vector<std::vector<ChainAtom>>& structure) {
    double diameter = 0.0;
    for (const Chain& component : structure) widen(diameter, DiameterOfChain(component));
    for (std::size_t a = 0; a < structure.size(); ++a)
        for (std::size_t b = a + 1; b < structure.size(); ++b)
            for (const ChainAtom& first : structure[a])
                for (const ChainAtom& second : structure[b])
                    widen(diameter,
                          loopwise::distance(loopwise::position(first), loopwise::position(second)));
    return diameter;
}
