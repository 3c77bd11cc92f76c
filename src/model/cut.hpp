// Cutting a chain to a range of identifiers.
#pragma once

#include "libloopwise.h"

namespace loopwise::model {

/// What CutChain() does, in silence. False when the range is refused; the chain is then unchanged. An
/// empty chain has nothing to refuse.
bool cut(Chain& chain, int start, int end);

} // namespace loopwise::model
