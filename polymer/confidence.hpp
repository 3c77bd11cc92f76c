// How sure a prediction is of its residues.
#pragma once

#include "polymer/molecule.hpp"

#include <optional>
#include <span>

namespace loopwise::polymer {

/// Confidences are from 0 to 100; a prediction is not to be believed below this one.
inline constexpr double low_confidence = 50.0, full_confidence = 100.0;

struct Confidence {
    double mean = 0, least = 0;
    std::size_t low = 0; ///< residues below low_confidence
};

/// None of no residue.
std::optional<Confidence> confidence_of(std::span<const double> residues);

/// Takes the values of a file for confidences. Values up to 1 are shares: 0.9 is 90. A chain without a value for every
/// residue has none, and a note says so.
void settle_confidence(NamedChain& chain);

/// Removes the residues below a confidence: ends become shorter, stretches inside become gaps. A note says how many are
/// removed. Throws std::invalid_argument if the chain has no confidence or none of its residues is left.
void drop_below(NamedChain& chain, double confidence);

} // namespace loopwise::polymer
