#include <libloopwise.h>

#include <iostream>

int main() {
    bool error = false;
    Chain chain = ChainRead_fromString("1 0 0 0\n2 3 2 0\n3 6 0 1\n4 9 2 0\n5 12 0 0\n", error);
    if (error || chain.size() != 5 || CloseChain_1direction_NoRandom(chain, 0) != 0) {
        return 1;
    }
    const std::size_t closed = chain.size();
    const int left = ChainReduce(chain, true);
    std::cout << '\n' << closed << " beads closed, " << left << " left\n";
}
