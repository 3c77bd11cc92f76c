#include "src/model/identifiers.hpp"

#include <algorithm>

int maxIdChain(std::vector<ChainAtom>& chain) {
    int largest = -1;
    for (const ChainAtom& atom : chain) largest = std::max(largest, static_cast<int>(atom.id));
    return largest;
}

int maxIdComps(std::vector<std::vector<ChainAtom>>& structure) {
    int largest = -1;
    for (Chain& component : structure) largest = std::max(largest, maxIdChain(component));
    return largest;
}

bool IsEmptyStructure(std::vector<std::vector<ChainAtom>>& structure) {
    return structure.empty() ||
           std::any_of(structure.begin(), structure.end(), [](const Chain& chain) { return chain.empty(); });
}
