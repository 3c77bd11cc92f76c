#include "reduce/elimination.hpp"

#include <iostream>

int ChainReduce(std::vector<ChainAtom>& chain, bool closed) {
    std::cout << "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a nie zawsze "
                 "ChainsReduce?, EPS="
              << EPS << std::endl;
    const bool repeated = loopwise::has_repeated_end(chain);
    loopwise::Ring ring = loopwise::without_repeated_end(chain, closed || repeated);
    loopwise::StackWorkspace workspace;
    loopwise::eliminate({&ring, 1}, workspace.get());
    return static_cast<int>(loopwise::finish(chain, ring, repeated));
}
