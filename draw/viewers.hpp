// Scripts for molecular viewers that colour the knots of a chain in the user's structure.
#pragma once

#include "fingerprint/fingerprint.hpp"

namespace loopwise::draw {

// Run after the structure is opened. The chain becomes grey; knot cores and tails get the colours of the
// matrix picture. A chain without a name, as of chain text, means all chains.

std::string pymol_script(const fingerprint::ChainFingerprint& fingerprint,
                         const std::vector<fingerprint::KnotPlace>& places);
std::string chimerax_script(const fingerprint::ChainFingerprint& fingerprint,
                            const std::vector<fingerprint::KnotPlace>& places);

} // namespace loopwise::draw
