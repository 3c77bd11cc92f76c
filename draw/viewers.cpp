#include "draw/viewers.hpp"

#include "draw/knot_colours.hpp"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

namespace loopwise::draw {
namespace {

constexpr const char* rest_colour = "#d4d6da";
constexpr std::size_t tail_shade = 0;

/// What a script colours, in this order: what comes later lies on top.
struct Part {
    std::string name, colour, note;
    fingerprint::Subchain subchain;
};

/// A name that both viewers take: letters, digits and _.
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

/// The tails of the chain's own knot, then cores, larger ones first.
std::vector<Part> parts_of(const fingerprint::ChainFingerprint& of,
                           std::vector<fingerprint::KnotPlace> places) {
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
            {(place.slipknot ? "slipknot_" : "core_") + plain(place.knot) + "_" + std::to_string(++number),
             knot_colour(of, number_of(place, of)), place.knot + (place.slipknot ? ", slipknot" : ""),
             *place.core});
    return parts;
}

/// Control characters of a file name could end the comment.
std::string comment(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, '?');
    return "# " + text + "\n";
}

std::string head(const fingerprint::ChainFingerprint& of, const std::string& how) {
    return comment("Knots of " + of.file + (of.chain.empty() ? "" : ", chain " + of.chain) +
                   ", by loopwise fingerprint. " + how);
}

/// How a viewer writes residues.
struct Notation {
    const char* between;  ///< two entries of a list
    const char* negative; ///< in front of a minus that does not stand between two numbers
};
constexpr Notation pymol{"+", "\\"}, chimerax{",", ""};

/// Without the insertion code; none for what is no number.
std::optional<int> number_of_residue(const std::string& label) {
    int number = 0;
    const auto [end, error] = std::from_chars(label.data(), label.data() + label.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// Viewers take ranges by number alone, insertion codes left out, wherever in the chain the number stands. So a range
/// holds numbers that follow each other, and residues that share their number stand by themselves.
std::string residues(const std::vector<std::string>& labels, fingerprint::Subchain subchain,
                     Notation notation) {
    std::map<std::optional<int>, int> sharing;
    for (const std::string& label : labels) ++sharing[number_of_residue(label)];
    const auto follows = [&](std::size_t i) {
        const std::optional<int> before = number_of_residue(labels[i - 1]),
                                 here = number_of_residue(labels[i]);
        return before && here && *here == *before + 1 && sharing[before] == 1 && sharing[here] == 1;
    };
    const auto entry = [&](std::size_t i) {
        return (labels[i].starts_with('-') ? notation.negative : "") + labels[i];
    };
    std::string list;
    for (std::size_t i = subchain.first; i <= subchain.last; ++i) {
        const std::size_t from = i;
        while (i < subchain.last && follows(i + 1)) ++i;
        list += (list.empty() ? "" : notation.between) + entry(from) +
                (i > from ? std::string("-").append(entry(i)) : "");
    }
    return list;
}

} // namespace

std::string pymol_script(const fingerprint::ChainFingerprint& of,
                         const std::vector<fingerprint::KnotPlace>& places) {
    const std::string chain = of.chain.empty() ? "polymer" : "chain " + of.chain;
    std::string script = head(of, "Load the structure first.") + "color 0x" + std::string(rest_colour + 1) +
                         ", " + chain + "\n";
    for (const Part& part : parts_of(of, places))
        script += comment(part.note) + "select " + part.name + ", " + chain + " and resi " +
                  residues(of.labels, part.subchain, pymol) + "\ncolor 0x" + part.colour.substr(1) + ", " +
                  part.name + "\n";
    return script + "deselect\n";
}

std::string chimerax_script(const fingerprint::ChainFingerprint& of,
                            const std::vector<fingerprint::KnotPlace>& places) {
    const std::string chain = of.chain.empty() ? "" : "/" + of.chain;
    std::string script = head(of, "Open the structure first.") + "color " +
                         (chain.empty() ? "protein" : chain) + " " + rest_colour + "\n";
    for (const Part& part : parts_of(of, places))
        script += comment(part.note) + "name " + part.name + " " + chain + ":" +
                  residues(of.labels, part.subchain, chimerax) + "\ncolor " + part.name + " " + part.colour +
                  "\n";
    return script;
}

} // namespace loopwise::draw
