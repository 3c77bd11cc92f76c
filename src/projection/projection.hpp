// A chain seen along one of the fullerene's directions.
#pragma once

#include "libloopwise.h"

namespace loopwise::projection {

/// What ProjectChain() returns, without its seeding of the process's generator. Allocates.
std::vector<Edge> project(const Chain& chain, int direction_index, bool closed);

} // namespace loopwise::projection
