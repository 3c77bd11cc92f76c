#include "reduce/elimination.hpp"

#include <iostream>

int ChainReduce(std::vector<ChainAtom>& chain, bool closed) {
    std::cout << "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a nie zawsze "
                 "ChainsReduce?, EPS="
              << EPS << std::endl;
    const bool repeated = loopwise::has_repeated_end(chain);
    loopwise::Component component = loopwise::without_repeated_end(chain, closed || repeated);
    loopwise::eliminate({&component, 1});
    return static_cast<int>(loopwise::finish(chain, component, repeated));
}
