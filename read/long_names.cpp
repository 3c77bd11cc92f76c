#include "read/long_names.hpp"

#include "read/fields.hpp"
#include "read/pdb_columns.hpp"

#include <algorithm>
#include <optional>

namespace loopwise::read {
namespace {

constexpr std::size_t fourth_letter = 20, chain_letter = 21;

struct Residue {
    std::size_t first, last; ///< lines
    char fourth, chain;
    std::string_view id;
    std::optional<double> number;
};

bool go_on(const Residue& residue, const Residue& next) {
    return residue.chain == next.chain && residue.number && next.number && *residue.number <= *next.number;
}

/// In few files there is anything in column 21.
bool has_fourth_letters(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = next_line(text);
        if (line.size() > fourth_letter && line[fourth_letter] != ' ' && pdb::is_atom(line)) return true;
    }
    return false;
}

} // namespace

LongNames::LongNames(std::string_view text) {
    if (!has_fourth_letters(text)) return;
    std::vector<Residue> run; // residues whose numbers go on
    const auto end_run = [&] {
        const bool one_kind = std::all_of(run.begin(), run.end(),
                                          [&](const Residue& residue) { return residue.fourth == run.front().fourth; });
        for (const Residue& residue : run)
            if (!one_kind && residue.fourth != ' ') lines_.emplace_back(residue.first, residue.last);
        run.clear();
    };
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view whole = next_line(text);
        if (!pdb::is_atom(whole)) {
            if (whole.starts_with("TER") || whole.starts_with("END") || whole.starts_with("MODEL")) end_run();
            continue;
        }
        const std::string_view line = pdb::atom_columns(whole);
        if (line.size() < pdb::end_of_coordinates) continue;
        const std::string_view id = pdb::columns(line, 23, 27);
        const Residue residue{number,
                              number,
                              line[fourth_letter],
                              line[chain_letter],
                              id,
                              to_number(trimmed(pdb::columns(line, 23, 26)))};
        if (!run.empty() && run.back().fourth == residue.fourth && run.back().chain == residue.chain &&
            run.back().id == id) {
            run.back().last = number;
            continue;
        }
        if (!run.empty() && !go_on(run.back(), residue)) end_run();
        run.push_back(residue);
    }
    end_run();
}

bool LongNames::contains(std::size_t line) const {
    const auto next = std::upper_bound(lines_.begin(), lines_.end(), line,
                                       [](std::size_t at, const auto& lines) { return at < lines.first; });
    return next != lines_.begin() && line <= std::prev(next)->second;
}

} // namespace loopwise::read
