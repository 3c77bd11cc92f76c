#include "polymer/molecule.hpp"

#include <algorithm>
#include <charconv>
#include <optional>

namespace loopwise::polymer {
namespace {

constexpr double shortest_trace_bond = 3.4, longest_trace_bond = 4.2; // as CheckDistancesBetweenAtoms()
constexpr double shortest_cis_bond = 2.7;
constexpr double gap_to_middle_bond = 1.5;
constexpr std::size_t fewest_beads_of_ring = 4; // three and the first again

std::vector<double> lengths_of(const Chain& beads) {
    std::vector<double> lengths;
    for (std::size_t i = 0; i + 1 < beads.size(); ++i)
        lengths.push_back(
            Dist({beads[i].x, beads[i].y, beads[i].z}, {beads[i + 1].x, beads[i + 1].y, beads[i + 1].z}));
    return lengths;
}

double middle_of(std::vector<double> lengths) {
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return *middle;
}

std::optional<long long> number_of(const std::string& label) {
    long long number = 0;
    const auto [end, error] = std::from_chars(label.data(), label.data() + label.size(), number);
    return error == std::errc{} ? std::optional(number) : std::nullopt;
}

std::size_t missing_between(const std::string& label, const std::string& next) {
    const auto from = number_of(label), to = number_of(next);
    constexpr long long largest = 1'000'000'000;
    const auto is_usual = [](long long number) { return number >= -largest && number <= largest; };
    if (!from || !to || !is_usual(*from) || !is_usual(*to) || *to <= *from + 1) return 0;
    return static_cast<std::size_t>(*to - *from - 1);
}

} // namespace

Bonds bonds_of(const NamedChain& chain) {
    const std::vector<double> lengths = lengths_of(chain.beads);
    if (lengths.empty()) return {};
    const double middle = middle_of(lengths);
    const bool trace = chain.kind == BeadKind::amino_acids ||
                       (middle >= shortest_trace_bond && middle <= longest_trace_bond);
    Bonds bonds{trace ? longest_trace_bond : gap_to_middle_bond * middle, {}, {}};
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        if (lengths[i] > bonds.longest)
            bonds.gaps.push_back({i, lengths[i], missing_between(chain.labels[i], chain.labels[i + 1])});
        else if (trace && lengths[i] < shortest_trace_bond)
            bonds.close.push_back({i, lengths[i], 0});
    }
    return bonds;
}

bool may_be_cis(double length) { return length >= shortest_cis_bond && length < shortest_trace_bond; }

bool is_ring(const NamedChain& chain) {
    const Chain& beads = chain.beads;
    return beads.size() >= fewest_beads_of_ring && beads.front().x == beads.back().x &&
           beads.front().y == beads.back().y && beads.front().z == beads.back().z;
}

void drop_repeated_end(NamedChain& ring) {
    ring.beads.pop_back();
    ring.labels.pop_back();
}

std::vector<std::string> labels_of(const Chain& beads) {
    std::vector<std::string> labels;
    labels.reserve(beads.size());
    for (const ChainAtom& bead : beads) labels.push_back(std::to_string(bead.id));
    return labels;
}

} // namespace loopwise::polymer
