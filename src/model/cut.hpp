// Cutting a chain to a range of identifiers.
#pragma once

#include "libloopwise.h"

namespace loopwise::model {

/// CutChain() without messages. Returns false, with the chain unchanged, when the range is refused. True for
/// an empty chain.
bool cut(Chain& chain, int start, int end);

} // namespace loopwise::model
