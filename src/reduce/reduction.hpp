// The reductions as silent operations.
#pragma once

#include "libloopwise.h"

namespace loopwise {

/// What ChainReduce() does, without its debug line. Takes the memory it needs.
std::size_t reduce(Chain& chain, bool closed);

/// What ChainsReduce() does.
std::size_t reduce(Structure& structure, bool closed);

} // namespace loopwise
