#include <libloopwise.h>

#include <iostream>

int main() {
    char file[] = "examples/data/trefoil.txt";
    bool error = false;
    Chain chain = ChainRead(file, error);
    std::cout << chain.size() << " beads, " << CheckDistancesBetweenAtoms(chain) << '\n';

    CloseChain_1direction_NoRandom(chain, 0); // both ends out in direction 0 of 400
    const int left = ChainReduce(chain, true);
    std::cout << left << " beads hold the loop's entanglement:\n" << ChainWrite_toString(chain, true);
}
