#include "input.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

#ifdef CLOSURE_SURVEY_GEMMI
#include <gemmi/gz.hpp>
#include <gemmi/mmread.hpp>
#endif

namespace {

[[noreturn]] void refuse(const std::string& reason) { throw std::runtime_error(reason); }

bool is_blank(const std::string& line) { return line.find_first_not_of(" \t\r") == std::string::npos; }

/// The readers of the library make something of every line; a survey takes numbers or nothing.
bool is_atom(const std::string& line) {
    std::istringstream fields(line);
    ChainAtom atom{};
    return static_cast<bool>(fields >> atom.id >> atom.x >> atom.y >> atom.z);
}

/// The lines of the file that are not blank: ChainRead_fromString() stops at a blank one.
std::string atom_lines(std::ifstream& file) {
    std::string text, line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (is_blank(line)) continue;
        if (!is_atom(line)) refuse("line " + std::to_string(number) + " is not an atom: id x y z");
        text += line + '\n';
    }
    return text;
}

std::vector<NamedChain> read_text(const std::string& path) {
    std::ifstream file(path);
    if (!file) refuse("cannot be opened");
    bool repeated_atom = false;
    Chain chain = ChainRead_fromString(atom_lines(file), repeated_atom);
    if (repeated_atom) refuse("two neighbouring atoms are at the same place");
    if (chain.empty()) refuse("holds no atom");
    return {{"", std::move(chain)}};
}

#ifdef CLOSURE_SURVEY_GEMMI

bool may_be_protein(const gemmi::Residue& residue) {
    return residue.entity_type == gemmi::EntityType::Polymer ||
           residue.entity_type == gemmi::EntityType::Unknown;
}

/// The first alternate location of the C-alpha atom; calcium has the same name, but another element.
std::optional<ChainAtom> c_alpha(const gemmi::Residue& residue) {
    const auto found = std::find_if(residue.atoms.begin(), residue.atoms.end(), [](const gemmi::Atom& a) {
        return a.name == "CA" && a.element == gemmi::El::C;
    });
    if (found == residue.atoms.end() || !residue.seqid.num) return std::nullopt;
    const gemmi::Position& p = found->pos;
    if (!std::isfinite(p.x + p.y + p.z)) refuse("residue " + residue.seqid.str() + " has no coordinates");
    return ChainAtom{p.x, p.y, p.z, *residue.seqid.num};
}

Chain c_alphas(const gemmi::Chain& from) {
    Chain chain;
    for (const gemmi::Residue& residue : from.first_conformer()) {
        if (!may_be_protein(residue)) continue;
        if (const auto atom = c_alpha(residue)) chain.push_back(*atom);
    }
    return chain;
}

gemmi::Structure read_mmcif(const std::string& path) {
    const gemmi::cif::Document document = gemmi::cif::read(gemmi::MaybeGzipped(path));
    if (document.blocks.empty()) refuse("holds no data block");
    return gemmi::make_structure(document);
}

std::vector<NamedChain> read_coordinates(const std::string& path, bool pdb) {
    gemmi::Structure structure = pdb ? gemmi::read_pdb(gemmi::MaybeGzipped(path)) : read_mmcif(path);
    structure.merge_chain_parts();
    std::vector<NamedChain> chains;
    if (structure.models.empty()) refuse("holds no model");
    for (const gemmi::Chain& chain : structure.models.front().chains) {
        Chain atoms = c_alphas(chain);
        if (!atoms.empty()) chains.push_back({chain.name, std::move(atoms)});
    }
    if (chains.empty()) refuse("holds no C-alpha atom");
    return chains;
}

#endif

bool has_extension(std::string path, std::initializer_list<const char*> extensions) {
    if (path.ends_with(".gz")) path.resize(path.size() - 3);
    std::transform(path.begin(), path.end(), path.begin(), [](unsigned char c) { return std::tolower(c); });
    return std::any_of(extensions.begin(), extensions.end(),
                       [&](const char* extension) { return path.ends_with(extension); });
}

} // namespace

std::vector<NamedChain> read_chains(const std::string& path) {
    if (std::filesystem::is_directory(path)) refuse("is a directory");
    if (!std::ifstream(path)) refuse("cannot be opened");
    const bool pdb = has_extension(path, {".pdb", ".ent"});
    if (!pdb && !has_extension(path, {".cif", ".mmcif"})) return read_text(path);
#ifdef CLOSURE_SURVEY_GEMMI
    return read_coordinates(path, pdb);
#else
    refuse("PDB and mmCIF cannot be read: closure_survey was built without gemmi");
#endif
}

void cut(Chain& chain, int first, int last) {
    const auto [low, high] = std::minmax(chain.front().id, chain.back().id);
    const auto [from, to] = std::minmax(first, last);
    const bool any = std::any_of(chain.begin(), chain.end(), [from = from, to = to](const ChainAtom& atom) {
        return from <= atom.id && atom.id <= to;
    });
    if (from < low || to > high || !any)
        refuse("no residues " + std::to_string(from) + " to " + std::to_string(to) + " in " +
               std::to_string(low) + " to " + std::to_string(high));
    CutChain(chain, from, to);
}

const char* readable_formats() {
#ifdef CLOSURE_SURVEY_GEMMI
    return "PDB (.pdb .ent) and mmCIF (.cif .mmcif), each also with .gz; anything else is chain text";
#else
    return "chain text only: this program was built without gemmi, which reads PDB and mmCIF";
#endif
}
