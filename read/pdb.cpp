#include "read/pdb.hpp"

#include "read/fields.hpp"
#include "read/hybrid_36.hpp"
#include "read/long_names.hpp"
#include "read/pdb_columns.hpp"
#include "read/refusal.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <optional>
#include <set>

namespace loopwise::read {
namespace {

using pdb::columns, pdb::field;

/// Records among the atoms of a file.
constexpr std::array atom_records = {std::string_view("ATOM"),   std::string_view("HETATM"), std::string_view("ANISOU"),
                                     std::string_view("SIGATM"), std::string_view("SIGUIJ"), std::string_view("TER")};

/// Whether the line is such a record, or the beginning of one that was cut off.
bool is_among_atoms(std::string_view line) {
    return std::any_of(atom_records.begin(), atom_records.end(), [&](std::string_view record) {
        return line.starts_with(record) || record.starts_with(trimmed(line));
    });
}

bool is_record(std::string_view line, std::string_view name) { return field(line, 1, 6) == name; }

class PdbReader {
  public:
    PdbReader(std::string_view text, const Selection& selection) : selection_(selection), long_names_(text) {}

    FileAtoms read(std::string_view text) {
        while (!text.empty()) {
            ends_in_line_ = text.find('\n') == std::string_view::npos;
            const std::string_view line = next_line(text);
            ++number_;
            line_ = line;
            if (pdb::is_atom(line))
                atom(pdb::atom_columns(line), line.starts_with("HETATM"));
            else
                other(line);
        }
        judge_end();
        return std::move(read_);
    }

  private:
    void atom(std::string_view line, bool hetero) {
        if (!open_) begin_model(std::to_string(models_.size() + 1));
        complete_ = false;
        const bool is_long = long_names_.contains(number_);
        chain_ = field(line, is_long ? 22 : 21, 22);
        if (chain_.empty()) chain_ = segment(line); // some programs write only that
        const std::string name = atom_name(trimmed(columns(line, 13, 16)));
        if (line.size() < pdb::end_of_coordinates)
            refuse_atom("the record ends before column 54, where its coordinates end");
        const PointR3 place{coordinate(line, 31), coordinate(line, 39), coordinate(line, 47)};
        if (!trimmed(columns(line, 28, 30)).empty())
            refuse_atom("columns 28 to 30 are not blank; the columns are shifted");
        if (!is_of_use(name, selection_) || is_calcium(name, element(line), field(line, 18, 20))) return;
        FileAtom atom;
        atom.model = models_.back();
        atom.chain = chain_;
        atom.part = std::to_string(parts_of_chain(chain_));
        atom.segment = segment(line);
        atom.residue_name = field(line, 18, is_long ? 21 : 20);
        atom.residue = residue(line);
        atom.name = name;
        atom.location = field(line, 17, 17);
        atom.occupancy = occupancy(line, atom.location);
        atom.place = place;
        atom.hetero = hetero;
        read_.atoms.push_back(std::move(atom));
    }

    void other(std::string_view line) {
        if (is_record(line, "MODEL")) {
            if (open_) refuse_line(number_, "MODEL inside another model");
            const std::string name = field(line, 7, 20);
            begin_model(name.empty() ? std::to_string(models_.size() + 1) : name);
            in_model_ = true;
        } else if (is_record(line, "ENDMDL")) {
            end_model();
        } else if (is_record(line, "END")) {
            if (in_model_) refuse_line(number_, "END inside a model; the file is truncated");
            end_model();
            complete_ = true;
        } else if (is_record(line, "TER")) {
            end_chain();
        } else if (is_record(line, "HEADER") || is_record(line, "SEQRES")) {
            deposited_ = true;
        } else if (is_record(line, "CRYST1")) {
            if (!read_.box) read_.box = box_of(line);
        } else if (!models_.empty() && !is_among_atoms(line)) {
            complete_ = true;
        }
    }

    void begin_model(const std::string& name) {
        if (!known_models_.insert(name).second) refuse_line(number_, "second model " + name);
        models_.push_back(name);
        open_ = true;
        ended_parts_.clear();
        chain_.clear();
    }

    void end_model() {
        open_ = in_model_ = false;
        last_model_ended_ = true;
        chain_.clear();
    }

