#include "survey/plan.hpp"

#include "src/closure/closures.hpp"

#include <cstdint>

namespace loopwise::survey {

const char* name_of(Method method) {
    switch (method) {
    case Method::directions:
        return "directions";
    case Method::point:
        return "point";
    case Method::direction:
        return "direction";
    case Method::two_points:
        return "two-points";
    case Method::outside:
        return "outside";
    case Method::ring:
        return "ring";
    }
    return "";
}

bool is_random(Method method) {
    return method == Method::point || method == Method::direction || method == Method::two_points;
}

bool takes_scale(Method method) {
    return method == Method::point || method == Method::two_points || method == Method::outside;
}

std::size_t most_components(Method method) {
    switch (method) {
    case Method::directions:
        return 0;
    case Method::point:
        return closure::most_components_through_points;
    case Method::direction:
        return closure::most_components_in_directions;
    case Method::two_points:
        return closure::most_components_by_arcs;
    case Method::outside:
    case Method::ring:
        break;
    }
    return SIZE_MAX;
}

} // namespace loopwise::survey
