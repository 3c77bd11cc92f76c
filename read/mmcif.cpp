#include "read/mmcif.hpp"

#include "read/fields.hpp"
#include "read/refusal.hpp"
#include "words/text.hpp"

#include <gemmi/cif.hpp>

namespace loopwise::read {
namespace {

namespace cif = gemmi::cif;

/// The columns that are looked at; but for the coordinates all are optional. Names that authors give go before those of
/// the archive, except for what tells molecules apart.
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
    columns
};

const std::vector<std::string> tags = {
    "Cartn_x",        "Cartn_y",        "Cartn_z",       "?auth_asym_id",
    "?label_asym_id", "?auth_seq_id",   "?label_seq_id", "?pdbx_PDB_ins_code",
    "?auth_atom_id",  "?label_atom_id", "?auth_comp_id", "?label_comp_id",
    "?label_alt_id",  "?occupancy",     "?group_PDB",    "?pdbx_PDB_model_num",
    "?type_symbol"};

std::string text_at(cif::Table::Row& row, Column column) {
    if (!row.has2(column)) return {};
    return cif::as_string(row[column]);
}

std::string either(cif::Table::Row& row, Column column, Column other) {
    std::string text = text_at(row, column);
    return text.empty() ? text_at(row, other) : text;
}

/// Without the standard uncertainty that may follow in brackets.
std::optional<double> number_at(cif::Table::Row& row, Column column) {
    const std::string text = text_at(row, column);
    return to_number(std::string_view(text).substr(0, text.find('(')));
}

double coordinate(cif::Table::Row& row, Column column, const FileAtom& atom) {
    const auto value = number_at(row, column);
    if (!value)
        refuse("has " + words::quoted(text_at(row, column)) + " for a coordinate of atom " + atom.name +
               " of residue " + atom.title());
    return *value;
}

double occupancy_of(cif::Table::Row& row, const FileAtom& atom) {
    if (!row.has2(occupancy)) return 1.0;
    const auto value = number_at(row, occupancy);
    if (!value && !atom.location.empty())
        refuse("has " + words::quoted(text_at(row, occupancy)) +
               " for the occupancy of a location of residue " + atom.title());
    return value.value_or(1.0);
}

/// Only polymers have numbers in their sequence; where nothing has, nothing is said.
FileAtom::Polymer polymer_of(cif::Table::Row& row, bool tells) {
    if (!tells) return FileAtom::Polymer::unknown;
    return row.has2(residue) ? FileAtom::Polymer::yes : FileAtom::Polymer::no;
}

FileAtom atom_of(cif::Table::Row& row, const std::string& atom_name, bool tells_polymers) {
    FileAtom atom;
    atom.name = atom_name;
    atom.model = text_at(row, model);
    if (atom.model.empty()) atom.model = "1";
    atom.chain = either(row, author_chain, chain);
    atom.part = text_at(row, chain);
    atom.residue_name = either(row, author_residue_name, residue_name);
    atom.residue = polymer::ResidueId::parse(either(row, author_residue, residue) + text_at(row, insertion));
    atom.location = text_at(row, location);
    atom.hetero = text_at(row, group) == "HETATM";
    atom.polymer = polymer_of(row, tells_polymers);
    atom.place = {coordinate(row, x, atom), coordinate(row, y, atom), coordinate(row, z, atom)};
    atom.occupancy = occupancy_of(row, atom);
    return atom;
}

bool is_calcium(cif::Table::Row& row, const std::string& atom_name) {
    const std::string element = text_at(row, symbol);
    return atom_name == "CA" && !element.empty() && element != "C";
}

std::vector<FileAtom> atoms_of(cif::Table& table, const Selection& selection) {
    if (!table.has_column(author_name) && !table.has_column(name)) refuse("has no names of atoms");
    if (!table.has_column(author_residue) && !table.has_column(residue)) refuse("has no numbers of residues");
    bool tells_polymers = false;
    for (auto row : table) tells_polymers = tells_polymers || row.has2(residue);
    std::vector<FileAtom> atoms;
    for (auto row : table) {
        const std::string named = atom_name(either(row, author_name, name));
        if (is_of_use(named, selection) && !is_calcium(row, named))
            atoms.push_back(atom_of(row, named, tells_polymers));
    }
    return atoms;
}

cif::Document parse(std::string_view text) {
    try {
        return cif::read_memory(text.data(), text.size(), "mmCIF");
    } catch (const tao::pegtl::parse_error& error) {
        const auto place = error.positions().empty() ? 0 : error.positions().front().line;
        std::string reason = error.what();
        if (const auto colon = reason.rfind(": "); colon != std::string::npos)
            reason = reason.substr(colon + 2);
        refuse("is no whole mmCIF file: line " + std::to_string(place) + ", " + reason);
    }
}

/// A line with nothing but the mark that many programs put after every table.
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

/// A file that goes on after its atoms holds them all. One that ends with them is cut off if its last line
/// has no end, or if it marks the end of its tables but not of this one; otherwise nobody can know.
void judge_end(std::string_view text, const cif::Block& block, std::vector<std::string>& notes) {
    if (!ends_with_atoms(block)) return;
    std::string_view rest = text;
    while (!rest.empty() && (rest.back() == '\n' || rest.back() == ' ')) rest.remove_suffix(1);
    const std::size_t before = rest.rfind('\n');
    const std::string_view last = before == std::string_view::npos ? rest : rest.substr(before + 1);
    if (last.substr(0, 1) == "#") return;
    if (text.back() != '\n') refuse("ends inside a line of its atoms: it is cut off");
    if (has_marks(text)) refuse("ends inside its atoms, without the # that closes its tables: it is cut off");
    notes.push_back("the file ends with its atoms and no mark: whether it is complete cannot be known");
}

} // namespace

FileAtoms read_mmcif(std::string_view text, const Selection& selection) {
    cif::Document document = parse(text);
    FileAtoms read;
    cif::Block* found = nullptr;
    for (cif::Block& block : document.blocks) {
        if (!block.find("_atom_site.", tags).ok() || block.find_mmcif_category("_atom_site.").length() == 0)
            continue;
        if (found != nullptr) refuse("holds atoms in two data blocks, " + found->name + " and " + block.name);
        found = &block;
    }
    if (found == nullptr) refuse("holds no atoms with coordinates (_atom_site.Cartn_x, _y and _z)");
    cif::Table table = found->find("_atom_site.", tags);
    read.atoms = atoms_of(table, selection);
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
