// The exported closures: a silent operation each, with std::rand(), the messages and the return codes of
// the interface.
#include "src/closure/circle_arc.hpp"
#include "src/closure/closures.hpp"

#include <cstdlib>
#include <ctime>
#include <iostream>

using namespace loopwise::closure;

namespace {

constexpr int closed = 0; // also for an empty input
constexpr int not_closed = -1;

/// The message of a direction without length is the operation's own.
int result_of(Closing closing, const char* without_direction = "") {
    switch (closing) {
    case Closing::closed:
        return closed;
    case Closing::nothing_to_close:
        std::clog << "[WARNING] You are trying to CLOSE an EMPTY chain.\n";
        return closed;
    case Closing::no_direction:
        std::cerr << without_direction;
        return not_closed;
    case Closing::no_such_row:
    case Closing::too_many_components:
    case Closing::no_arc:
        break;
    }
    return not_closed;
}

int draw() { return std::rand(); }

} // namespace

void FillFulerenData() {
    static bool seeded = false;
    if (seeded) return;
    seeded = true;
    std::srand(static_cast<unsigned>(std::time(nullptr)));
}

std::vector<ChainAtom> GivePointsOnTheCircle(PointR3 startPoint, PointR3 endPoint, PointR3 centre,
                                             double radius, int lastId) {
    Arc arc = circle_arc(startPoint, endPoint, centre, radius, lastId);
    if (arc.has_no_basis) std::clog << "PROBLEM with counting sinus and cosinus:(\n";
    return std::move(arc.atoms);
}

int CloseChain_1point(std::vector<ChainAtom>& chain, double scale) {
    FillFulerenData();
    return result_of(close_through_point(chain, scale, draw),
                     "CloseChain_1point(). Chain is closed with direct line.\n");
}

int CloseChains_1point(std::vector<std::vector<ChainAtom>>& structure, double scale) {
    FillFulerenData();
    return result_of(close_through_points(structure, scale, draw),
                     "Problem in CloseChains_1point(). Chain is closed with direct line. (Possibly "
                     "FillFulerenData(); hasn't been called before.\n");
}

int CloseChain_1direction_NoRandom(std::vector<ChainAtom>& chain, int directionIndex) {
    FillFulerenData();
    return result_of(close_in_direction(chain, directionIndex),
                     "Problem in CloseChain_NoRandom(). Chain is closed with direct line.\n");
}

int CloseChain_1direction(std::vector<ChainAtom>& chain) {
    FillFulerenData();
    return result_of(close_in_random_direction(chain, draw),
                     "Problem in CloseChain_1direction(). Chain is closed with direct line.\n");
}

int CloseChains_1direction(std::vector<std::vector<ChainAtom>>& structure) {
    FillFulerenData();
    return result_of(close_in_random_directions(structure, draw),
                     "Problem in CloseChains_1direction(). Chain is closed with direct line.\n");
}

int CloseChain_2points(std::vector<ChainAtom>& chain, double scale) {
    FillFulerenData();
    return result_of(close_by_arc(chain, scale, draw));
}

int CloseChains_2points(std::vector<std::vector<ChainAtom>>& structure, double scale) {
    FillFulerenData();
    return result_of(close_by_arcs(structure, scale, draw));
}

int CloseChain_OUT(std::vector<ChainAtom>& chain, double scale) {
    FillFulerenData();
    return result_of(close_outside(chain, scale));
}

int CloseChains_OUT(std::vector<std::vector<ChainAtom>>& structure, double scale) {
    FillFulerenData();
    return result_of(close_outside(structure, scale));
}
