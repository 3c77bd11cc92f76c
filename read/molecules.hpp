// From the atoms of a file to molecules: its models, and the chains asked for.
#pragma once

#include "read/atoms.hpp"

namespace loopwise::read {

/// One molecule for each model asked for, with the chains asked for, in the order of the file. Throws
/// std::runtime_error with the reason if there is no such model or chain.
std::vector<polymer::Molecule> molecules_of(const FileAtoms& file, const Selection& selection);

} // namespace loopwise::read
