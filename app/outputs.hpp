// Outputs that would destroy what they are made from.
#pragma once

#include <string>
#include <vector>

namespace loopwise {

/// Throws std::runtime_error with the reason when the picture, the table of closures (either may be empty) or
/// the standard output is one of the inputs, when two of them are one file, and when the picture would
/// replace a file that is no picture.
void refuse_harmful_outputs(const std::vector<std::string>& inputs, const std::string& picture,
                            const std::string& table);

} // namespace loopwise
