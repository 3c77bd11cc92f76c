#include "survey/close.hpp"

#include "survey/draws.hpp"

namespace loopwise {

Closing close_chain(Chain& chain, const Plan& plan, std::size_t closure) {
    const Draw draw = Draws(plan.seed, closure);
    switch (plan.method) {
    case Method::directions:
        return close_in_direction(chain, static_cast<int>(closure));
    case Method::point:
        return close_through_point(chain, plan.scale, draw);
    case Method::direction:
        return close_in_random_direction(chain, draw);
    case Method::two_points:
        return close_by_arc(chain, plan.scale, draw);
    case Method::outside:
        return close_outside(chain, plan.scale);
    case Method::ring:
        return Closing::closed;
    }
    return Closing::no_such_row;
}

} // namespace loopwise
