#include "src/model/cut.hpp"

#include <algorithm>
#include <iostream>

namespace loopwise::model {

bool cut(Chain& chain, int start, int end) {
    if (chain.empty()) return true;
    const auto ids = std::minmax(chain.front().id, chain.back().id);
    const auto outside_chain = [low = ids.first, high = ids.second](int bound) { return bound < low || bound > high; };
    const auto inside_range = [from = std::min(start, end), to = std::max(start, end)](const ChainAtom& atom) {
        return from <= atom.id && atom.id <= to;
    };

    const auto first = std::find_if(chain.begin(), chain.end(), inside_range);
    // Unordered identifiers can have an acceptable range that holds no atom; it would leave nothing.
    if (outside_chain(start) || outside_chain(end) || first == chain.end()) return false;
    chain.erase(std::find_if(chain.rbegin(), chain.rend(), inside_range).base(), chain.end());
    chain.erase(chain.begin(), first);
    return true;
}

} // namespace loopwise::model

using namespace loopwise::model;

int CutChain(std::vector<ChainAtom>& chain, int start, int end) {
    if (cut(chain, start, end)) return 0;
    std::cerr << "Error while preparing components: You want to erase atoms which don't exist.\n";
    std::clog << "One of components, chain[0].id: " << chain.front().id << ", chain.back().id: " << chain.back().id
              << "; Your start: " << start << ", end: " << end << "\n";
    std::clog << "We take whole sequence.\n";
    return 0;
}