    void end_chain() {
        if (!open_) return;
        if (ended_parts_[chain_]++ > 0) return; // ligands and water follow the first one
        for (auto atom = read_.atoms.rbegin(); atom != read_.atoms.rend(); ++atom) {
            if (atom->model != models_.back() || atom->chain != chain_) break;
            atom->polymer = FileAtom::Polymer::yes;
        }
    }

    std::size_t parts_of_chain(const std::string& chain) const {
        const auto ended = ended_parts_.find(chain);
        return ended == ended_parts_.end() ? 0 : ended->second;
    }

    [[noreturn]] void refuse_atom(const std::string& reason) const {
        constexpr std::size_t longest = 80;
        refuse_line(number_, reason + ": " + words::quoted(line_, longest));
    }

    static std::optional<Box> box_of(std::string_view line) {
        std::array<double, 6> cell{};
        constexpr std::array<std::size_t, 7> ends = {6, 15, 24, 33, 40, 47, 54};
        for (std::size_t i = 0; i < cell.size(); ++i) {
            const auto value = to_number(trimmed(columns(line, ends[i] + 1, ends[i + 1])));
            if (!value) return std::nullopt;
            cell[i] = *value;
        }
        return box_with(cell);
    }

    polymer::ResidueId residue(std::string_view line) const {
        std::string number = field(line, 23, 26);
        if (const auto large = hybrid_36(number)) number = std::to_string(*large);
        if (!polymer::ResidueId::parse(number).is_number())
            refuse_atom("residue number " + words::quoted(number) + " is not a number");
        return polymer::ResidueId::parse(number + field(line, 27, 27));
    }

    double coordinate(std::string_view line, std::size_t first) const {
        const auto value = to_number(trimmed(columns(line, first, first + 7)));
        if (!value) refuse_atom("coordinate " + words::quoted(columns(line, first, first + 7)) + " is not a number");
        return *value;
    }

    /// 1 if blank. Only alternate locations need it.
    double occupancy(std::string_view line, const std::string& location) const {
        const std::string_view text = trimmed(columns(line, 55, 60));
        const auto value = to_number(text);
        if (!value && !text.empty() && !location.empty())
            refuse_atom("occupancy " + words::quoted(text) + " of an alternate location is not a number");
        return value.value_or(1.0);
    }

    /// Some programs have parts of numbers in its columns.
    static std::string segment(std::string_view line) {
        std::string text = field(line, 73, 76);
        return text.find('.') == std::string::npos ? text : "";
    }

    /// Old files have other things in its columns.
    static std::string element(std::string_view line) {
        const std::string text = field(line, 77, 78);
        return !text.empty() && std::isalpha(static_cast<unsigned char>(text[0])) != 0 ? text : "";
    }

    /// Deposited files have an END; a file that continues after its atoms has them all. Other programs may leave
    /// it out, so only a note is possible.
    void judge_end() {
        if (in_model_) refuse("truncated PDB: it ends inside model " + models_.back());
        const bool ends_with_model = !open_ && last_model_ended_;
        if (complete_ || models_.empty() || (ends_with_model && !deposited_)) return;
        if (deposited_ && !ends_with_model) refuse("truncated PDB: HEADER or SEQRES, but no END");
        read_.notes.push_back(ends_in_line_
                                  ? "no END record, and the last line has no line end; the file may be truncated"
                                  : "no END record; the file may be truncated");
    }

    const Selection& selection_;
    const LongNames long_names_;
    FileAtoms read_;
    std::size_t number_ = 0;
    std::string_view line_;
    std::string chain_;                              // of the last atom
    std::map<std::string, std::size_t> ended_parts_; // TER records by chain name
    std::vector<std::string> models_;
    std::set<std::string> known_models_;
    bool open_ = false;     // atoms belong to a model
    bool in_model_ = false; // that a MODEL record began
    bool last_model_ended_ = false;
    bool complete_ = false;
    bool deposited_ = false;
    bool ends_in_line_ = false;
};

} // namespace

FileAtoms read_pdb(std::string_view text, const Selection& selection) { return PdbReader(text, selection).read(text); }

bool looks_like_pdb(std::string_view text) {
    while (!text.empty())
        if (pdb::is_whole_atom(next_line(text))) return true;
    return false;
}

} // namespace loopwise::read
