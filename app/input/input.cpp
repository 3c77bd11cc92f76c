#include "input/input.hpp"

#include "input/coordinates.hpp"
#include "model/cut.hpp"
#include "textio/reader.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace loopwise {
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

std::vector<NamedChain> read_text_file(const std::string& path) {
    std::ifstream file(path);
    if (!file) refuse("cannot be opened");
    Reading reading = read_text(atom_lines(file));
    if (reading.repeated) refuse("two neighbouring atoms are at the same place");
    if (reading.chain.empty()) refuse("holds no atom");
    std::vector<std::string> labels = labels_of(reading.chain);
    return {{"", std::move(reading.chain), std::move(labels)}};
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
    if (!pdb && !has_extension(path, {".cif", ".mmcif"})) return read_text_file(path);
    return read_coordinates(path, pdb);
}

void cut(NamedChain& named, int first, int last) {
    const Chain& beads = named.beads;
    const auto [low, high] = std::minmax(beads.front().id, beads.back().id);
    Chain stretch = beads;
    if (!cut(stretch, first, last))
        refuse("no residues " + std::to_string(std::min(first, last)) + " to " +
               std::to_string(std::max(first, last)) + " in " + std::to_string(low) + " to " +
               std::to_string(high));
    const auto [from, to] = std::minmax(first, last);
    const auto skipped = std::find_if(beads.begin(), beads.end(),
                                      [from = from, to = to](const ChainAtom& bead) {
                                          return from <= bead.id && bead.id <= to;
                                      }) -
                         beads.begin();
    named.labels.erase(named.labels.begin(), named.labels.begin() + skipped);
    named.labels.resize(stretch.size());
    named.beads = std::move(stretch);
}

const char* readable_formats() {
    return "PDB (.pdb .ent) and mmCIF (.cif .mmcif), each also with .gz; anything else is chain text";
}

} // namespace loopwise
