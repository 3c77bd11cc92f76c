#include "read/text.hpp"

#include "read/fields.hpp"
#include "read/refusal.hpp"
#include "words/numbers.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <span>

namespace loopwise::read {
namespace {

struct Line {
    std::size_t number;
    std::string_view text;
    std::vector<std::string_view> fields;
};

bool is_whole(std::string_view field) {
    if (field.starts_with('-') || field.starts_with('+')) field.remove_prefix(1);
    return !field.empty() && field.find_first_not_of("0123456789") == std::string_view::npos;
}

std::size_t numbers_in(const Line& line) {
    return static_cast<std::size_t>(std::count_if(line.fields.begin(), line.fields.end(),
                                                  [](std::string_view f) { return to_number(f).has_value(); }));
}

std::vector<std::string_view> fields_of(std::string_view line) {
    constexpr std::string_view blanks = " \t\v\f";
    std::vector<std::string_view> fields;
    while (true) {
        const std::size_t from = line.find_first_not_of(blanks);
        if (from == std::string_view::npos) return fields;
        line.remove_prefix(from);
        fields.push_back(line.substr(0, line.find_first_of(blanks)));
        line.remove_prefix(fields.back().size());
    }
}

/// Lines that are not blank.
std::vector<Line> lines_of(std::string_view text) {
    std::vector<Line> lines;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = next_line(text);
        std::vector<std::string_view> fields = fields_of(line);
        if (!fields.empty()) lines.push_back({number, line, std::move(fields)});
    }
    return lines;
}

void refuse_binary(std::string_view text) {
    const auto is_odd = [](char c) { return (c >= 0 && c < ' ' && (c < '\t' || c > '\r')) || c == '\x7f'; };
    if (std::any_of(text.begin(), text.end(), is_odd)) refuse("not a text in ASCII or UTF-8");
}

[[noreturn]] void refuse_form(const Line& line, const std::string& found) {
    refuse_line(line.number, "expected x y z or id x y z, found " + found);
}

/// The columns of a line. The first line decides for all.
struct Form {
    std::size_t fields;
    std::optional<std::string_view> atom; ///< the name in the first field
};

bool has_name(const Line& line) { return line.fields.size() == 4 && !to_number(line.fields[0]); }

/// A line with 3 or 4 fields and two numbers is rather a damaged bead than a title.
bool may_be_title(const Line& line) {
    const std::size_t numbers = numbers_in(line);
    if (numbers == line.fields.size()) return false;
    return numbers < 2 || line.fields.size() < 3 || line.fields.size() > 4;
}

struct Head {
    bool counted = false;
    std::string note{}; ///< how a title was read
};

/// After the counted lines another count may follow.
void refuse_frames(std::span<const Line> lines, const std::optional<double>& count) {
    if (!count || *count < 0.0 || static_cast<double>(lines.size()) <= *count) return;
    const Line& next = lines[static_cast<std::size_t>(*count)];
    if (next.fields.size() == 1 && is_whole(next.fields[0]))
        refuse_line(next.number, "another frame; only files of one frame are read, such as head -n " +
                                     std::to_string(next.number - 1) + " gives");
}

/// The title may be blank. Some files lack it: then the line after the count is a bead.
Head take_count(std::span<const Line>& lines) {
    const Line first = lines.front();
    const auto count = to_number(first.fields[0]);
    lines = lines.subspan(1);
    const bool blank_title = lines.empty() || lines.front().number > first.number + 1;
    const auto are_counted = [&] { return count && static_cast<double>(lines.size()) == *count; };
    if (blank_title && are_counted()) return {true};
    if (!blank_title && are_counted() && numbers_in(lines.front()) > 2)
        return {true, "no title: the line after the count is read as a bead"};
    if (!blank_title) lines = lines.subspan(1);
    refuse_frames(lines, count);
    if (!are_counted())
        refuse_line(first.number, "the count is " + std::string(first.fields[0]) + ", but " +
                                      words::counted(lines.size(), "line") +
                                      (lines.size() == 1 ? " follows" : " follow") + " the title");
    return {true};
}

/// Takes the count and the title of an XYZ file off the lines, or a title alone.
Head take_head(std::span<const Line>& lines) {
    if (lines.empty()) return {};
    const Line& first = lines.front();
    if (first.fields.size() == 1 && is_whole(first.fields[0])) return take_count(lines);
    if (!may_be_title(first)) return {};
    lines = lines.subspan(1);
    return {false, "first line read as a title: " + words::quoted(first.text)};
}

Form form_of(const Line& first, bool counted) {
    if (first.fields.size() != 3 && first.fields.size() != 4)
        refuse_form(first, words::counted(first.fields.size(), "column"));
    if (!has_name(first)) return {first.fields.size(), std::nullopt};
    if (!counted)
        refuse_form(first, words::quoted(first.fields[0]) + "; atom names need the count and title of an XYZ file");
    return {first.fields.size(), first.fields[0]};
}

double coordinate(const Line& line, std::string_view field) {
    const auto value = to_number(field);
    if (!value) refuse_form(line, "coordinate " + words::quoted(field));
    return *value;
}

polymer::ResidueId residue_of(const Line& line, const Form& form, std::size_t position) {
    if (form.fields == 3 || form.atom) return polymer::ResidueId(static_cast<std::int32_t>(position + 1));
    if (!is_whole(line.fields[0])) refuse_form(line, "id " + words::quoted(line.fields[0]));
    return polymer::ResidueId::parse(line.fields[0]);
}

void refuse_other_form(const Line& line, const Form& form) {
    if (line.fields.size() != form.fields)
        refuse_line(line.number, "expected " + std::to_string(form.fields) + " columns as before, found " +
                                     std::to_string(line.fields.size()));
    if (form.atom && line.fields[0] != *form.atom)
        refuse_line(line.number, "atom " + words::quoted(line.fields[0]) + " after " + words::quoted(*form.atom) +
                                     "; a chain has atoms of one name");
}

/// Such columns are ids, x and y; z was lost.
void refuse_lost_column(std::span<const Line> lines, const Chain& beads) {
    constexpr std::size_t enough = 4;
    const auto counts = [&](const ChainAtom& bead) {
        return bead.x == static_cast<double>(&bead - beads.data()) + 1.0;
    };
    if (beads.size() >= enough && std::all_of(beads.begin(), beads.end(), counts))
        refuse_form(lines.front(), "three columns of which the first counts the lines");
}

polymer::NamedChain chain_of(std::span<const Line> lines, const Form& form) {
    polymer::NamedChain chain;
    for (const Line& line : lines) {
        refuse_other_form(line, form);
        const std::size_t position = chain.beads.size(), x = form.fields - 3;
        chain.residues.push_back(residue_of(line, form, position));
        chain.beads.push_back({coordinate(line, line.fields[x]), coordinate(line, line.fields[x + 1]),
                               coordinate(line, line.fields[x + 2]), 0});
    }
    if (form.fields == 3) refuse_lost_column(lines, chain.beads);
    const std::set<polymer::ResidueId> different(chain.residues.begin(), chain.residues.end());
    const bool ring = chain.residues.front() == chain.residues.back();
    if (different.size() + (ring && chain.residues.size() > 1) < chain.residues.size())
        chain.notes.push_back("ids repeat; is the first of the four columns an id?");
    return chain;
}

/// Runs of lines without a blank line between.
std::vector<std::span<const Line>> blocks_of(std::span<const Line> lines) {
    std::vector<std::span<const Line>> blocks;
    for (std::size_t from = 0, to = 0; from < lines.size(); from = to) {
        for (to = from + 1; to < lines.size() && lines[to].number == lines[to - 1].number + 1;) ++to;
        blocks.push_back(lines.subspan(from, to - from));
    }
    return blocks;
}

constexpr std::size_t fewest_beads_of_chain = 3;

/// The chains that blank lines separate: of lines without ids all, otherwise rings, and chains whose ids begin again.
/// Fewer than three beads are no chain.
std::vector<polymer::NamedChain> separate_chains(const std::vector<std::span<const Line>>& blocks, const Form& form) {
    if (std::any_of(blocks.begin(), blocks.end(),
                    [](const auto& block) { return block.size() < fewest_beads_of_chain; }))
        return {};
    std::vector<polymer::NamedChain> chains;
    for (const std::span<const Line> block : blocks) {
        chains.push_back(chain_of(block, form));
        chains.back().name = std::to_string(chains.size());
    }
    const bool are_rings = std::all_of(chains.begin(), chains.end(), polymer::is_ring);
    const bool go_on = std::adjacent_find(chains.begin(), chains.end(),
                                          [](const polymer::NamedChain& chain, const polymer::NamedChain& next) {
                                              return !(chain.residues.back() < next.residues.front());
                                          }) == chains.end();
    return are_rings || !go_on ? std::move(chains) : std::vector<polymer::NamedChain>{};
}

std::vector<polymer::NamedChain> chains_of(std::span<const Line> lines, const Form& form) {
    const std::vector<std::span<const Line>> blocks = blocks_of(lines);
    if (blocks.size() == 1 || blocks.size() == lines.size()) return {chain_of(lines, form)};
    std::vector<polymer::NamedChain> chains = separate_chains(blocks, form);
    std::string note = "blank line before line " + std::to_string(blocks[1].front().number);
    note += chains.empty() ? " ignored: read as one chain" : ": read as " + words::counted(chains.size(), "chain");
    if (chains.empty()) chains.push_back(chain_of(lines, form));
    for (polymer::NamedChain& chain : chains) chain.notes.push_back(note);
    return chains;
}

} // namespace

polymer::Molecule read_chain_text(std::string_view text) {
    refuse_binary(text);
    const std::vector<Line> all = lines_of(text);
    std::span<const Line> lines = all;
    const Head head = take_head(lines);
    if (lines.empty()) refuse("no beads");
    const Form form = form_of(lines.front(), head.counted);
    polymer::Molecule molecule;
    if (head.counted)
        molecule.chains.push_back(chain_of(lines, form));
    else
        molecule.chains = chains_of(lines, form);
    if (!head.note.empty()) molecule.chains.front().notes.push_back(head.note);
    if (!text.ends_with('\n'))
        molecule.chains.back().notes.push_back("the last line has no line end; the file may be truncated");
    return molecule;
}

} // namespace loopwise::read
