// Outputs that would destroy what they are made from.
#pragma once

#include <string>
#include <vector>

namespace loopwise {

/// Throws std::runtime_error with the reason when the picture, if any, or the standard output is one of the
/// inputs, when both are one file, and when the picture would replace a file that is no picture.
void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::string& picture);

} // namespace loopwise
