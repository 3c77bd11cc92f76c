// A tour through the library: two chains as one structure, closed in every way, reduced as loops, written
// and read back; then the small tools, each with a word on what it answers.
// usage: tour FIRST.txt SECOND.txt
#include "libloopwise.h"

#include <cstdlib>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr unsigned seed = 1;

Structure read_pair(char* first, char* second) {
    bool error = false;
    Structure pair;
    for (char* const file : {first, second}) {
        pair.push_back(ChainRead(file, error));
        std::cout << file << ": " << pair.back().size() << " beads, " << CheckDistancesBetweenAtoms(pair.back())
                  << '\n';
    }
    return pair;
}

/// Chain by chain through the text that the writer makes; six digits of every coordinate come back.
Structure written_and_read_back(const Structure& structure) {
    Structure read;
    for (const Chain& chain : structure) {
        bool error = false;
        read.push_back(ChainRead_fromString(ChainWrite_toString(chain, true), error));
    }
    return read;
}

void close_in_every_way(const Structure& structure) {
    const std::vector<std::pair<std::string, std::function<int(Structure&)>>> closures{
        {"one far point each", [](Structure& s) { return CloseChains_1point(s, 3.0); }},
        {"one direction each", [](Structure& s) { return CloseChains_1direction(s); }},
        {"an arc between two directions", [](Structure& s) { return CloseChains_2points(s, 1.5); }},
        {"an arc from last to first atom", [](Structure& s) { return CloseChains_OUT(s, 1.5); }}};
    for (const auto& [name, close] : closures) {
        Structure loops = structure;
        std::srand(seed);
        if (close(loops) != 0) std::cout << "  " << name << ": could not be closed\n";
        const int last_id = maxIdComps(loops);
        const int left = ChainsReduce(loops, true);
        const Structure back = written_and_read_back(loops);
        std::cout << "  " << name << ": identifiers up to " << last_id << ", " << left << " beads left, diameter "
                  << DiameterOfStructure(back) << " as read back\n";
    }
}

void close_one_chain(const Chain& chain) {
    const std::vector<std::pair<std::string, std::function<int(Chain&)>>> closures{
        {"far point", [](Chain& c) { return CloseChain_1point(c, 10.0); }},
        {"direction", [](Chain& c) { return CloseChain_1direction(c); }},
        {"two points", [](Chain& c) { return CloseChain_2points(c, 2.0); }},
        {"outside", [](Chain& c) { return CloseChain_OUT(c, 2.0); }}};
    for (const auto& [name, close] : closures) {
        Chain loop = chain;
        std::srand(seed);
        close(loop);
        std::cout << "  " << name << ": " << loop.size() - chain.size() << " atoms more, the last with identifier "
                  << maxIdChain(loop) << '\n';
    }
}

/// Crossings of a chain in the picture along a direction.
int crossings(const Chain& chain, int direction) {
    int count = 0;
    const std::vector<Edge> edges = ProjectChain(chain, direction, false);
    for (std::size_t i = 0; i < edges.size(); ++i)
        for (std::size_t j = i + 2; j < edges.size(); ++j)
            count += TwoSegmentsCrossedSimple(edges[i].start.x, edges[i].start.y, edges[i].end.x, edges[i].end.y,
                                              edges[j].start.x, edges[j].start.y, edges[j].end.x, edges[j].end.y);
    return count;
}

void show_small_tools(const Chain& chain) {
    const PointR3 centre = CentreOfChain(chain);
    const PointR3 first{chain.front().x, chain.front().y, chain.front().z};
    std::cout << "  radius " << RadiusOfChain(chain) << ", diameter " << DiameterOfChain(chain)
              << ", the first atom is " << Dist(centre, first) << " from the centre\n"
              << "  crossings along direction 0: " << crossings(chain, 0) << '\n';
    Chain stretch = chain;
    CutChain(stretch, 10, 20);
    std::cout << "  cut to identifiers 10 to 20: " << stretch.size() << " atoms\n";

    PointR3 triangle[] = {{0, 0, 0}, {3, 0, 0}, {0, 3, 0}}, needle[] = {{1, 1, -1}, {1, 1, 1}};
    std::cout << "  a needle through a triangle: contact " << intersection(triangle, needle) << '\n';
    double x[] = {1, 0, 0}, y[] = {0, 1, 0}, z[] = {0, 0, 1};
    std::cout << "  axes: dot product " << ScalarProduct(x, y) << ", determinant " << Determinant(x, y, z) << ", turn "
              << det_segments(0, 0, 1, 0, 0, 1) << ", (0.5, 0) on the first: " << on_segment(0, 0, 1, 0, 0.5, 0)
              << '\n';
    const PointR3 seen = ProjectPointF({1, 2, 3}, {1, 0, 0});
    std::cout << "  (1, 2, 3) seen along x: (" << seen.x << ", " << seen.y << ", " << seen.z << ")\n";
    std::cout << "  a quarter circle: " << GivePointsOnTheCircle({1, 0, 0}, {0, 1, 0}, {0, 0, 0}, 1, 0).size()
              << " atoms\n";
    std::cout << "  1 and 1 + " << EPS / 2 << ": equal " << CompareEq(1, 1 + EPS / 2) << ", greater "
              << CompareGt(1 + EPS / 2, 1) << ", greater or equal " << CompareGeq(1, 1 + EPS / 2) << '\n';
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: tour FIRST.txt SECOND.txt\n";
        return 2;
    }
    FillFulerenData(); // before std::srand(), or it would seed from the clock
    Structure structure = read_pair(argv[1], argv[2]);
    if (IsEmptyStructure(structure)) {
        std::cerr << "tour: a chain could not be read\n";
        return 1;
    }
    std::cout << "Both as one structure, closed and reduced as loops:\n";
    close_in_every_way(structure);
    std::cout << "The first by itself, closed:\n";
    close_one_chain(structure[0]);
    std::cout << "The first by itself, measured and looked at:\n";
    show_small_tools(structure[0]);
}
