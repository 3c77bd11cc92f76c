// A chain seen along one of the fullerene's directions.
#pragma once

#include "libloopwise.h"

namespace loopwise::projection {

/// ProjectChain() without seeding the process's generator. Allocates.
std::vector<Edge> project(const Chain& chain, int direction_index, bool closed);

} // namespace loopwise::projection
