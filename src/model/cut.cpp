// Cutting a chain to a range of identifiers.
#include "libloopwise.h"

#include <algorithm>
#include <iostream>

namespace {

void report_refusal(const Chain& chain, int start, int end) {
    std::cerr << "Error while preparing components: You want to erase atoms which don't exist.\n";
    std::clog << "One of components, chain[0].id: " << chain.front().id
              << ", chain.back().id: " << chain.back().id << "; Your start: " << start << ", end: " << end
              << "\n";
    std::clog << "We take whole sequence.\n";
}

} // namespace

int CutChain(std::vector<ChainAtom>& chain, int start, int end) {
    if (chain.empty()) return 0;
    const int low = std::min(chain.front().id, chain.back().id);
    const int high = std::max(chain.front().id, chain.back().id);
    const auto outside_chain = [&](int bound) { return bound < low || bound > high; };
    const auto inside_range = [from = std::min(start, end), to = std::max(start, end)](
                                  const ChainAtom& atom) { return from <= atom.id && atom.id <= to; };

    const auto first = std::find_if(chain.begin(), chain.end(), inside_range);
    // Unordered identifiers can have an acceptable range that holds no atom; it would leave nothing.
    if (outside_chain(start) || outside_chain(end) || first == chain.end()) {
        report_refusal(chain, start, end);
        return 0;
    }
    chain.erase(std::find_if(chain.rbegin(), chain.rend(), inside_range).base(), chain.end());
    chain.erase(chain.begin(), first);
    return 0;
}
