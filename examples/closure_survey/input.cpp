#include "input.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#ifdef CLOSURE_SURVEY_GEMMI
#include "coordinates.hpp"
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
