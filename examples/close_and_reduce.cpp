// The library's main job in one go: read a chain, measure it, close it into a loop, reduce the loop to
// what its entanglement holds, and write that as text and as PDB.
// usage: close_and_reduce CHAIN.txt OUTPUT_PREFIX
#include "libloopwise.h"

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

namespace {

/// ChainReduce() prints a debug line on every call; a program's own output is better without it.
int reduce_quietly(Chain& chain, bool closed) {
    std::ostringstream swallowed;
    std::streambuf* const screen = std::cout.rdbuf(swallowed.rdbuf());
    const int left = ChainReduce(chain, closed);
    std::cout.rdbuf(screen);
    return left;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: close_and_reduce CHAIN.txt OUTPUT_PREFIX\n";
        return 2;
    }
    bool error = false;
    Chain chain = ChainRead(argv[1], error);
    if (error || chain.empty()) {
        std::cerr << "close_and_reduce: no chain could be read from " << argv[1] << '\n';
        return 1;
    }
    std::cout << argv[1] << ": " << chain.size() << " beads, radius " << RadiusOfChain(chain) << ", diameter "
              << DiameterOfChain(chain) << '\n';

    constexpr unsigned seed = 1;
    constexpr double far_outside = 10.0;
    FillFulerenData();
    std::srand(seed);
    CloseChain_1point(chain, far_outside);
    std::cout << "  closed through a far point: " << chain.size() << " beads\n";

    const int left = reduce_quietly(chain, true);
    std::cout << "  reduced as a loop: " << left << " beads: " << (left > 3 ? "it is entangled" : "nothing holds it")
              << '\n';

    const std::string prefix = argv[2];
    std::string plain = prefix + "_reduced.txt", pdb = prefix + "_reduced.pdb";
    ChainWrite(plain.data(), chain, true);
    ChainWrite(pdb.data(), chain, false);
    std::cout << "  written to " << plain << " and " << pdb << '\n';
}
