// Scripts for molecular viewers that colour a chain's knots on the user's own structure.
#pragma once

#include "fingerprint/fingerprint.hpp"

namespace loopwise::draw {

// The chain is grey, the cores and their tails have the colours of the matrix's picture; slipknots are named
// so. To be run after the structure was opened. Chain text has no name of a chain: all chains are meant then.

std::string pymol_script(const fingerprint::ChainFingerprint& fingerprint,
                         const std::vector<fingerprint::KnotPlace>& places);
std::string chimerax_script(const fingerprint::ChainFingerprint& fingerprint,
                            const std::vector<fingerprint::KnotPlace>& places);

} // namespace loopwise::draw
