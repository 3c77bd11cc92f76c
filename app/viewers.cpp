#include "viewers.hpp"
namespace loopwise {
std::string pymol_script(const ChainFingerprint&, const std::vector<KnotPlace>&) { return ""; }
std::string chimerax_script(const ChainFingerprint&, const std::vector<KnotPlace>&) { return ""; }
} // namespace loopwise
