// The check of a chain for breaks and for neighbours that lie on top of each other.
#include "src/model/points.hpp"

#include <sstream>

namespace loopwise::textio {

using namespace model;
namespace {

const std::string OK = "OK";

constexpr double too_close_below = 3.4;
constexpr double too_far_above = 4.2;

/// Two consecutive atoms, by the position of the first, and their distance.
struct Pair {
    double distance;
    std::size_t position;
};

std::string report(const Chain& chain, Pair pair) {
    std::ostringstream distance_text;
    distance_text.exceptions(std::ios_base::badbit); // out of memory must not pass for an empty text
    distance_text << pair.distance;
    std::string text = " ";
    text += std::to_string(chain[pair.position].id) + '-' + std::to_string(chain[pair.position + 1].id);
    return text += '(' + distance_text.str() + ')';
}

} // namespace
} // namespace loopwise::textio

using namespace loopwise::textio;

std::string CheckDistancesBetweenAtoms(std::vector<ChainAtom> chain) {
    Pair farthest{0.0, 0};
    Pair closest{10.0, 0};
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const double d = distance(position(chain[i]), position(chain[i + 1]));
        if (d > farthest.distance) farthest = {d, i};
        if (d < closest.distance) closest = {d, i};
    }
    const bool too_close = closest.distance < too_close_below;
    const bool too_far = farthest.distance > too_far_above;
    if (!too_close && !too_far) return OK;

    std::string verdict = "HEAD: broken protein between";
    if (too_close) verdict += report(chain, closest);
    if (too_far) verdict += report(chain, farthest);
    return verdict;
}
