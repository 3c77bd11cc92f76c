// One closure of one chain.
#pragma once

#include "src/closure/closures.hpp"
#include "survey/plan.hpp"

namespace loopwise::survey {

/// Makes the closure of that number, with draws of its own from the plan's seed; for Method::directions the number
/// is the row.
closure::Closing close_chain(Chain& chain, const Plan& plan, std::size_t closure);

} // namespace loopwise::survey
