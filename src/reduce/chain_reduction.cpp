#include "reduce/elimination.hpp"

#include <iostream>

int ChainReduce(std::vector<ChainAtom>& chain, bool closed) {
    std::cout << "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a nie zawsze "
                 "ChainsReduce?, EPS="
              << EPS << std::endl;
    if (chain.empty()) return 0;

    const bool repeated_end = loopwise::has_repeated_end(chain);
    const ChainAtom repeated_atom = chain.back();
    if (repeated_end) chain.pop_back();

    loopwise::Component component{chain.data(), chain.size(), closed || repeated_end};
    loopwise::eliminate({&component, 1});
    chain.resize(component.count);

    // Into the room that pop_back left. A chain of one atom was its own repeat and gets it back.
    if (repeated_end) chain.push_back(chain.empty() ? repeated_atom : ChainAtom(chain.front()));
    return static_cast<int>(chain.size());
}
