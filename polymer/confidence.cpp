#include "polymer/confidence.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace loopwise::polymer {

std::optional<Confidence> confidence_of(std::span<const double> residues) {
    if (residues.empty()) return std::nullopt;
    return Confidence{std::accumulate(residues.begin(), residues.end(), 0.0) / static_cast<double>(residues.size()),
                      *std::min_element(residues.begin(), residues.end()),
                      static_cast<std::size_t>(std::count_if(residues.begin(), residues.end(),
                                                             [](double value) { return value < low_confidence; }))};
}

void settle_confidence(NamedChain& chain) {
    std::vector<double>& values = chain.confidence;
    if (std::any_of(values.begin(), values.end(), [](double v) { return !(v >= 0 && v <= full_confidence); })) {
        chain.notes.push_back("no confidence: some residue has none from 0 to 100 in its B column");
        values.clear();
    }
    if (std::all_of(values.begin(), values.end(), [](double v) { return v <= 1; }))
        for (double& value : values) value *= full_confidence;
}

void drop_below(NamedChain& chain, double confidence) {
    const std::vector<double> values = chain.confidence;
    if (values.empty()) throw std::invalid_argument("no confidence is known; --confidence takes the B column for one");
    NamedChain kept{chain.name, {}, {}, chain.kind, chain.notes, {}, chain.in_file};
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i] < confidence) continue;
        kept.beads.push_back(chain.beads[i]);
        kept.residues.push_back(chain.residues[i]);
        kept.confidence.push_back(values[i]);
    }
    if (kept.beads.empty()) throw std::invalid_argument("no residue has the confidence asked for");
    const std::size_t dropped = values.size() - kept.beads.size();
    char limit[32];
    *std::to_chars(limit, limit + sizeof limit - 1, confidence).ptr = '\0';
    kept.notes.push_back(std::to_string(dropped) + (dropped == 1 ? " residue" : " residues") + " below confidence " +
                         limit + " left out");
    chain = std::move(kept);
}

} // namespace loopwise::polymer
