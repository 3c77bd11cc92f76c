#include "draw/viewers.hpp"

#include "draw/knot_colours.hpp"

#include <algorithm>
#include <map>
#include <optional>

namespace loopwise::draw {
namespace {

constexpr const char* rest_colour = "#d4d6da";
constexpr std::size_t tail_shade = 0;
constexpr std::size_t longest_name = 30; // of a knot, in the name of a selection

/// A selection that a script colours. Later ones colour over earlier ones.
struct Part {
    std::string name, colour, note;
    fingerprint::Subchain subchain;
};

/// A knot as a part of a selection's name, in which both viewers allow letters, digits and _.
std::string plain(const std::string& knot) {
    std::string name;
    for (const char c : knot) {
        if (c == '+' || c == '-')
            name += c == '+' ? 'p' : 'm';
        else if (std::isalnum(static_cast<unsigned char>(c)) != 0)
            name += c;
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    return name;
}

/// The knot tails of the chain's own knot, then the knot cores, larger ones first.
std::vector<Part> parts_of(const fingerprint::ChainFingerprint& of, std::vector<fingerprint::KnotPlace> places) {
    std::erase_if(places, [](const fingerprint::KnotPlace& place) { return !place.core; });
    std::vector<Part> parts;
    if (!places.empty() && places.front().knot == of.knot) {
        const fingerprint::Subchain core = *places.front().core;
        const std::string colour = knot_colour(of, number_of(places.front(), of), tail_shade);
        const std::size_t end = of.matrix.beads() - 1;
        if (core.first > 0) parts.push_back({"tail_before", colour, "before the core", {0, core.first - 1}});
        if (core.last < end) parts.push_back({"tail_after", colour, "behind the core", {core.last + 1, end}});
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const fingerprint::KnotPlace& a, const fingerprint::KnotPlace& b) {
                         return a.core->size() > b.core->size();
                     });
    std::size_t number = 0;
    for (const fingerprint::KnotPlace& place : places)
        parts.push_back(
            {core_word(place) + "_" + plain(short_text(place.knot, longest_name)) + "_" + std::to_string(++number),
             knot_colour(of, number_of(place, of)), text(place.knot) + ", " + core_word(place), *place.core});
    return parts;
}

/// Control characters in a file name could end the comment.
std::string comment(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, '?');
    return "# " + text + "\n";
}

std::string head(const fingerprint::ChainFingerprint& of, const std::string& how) {
    return comment("Knots of " + of.file + (of.chain.empty() ? "" : ", chain " + of.chain) +
                   ", by loopwise fingerprint. " + how);
}

/// The syntax of a viewer for residues.
struct Notation {
    const char* between;  ///< between two entries of a list
    const char* negative; ///< before the minus of a negative number
};
constexpr Notation pymol{"+", "\\"}, chimerax{",", ""};

/// Viewers select ranges by residue number alone: insertion codes and the order in the chain do not count. So
/// a range holds consecutive numbers, and residues that share a number are listed one by one.
std::string residues(const std::vector<polymer::ResidueId>& chain, fingerprint::Subchain subchain, Notation notation) {
    std::map<std::optional<std::int32_t>, int> sharing;
    for (const polymer::ResidueId& residue : chain) ++sharing[residue.number()];
    const auto follows = [&](std::size_t i) {
        const auto before = chain[i - 1].number(), here = chain[i].number();
        return before && here && std::int64_t{*here} - *before == 1 && sharing[before] == 1 && sharing[here] == 1;
    };
    const auto entry = [&](std::size_t i) {
        const std::string text = chain[i].text();
        return (text.starts_with('-') ? notation.negative : "") + text;
    };
    std::string list;
    for (std::size_t i = subchain.first; i <= subchain.last; ++i) {
        const std::size_t from = i;
        while (i < subchain.last && follows(i + 1)) ++i;
        list +=
            (list.empty() ? "" : notation.between) + entry(from) + (i > from ? std::string("-").append(entry(i)) : "");
    }
    return list;
}

} // namespace

std::string pymol_script(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places) {
    const std::string chain = of.chain.empty() ? "polymer" : "chain " + of.chain;
    std::string script =
        head(of, "Load the structure first.") + "color 0x" + std::string(rest_colour + 1) + ", " + chain + "\n";
    for (const Part& part : parts_of(of, places))
        script += comment(part.note) + "select " + part.name + ", " + chain + " and resi " +
                  residues(of.residues, part.subchain, pymol) + "\ncolor 0x" + part.colour.substr(1) + ", " +
                  part.name + "\n";
    return script + "deselect\n";
}

std::string chimerax_script(const fingerprint::ChainFingerprint& of,
                            const std::vector<fingerprint::KnotPlace>& places) {
    const std::string chain = of.chain.empty() ? "" : "/" + of.chain;
    std::string script = head(of, "Open the structure first.") + "color " + (chain.empty() ? "protein" : chain) + " " +
                         rest_colour + "\n";
    for (const Part& part : parts_of(of, places))
        script += comment(part.note) + "name " + part.name + " " + chain + ":" +
                  residues(of.residues, part.subchain, chimerax) + "\ncolor " + part.name + " " + part.colour + "\n";
    return script;
}

} // namespace loopwise::draw
