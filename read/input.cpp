#include "read/input.hpp"

#include "read/bytes.hpp"
#include "read/mmcif.hpp"
#include "read/number.hpp"
#include "read/pdb.hpp"
#include "read/refusal.hpp"
#include "read/text.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace loopwise::read {
namespace {

enum class Format { text, pdb, mmcif };

bool has_extension(std::string path, std::initializer_list<const char*> extensions) {
    if (path.ends_with(".gz")) path.resize(path.size() - 3);
    std::transform(path.begin(), path.end(), path.begin(), [](unsigned char c) { return std::tolower(c); });
    return std::any_of(extensions.begin(), extensions.end(),
                       [&](const char* extension) { return path.ends_with(extension); });
}

/// What a file holds goes before what its name says.
Format format_of(const std::string& path, std::string_view text) {
    if (looks_like_mmcif(text) || has_extension(path, {".cif", ".mmcif"})) return Format::mmcif;
    if (looks_like_pdb(text) || has_extension(path, {".pdb", ".ent"})) return Format::pdb;
    return Format::text;
}

void refuse_impossible(const polymer::NamedChain& chain) {
    // Below this size products of coordinates underflow, and everything seems to touch.
    constexpr double least_size = 1e-9;
    double least = INFINITY, largest = -INFINITY;
    for (std::size_t i = 0; i < chain.beads.size(); ++i) {
        const ChainAtom &bead = chain.beads[i], &next = chain.beads[std::min(i + 1, chain.beads.size() - 1)];
        for (const double value : {bead.x, bead.y, bead.z}) {
            if (!(std::abs(value) <= largest_coordinate))
                refuse("bead " + chain.labels[i] + " has a coordinate beyond 1e9");
            least = std::min(least, value);
            largest = std::max(largest, value);
        }
        if (i + 1 < chain.beads.size() && bead.x == next.x && bead.y == next.y && bead.z == next.z)
            refuse("beads " + chain.labels[i] + " and " + chain.labels[i + 1] +
                   (chain.name.empty() ? "" : " of chain " + chain.name) +
                   ", neighbours, are at the same place");
    }
    if (chain.beads.size() > 1 && largest - least < least_size) refuse("is smaller than 1e-9 in all");
}

std::vector<polymer::Molecule> from_text(std::string_view text, const Selection& selection) {
    if (!selection.chains.empty()) refuse("is chain text, which has no names of chains");
    if (!selection.model.empty() && selection.model != "1" && selection.model != every_model)
        refuse("is chain text and holds no model " + selection.model);
    return {read_chain_text(text)};
}

std::optional<long long> whole_number(const std::string& label) {
    long long number = 0;
    const auto [end, error] = std::from_chars(label.data(), label.data() + label.size(), number);
    if (error != std::errc{} || end != label.data() + label.size()) return std::nullopt;
    return number;
}

/// The number that a label begins with: 52 of 52A.
std::optional<long long> leading_number(const std::string& label) {
    long long number = 0;
    const auto [end, error] = std::from_chars(label.data(), label.data() + label.size(), number);
    return error == std::errc{} ? std::optional(number) : std::nullopt;
}

[[noreturn]] void refuse_label(const polymer::NamedChain& chain, const std::string& label) {
    refuse("has no bead " + shown(label) + " between " + chain.labels.front() + " and " +
           chain.labels.back());
}

/// The positions of the beads from the first to the last whose numbers are not outside.
std::pair<std::size_t, std::size_t> subchain_of_numbers(const polymer::NamedChain& chain, long long low,
                                                        long long high) {
    const auto inside = [&](const std::string& label) {
        const auto number = leading_number(label);
        return number && *number >= low && *number <= high;
    };
    const auto from = std::find_if(chain.labels.begin(), chain.labels.end(), inside);
    const auto to = std::find_if(chain.labels.rbegin(), chain.labels.rend(), inside);
    if (from == chain.labels.end()) refuse_label(chain, std::to_string(low));
    return {static_cast<std::size_t>(from - chain.labels.begin()),
            static_cast<std::size_t>(chain.labels.rend() - to) - 1};
}

std::size_t position_of(const polymer::NamedChain& chain, const std::string& label) {
    const auto found = std::find(chain.labels.begin(), chain.labels.end(), label);
    if (found == chain.labels.end()) refuse_label(chain, label);
    return static_cast<std::size_t>(found - chain.labels.begin());
}

/// Whether the number is between those of the two ends.
bool is_between_ends(const polymer::NamedChain& chain, long long number) {
    const auto a = leading_number(chain.labels.front()), b = leading_number(chain.labels.back());
    return a && b && number >= std::min(*a, *b) && number <= std::max(*a, *b);
}

std::pair<std::size_t, std::size_t> subchain(const polymer::NamedChain& chain, const std::string& first,
                                             const std::string& last) {
    const auto a = whole_number(first), b = whole_number(last);
    if (a && b) {
        for (const auto& [number, label] : {std::pair{*a, first}, {*b, last}})
            if (!is_between_ends(chain, number)) refuse_label(chain, label);
        return subchain_of_numbers(chain, std::min(*a, *b), std::max(*a, *b));
    }
    return std::minmax(position_of(chain, first), position_of(chain, last));
}

} // namespace

std::vector<polymer::Molecule> molecules_in(const std::string& path, std::string bytes,
                                            const Selection& selection) {
    const bool has_returns = bytes.find('\r') != std::string::npos;
    const std::string text = has_returns ? with_line_feeds(std::move(bytes)) : std::move(bytes);
    std::vector<polymer::Molecule> molecules;
    switch (format_of(path, text)) {
    case Format::text:
        molecules = from_text(text, selection);
        break;
    case Format::pdb:
        molecules = molecules_of(read_pdb(text, selection), selection);
        break;
    case Format::mmcif:
        molecules = molecules_of(read_mmcif(text, selection), selection);
        break;
    }
    for (polymer::Molecule& molecule : molecules) {
        molecule.file = path;
        for (const polymer::NamedChain& chain : molecule.chains) refuse_impossible(chain);
    }
    return molecules;
}

std::vector<polymer::Molecule> read_molecules(const std::string& path, const Selection& selection) {
    return molecules_in(path, read_bytes(path), selection);
}

void cut(polymer::NamedChain& chain, const std::optional<std::string>& first,
         const std::optional<std::string>& last) {
    if (!first && !last) return;
    if (polymer::is_ring(chain)) polymer::drop_repeated_end(chain);
    const auto [from, to] =
        subchain(chain, first.value_or(chain.labels.front()), last.value_or(chain.labels.back()));
    const auto begin = static_cast<std::ptrdiff_t>(from), end = static_cast<std::ptrdiff_t>(to) + 1;
    chain.beads = Chain(chain.beads.begin() + begin, chain.beads.begin() + end);
    chain.labels = std::vector(chain.labels.begin() + begin, chain.labels.begin() + end);
}

const char* readable_formats() {
    return "PDB, mmCIF or chain text (x y z, id x y z, XYZ), also gzipped; - for the standard input";
}

} // namespace loopwise::read
