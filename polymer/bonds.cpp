#include "polymer/bonds.hpp"

#include <algorithm>

namespace loopwise::polymer {
namespace {

constexpr double shortest_cis_bond = 2.7;
constexpr double gap_to_median_bond = 1.5;

std::vector<double> lengths_of(const Chain& beads) {
    std::vector<double> lengths;
    for (std::size_t i = 0; i + 1 < beads.size(); ++i)
        lengths.push_back(Dist({beads[i].x, beads[i].y, beads[i].z}, {beads[i + 1].x, beads[i + 1].y, beads[i + 1].z}));
    return lengths;
}

double median_of(std::vector<double> lengths) {
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return *middle;
}

std::size_t missing_between(const ResidueId& residue, const ResidueId& next) {
    if (!residue.number() || !next.number()) return 0;
    const std::int64_t step = std::int64_t{*next.number()} - *residue.number();
    return step > 1 ? static_cast<std::size_t>(step - 1) : 0;
}

} // namespace

std::size_t Bonds::missing() const {
    std::size_t residues = 0;
    for (const OddBond& gap : gaps) residues += gap.missing;
    return residues;
}

Bonds bonds_of(const NamedChain& chain) {
    const std::vector<double> lengths = lengths_of(chain.beads);
    if (lengths.empty()) return {};
    const double median = median_of(lengths);
    const bool trace =
        chain.kind == BeadKind::amino_acids || (median >= shortest_trace_bond && median <= longest_trace_bond);
    Bonds bonds{trace ? longest_trace_bond : gap_to_median_bond * median, {}, {}, trace ? usual_trace_bond : median};
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        if (lengths[i] > bonds.longest)
            bonds.gaps.push_back({i, lengths[i], missing_between(chain.residues[i], chain.residues[i + 1])});
        else if (trace && lengths[i] < shortest_trace_bond)
            bonds.close.push_back({i, lengths[i], 0});
    }
    return bonds;
}

bool may_be_cis(double length) { return length >= shortest_cis_bond && length < shortest_trace_bond; }

} // namespace loopwise::polymer
