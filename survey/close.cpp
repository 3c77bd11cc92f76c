#include "survey/close.hpp"

#include "survey/closure_rng.hpp"

namespace loopwise::survey {

closure::Closing close_chain(Chain& chain, const Plan& plan, std::size_t closure) {
    const closure::Draw draw = ClosureRng(plan.seed, closure);
    switch (plan.method) {
    case Method::directions:
        return closure::close_in_direction(chain, static_cast<int>(closure));
    case Method::point:
        return closure::close_through_point(chain, plan.scale, draw);
    case Method::direction:
        return closure::close_in_random_direction(chain, draw);
    case Method::two_points:
        return closure::close_by_arc(chain, plan.scale, draw);
    case Method::outside:
        return closure::close_outside(chain, plan.scale);
    case Method::ring:
        return closure::Closing::closed;
    }
    return closure::Closing::no_such_row;
}

} // namespace loopwise::survey
