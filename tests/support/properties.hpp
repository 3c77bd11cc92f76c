// What holds for every input, each stated once. Tests drive these by seeds and over grids, the fuzz targets
// by bytes. Where one does not hold, an exception says which, and for what input.
#pragma once

#include "support/chains.hpp"

namespace properties {

/// ChainReduce() and ChainsReduce() leave what the literal procedure leaves, with every kernel and however
/// much of the chain has no room in the workspace.
void reduces(const Chain& input, bool closed);
void reduces(const Structure& input, bool closed);

/// Diameters and largest identifiers are those of the plain loops.
void measures(const Structure& input);

/// Every closure appends a handful of atoms to each chain or none, or says that there is nothing to close.
void closes(const Structure& input, double scale);

/// The readers and the writers do what streams do.
void reads(const std::string& input);
void writes(const Chain& input);

/// All of the above on coordinates that the numbers choose.
void hold(chains::Random numbers);

/// A text is read as streams read it, and what was read is written and read again.
void hold(const std::string& text);

} // namespace properties
