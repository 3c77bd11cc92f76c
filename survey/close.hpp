// One closure of one chain.
#pragma once

#include "closure/closures.hpp"
#include "survey/plan.hpp"

namespace loopwise {

/// Makes the closure of that number, with draws of its own from the plan's seed; for Method::directions the number
/// is the row.
Closing close_chain(Chain& chain, const Plan& plan, std::size_t closure);

} // namespace loopwise
