#include "draw/matrix.hpp"
namespace loopwise {
std::string matrix_picture(const ChainFingerprint&, const std::vector<KnotPlace>&) { return ""; }
} // namespace loopwise
