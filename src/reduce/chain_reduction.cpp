#include "reduce/elimination.hpp"
#include "reduce/reduction.hpp"

#include <iostream>

namespace loopwise {

std::size_t reduce(Chain& chain, bool closed) {
    const bool repeated = has_repeated_end(chain);
    Ring ring = without_repeated_end(chain, closed || repeated);
    StackWorkspace workspace;
    eliminate({&ring, 1}, workspace.get());
    return finish(chain, ring, repeated);
}

} // namespace loopwise

using namespace loopwise;

int ChainReduce(std::vector<ChainAtom>& chain, bool closed) {
    std::cout << "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a nie zawsze "
                 "ChainsReduce?, EPS="
              << EPS << std::endl;
    return static_cast<int>(reduce(chain, closed));
}
