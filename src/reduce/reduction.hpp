// The KMT reductions as silent functions, which the exported functions and the product call.
#pragma once

#include "libloopwise.h"

#include <cstddef>

namespace loopwise::reduce {

/// Below this number of beads an index of segments saves no time.
constexpr std::size_t usual_fewest_indexed = 3000;

/// ChainReduce() and ChainsReduce() without the debug line. Safe to call from several threads on separate
/// values. Memory comes from the heap, all of it before the first change; a chain of up to 3,455 beads needs
/// none. A structure uses an index of segments while at least `fewest_indexed` beads are left.
std::size_t reduce(Chain& chain, bool closed);
std::size_t reduce(Structure& structure, bool closed, std::size_t fewest_indexed = usual_fewest_indexed);

/// Reduces a chain of any length without memory from the heap.
std::size_t reduce_on_stack(Chain& chain, bool closed);

} // namespace loopwise::reduce
