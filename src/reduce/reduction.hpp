// The reductions without a word on the standard output: what the exported functions and the product call.
#pragma once

#include "libloopwise.h"

#include <cstddef>

namespace loopwise::reduce {

/// Fewer beads than this are searched as quickly without an index of segments.
constexpr std::size_t usual_fewest_indexed = 3000;

/// ChainReduce() and ChainsReduce() without the debug line. Safe to call from several threads on separate
/// values. They take what memory they need from the heap, nothing for a chain of up to 3,455
/// beads, and all of it before the first change. Segments of a
/// structure have an index while at least `fewest_indexed` beads are left.
std::size_t reduce(Chain& chain, bool closed);
std::size_t reduce(Structure& structure, bool closed, std::size_t fewest_indexed = usual_fewest_indexed);

/// The first without any memory from the heap, whatever the length.
std::size_t reduce_on_stack(Chain& chain, bool closed);

} // namespace loopwise::reduce
