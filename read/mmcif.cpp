#include "read/mmcif.hpp"

#include "read/fields.hpp"
#include "read/refusal.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <gemmi/cif.hpp>
#include <map>

namespace loopwise::read {
namespace {

namespace cif = gemmi::cif;

/// The columns that are read. Only the coordinates are required. Names by the authors are preferred to those
/// by the archive; only the part is the archive's, as it tells molecules apart.
enum Column {
    x,
    y,
    z,
    author_chain,
    chain,
    author_residue,
    residue,
    insertion,
    author_name,
    name,
    author_residue_name,
    residue_name,
    location,
    occupancy,
    group,
    model,
    symbol,
    entity,
    columns
};

const std::vector<std::string> tags = {"Cartn_x",        "Cartn_y",         "Cartn_z",       "?auth_asym_id",
                                       "?label_asym_id", "?auth_seq_id",    "?label_seq_id", "?pdbx_PDB_ins_code",
                                       "?auth_atom_id",  "?label_atom_id",  "?auth_comp_id", "?label_comp_id",
                                       "?label_alt_id",  "?occupancy",      "?group_PDB",    "?pdbx_PDB_model_num",
                                       "?type_symbol",   "?label_entity_id"};

std::string text_at(cif::Table::Row& row, Column column) {
    if (!row.has2(column)) return {};
    return cif::as_string(row[column]);
}

std::string either(cif::Table::Row& row, Column column, Column other) {
    std::string text = text_at(row, column);
    return text.empty() ? text_at(row, other) : text;
}

/// Ignores a standard uncertainty in brackets.
std::optional<double> number_at(cif::Table::Row& row, Column column) {
    const std::string text = text_at(row, column);
    return to_number(std::string_view(text).substr(0, text.find('(')));
}

double coordinate(cif::Table::Row& row, Column column, const FileAtom& atom) {
    const auto value = number_at(row, column);
    if (!value)
        refuse("residue " + atom.title() + ", atom " + atom.name + ": coordinate " +
               words::quoted(text_at(row, column)) + " is not a number");
    return *value;
}

double occupancy_of(cif::Table::Row& row, const FileAtom& atom) {
    if (!row.has2(occupancy)) return 1.0;
    const auto value = number_at(row, occupancy);
    if (!value && !atom.location.empty())
        refuse("residue " + atom.title() + ", location " + atom.location + ": occupancy " +
               words::quoted(text_at(row, occupancy)) + " is not a number");
    return value.value_or(1.0);
}

/// What a file tells about its polymers.
struct Polymers {
    std::map<std::string, bool> entities; ///< whether it is one, by the name of the entity
    bool sequences = false;               ///< some residues have a position in the sequence

