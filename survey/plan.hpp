// How a molecule is closed, and how often.
#pragma once

#include "src/closure/point_tables.hpp"

#include <cstddef>
#include <cstdint>

namespace loopwise::survey {

/// `ring` closes nothing: the last bead is bonded to the first.
enum class Method { directions, point, direction, two_points, outside, ring };

const char* name_of(Method method);
bool is_random(Method method);
bool takes_scale(Method method);

/// How many components of a structure the method can close; 0 when it closes single chains only.
std::size_t most_components(Method method);

struct Plan {
    Method method = Method::directions;
    std::size_t closures = closure::uniform_rows; ///< at most the rows of the table for Method::directions
    double scale = 0.0;                           ///< of the methods that take one
    std::uint64_t seed = 0;                       ///< of the random methods
    unsigned threads = 1;
    bool name_knots = true;
    bool together = false; ///< all chains of a molecule are components of one structure
};

} // namespace loopwise::survey
