#include "draw/viewers.hpp"

#include "draw/knot_colours.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <stdexcept>

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

bool is_plain(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-'; }

/// Viewers have characters that end a comment, begin a command or continue a line.
std::string comment(std::string text) {
    constexpr std::string_view harmless = " .,:()/+#";
    std::replace_if(
        text.begin(), text.end(), [&](char c) { return !is_plain(c) && harmless.find(c) == harmless.npos; }, '?');
    return "# " + text + "\n";
}

/// What a file names is never a command: a name has letters, digits, _ and -, or there is no script.
const std::string& word(const std::string& name) {
    if (name.empty() || !std::all_of(name.begin(), name.end(), is_plain))
        throw std::runtime_error("the name " + ::loopwise::words::quoted(name) +
                                 " has other characters than letters, digits, _ and -: no script for viewers");
    return name;
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
        const std::string text = word(chain[i].text());
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

const auto& serials_of(const polymer::ChainInFile& chain) {
    if (chain.serials.empty())
        throw std::runtime_error("the numbers of its atoms do not tell the chain from others: no script for viewers");
    return chain.serials;
}

/// Both viewers know only the names of the file: chains that share one are told apart by the numbers of their atoms.
std::string pymol_chain(const polymer::ChainInFile& chain) {
    std::string all = !chain.chain.empty()     ? "chain " + word(chain.chain)
                      : !chain.segment.empty() ? "segi " + word(chain.segment)
                                               : "polymer";
    if (!chain.is_part) return all;
    std::string ranges;
    for (const auto& [first, last] : serials_of(chain))
        ranges.append(ranges.empty() ? "" : "+").append(std::to_string(first)).append("-").append(std::to_string(last));
    return all.append(" and id ").append(ranges);
}

/// Residues of the chain, or all of it; ChimeraX does not know segments.
std::string chimerax_chain(const polymer::ChainInFile& chain, const std::string& chosen) {
    std::string all = chain.chain.empty() ? "" : std::string("/").append(word(chain.chain));
    all += chosen;
    if (all.empty()) all = "protein";
    if (!chain.is_part && chain.segment.empty()) return all;
    std::string ranges;
    for (const auto& [first, last] : serials_of(chain))
        ranges.append(ranges.empty() ? "" : " | ")
            .append(all)
            .append(" & @@serial_number>=")
            .append(std::to_string(first))
            .append(" & @@serial_number<=")
            .append(std::to_string(last));
    return ranges;
}

} // namespace

std::string pymol_script(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places) {
    const std::string chain = pymol_chain(of.in_file);
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
    std::string script =
        head(of, "Open the structure first.") + "color " + chimerax_chain(of.in_file, "") + " " + rest_colour + "\n";
    for (const Part& part : parts_of(of, places))
        script += comment(part.note) + "name " + part.name + " " +
                  chimerax_chain(of.in_file, std::string(":").append(residues(of.residues, part.subchain, chimerax))) +
                  "\ncolor " + part.name + " " + part.colour + "\n";
    return script;
}

} // namespace loopwise::draw