    /// Residues without a position belong to no polymer. Those with one may be ligands in files that do not tell
    /// the types of their entities: some programs give every residue a position.
    FileAtom::Polymer of(cif::Table::Row& row) const {
        if (sequences && !row.has2(residue)) return FileAtom::Polymer::no;
        const auto own = entities.find(text_at(row, entity));
        if (own == entities.end()) return FileAtom::Polymer::unknown;
        return own->second ? FileAtom::Polymer::yes : FileAtom::Polymer::no;
    }
};

Polymers polymers_of(cif::Block& block, cif::Table& atoms) {
    Polymers polymers;
    for (auto row : block.find("_entity.", {"id", "type"}))
        polymers.entities[row.str(0)] = gemmi::iequal(row.str(1), "polymer");
    for (auto row : atoms) polymers.sequences = polymers.sequences || row.has2(residue);
    return polymers;
}

FileAtom atom_of(cif::Table::Row& row, const std::string& atom_name, const Polymers& polymers) {
    FileAtom atom;
    atom.name = atom_name;
    atom.model = text_at(row, model);
    if (atom.model.empty()) atom.model = "1";
    atom.chain = either(row, author_chain, chain);
    atom.part = text_at(row, chain);
    atom.residue_name = either(row, author_residue_name, residue_name);
    atom.residue = polymer::ResidueId::parse(either(row, author_residue, residue) + text_at(row, insertion));
    atom.position = text_at(row, residue);
    atom.location = text_at(row, location);
    atom.hetero = text_at(row, group) == "HETATM";
    atom.polymer = polymers.of(row);
    atom.place = {coordinate(row, x, atom), coordinate(row, y, atom), coordinate(row, z, atom)};
    atom.occupancy = occupancy_of(row, atom);
    return atom;
}

std::vector<FileAtom> atoms_of(cif::Table& table, const Polymers& polymers, const Selection& selection) {
    if (!table.has_column(author_name) && !table.has_column(name))
        refuse("no atom names (_atom_site.label_atom_id or auth_atom_id)");
    if (!table.has_column(author_residue) && !table.has_column(residue))
        refuse("no residue numbers (_atom_site.label_seq_id or auth_seq_id)");
    std::vector<FileAtom> atoms;
    for (auto row : table) {
        const std::string named = atom_name(either(row, author_name, name));
        if (is_of_use(named, selection) &&
            !is_calcium(named, text_at(row, symbol), either(row, author_residue_name, residue_name)))
            atoms.push_back(atom_of(row, named, polymers));
    }
    return atoms;
}

std::optional<Box> box_of(cif::Block& block) {
    std::array<double, 6> cell{};
    const char* const names[] = {"_cell.length_a",    "_cell.length_b",   "_cell.length_c",
                                 "_cell.angle_alpha", "_cell.angle_beta", "_cell.angle_gamma"};
    for (std::size_t i = 0; i < cell.size(); ++i) {
        const std::string* const text = block.find_value(names[i]);
        const auto value = to_number(text == nullptr ? "" : std::string_view(*text).substr(0, text->find('(')));
        if (!value) return std::nullopt;
        cell[i] = *value;
    }
    return box_with(cell);
}

cif::Document parse(std::string_view text) {
    try {
        return cif::read_memory(text.data(), text.size(), "mmCIF");
    } catch (const tao::pegtl::parse_error& error) {
        const auto place = error.positions().empty() ? 0 : error.positions().front().line;
        std::string reason = error.what();
        if (const auto colon = reason.rfind(": "); colon != std::string::npos) reason = reason.substr(colon + 2);
        std::replace(reason.begin(), reason.end(), '\n', ' ');
        refuse("invalid or truncated mmCIF: line " + std::to_string(place) + ": " + reason);
    }
}

/// Many programs write a line of # after every table.
bool is_mark(std::string_view line) { return trimmed(line) == "#"; }

bool has_marks(std::string_view text) {
    while (!text.empty())
        if (is_mark(next_line(text))) return true;
    return false;
}

bool ends_with_atoms(const cif::Block& block) {
    if (block.items.empty()) return false;
    const cif::Item& last = block.items.back();
    return last.type == cif::ItemType::Loop && !last.loop.tags.empty() &&
           gemmi::istarts_with(last.loop.tags.front(), "_atom_site.");
}

/// One program writes such lines before its tables, but none at the end.
bool ends_without_mark(std::string_view text) {
    constexpr std::string_view origin = "# generated by PyMOL";
    while (text.substr(0, 1) == "#" || text.substr(0, 1) == "\n")
        if (next_line(text).substr(0, origin.size()) == origin) return true;
    return false;
}

/// A file that continues after its atoms has them all. A file that ends with its atoms is truncated if its
/// last line has no line end, or if # lines follow its other tables but not the atoms. Otherwise it cannot be
/// known.
void judge_end(std::string_view text, const cif::Block& block, std::vector<std::string>& notes) {
    if (!ends_with_atoms(block)) return;
    std::string_view rest = text;
    while (!rest.empty() && (rest.back() == '\n' || rest.back() == ' ')) rest.remove_suffix(1);
    const std::size_t before = rest.rfind('\n');
    const std::string_view last = before == std::string_view::npos ? rest : rest.substr(before + 1);
    if (last.substr(0, 1) == "#") return;
    if (text.back() != '\n') refuse("truncated mmCIF: it ends inside a line of its atoms");
    if (has_marks(text) && !ends_without_mark(text))
        refuse("truncated mmCIF: a # line follows its other tables, but not its atoms");
    notes.push_back("the file ends with its atoms and no # line; it may be truncated");
}

} // namespace

FileAtoms read_mmcif(std::string_view text, const Selection& selection) {
    cif::Document document = parse(text);
    FileAtoms read;
    cif::Block* found = nullptr;
    for (cif::Block& block : document.blocks) {
        if (!block.find("_atom_site.", tags).ok() || block.find_mmcif_category("_atom_site.").length() == 0) continue;
        if (found != nullptr)
            refuse("atoms in two data blocks, " + found->name + " and " + block.name + "; split the file");
        found = &block;
    }
    if (found == nullptr) refuse("no atoms with coordinates (_atom_site.Cartn_x, _y and _z)");
    cif::Table table = found->find("_atom_site.", tags);
    read.atoms = atoms_of(table, polymers_of(*found, table), selection);
    read.box = box_of(*found);
    judge_end(text, document.blocks.back(), read.notes);
    return read;
}

bool looks_like_mmcif(std::string_view text) {
    while (!text.empty()) {
        const std::string_view content = trimmed(next_line(text));
        if (!content.empty() && content.front() != '#') return content.substr(0, 5) == "data_";
    }
    return false;
}

} // namespace loopwise::read
