// The plain and the PDB layout of a chain.
#include "libloopwise.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

/// The text of a number under the global locale, from a fresh stream with default settings.
template <class Number> std::string stream_text(Number number) {
    std::ostringstream stream;
    stream << number;
    return stream.str();
}

/// The text with blanks before it up to the width of its column; a longer text is never cut.
std::string right_justified(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

/// A coordinate of a PDB line is cut, not rounded, so that its column begins with a blank.
std::string pdb_coordinate(double coordinate) {
    constexpr std::size_t longest = 7;
    constexpr std::size_t column = 8;
    return right_justified(stream_text(coordinate).substr(0, longest), column);
}

void append_plain_line(std::string& text, const ChainAtom& atom) {
    text += stream_text(atom.id) + ' ' + stream_text(atom.x) + ' ' + stream_text(atom.y) + ' ' +
            stream_text(atom.z) + '\n';
}

void append_pdb_line(std::string& text, const ChainAtom& atom) {
    constexpr std::size_t serial_column = 5;
    constexpr std::size_t residue_column = 4;
    const std::string id = stream_text(atom.id);
    text += "ATOM  " + right_justified(id, serial_column) + "  CA  XXX A" +
            right_justified(id, residue_column) + "    " + pdb_coordinate(atom.x) + pdb_coordinate(atom.y) +
            pdb_coordinate(atom.z) + "  1.00  1.00 C\n";
}

} // namespace

std::string ChainWrite_toString(const std::vector<ChainAtom>& chain, bool plainFormat) {
    std::string text;
    for (const ChainAtom& atom : chain)
        plainFormat ? append_plain_line(text, atom) : append_pdb_line(text, atom);
    return text;
}

void ChainWrite(char* fileName, const std::vector<ChainAtom>& chain, bool plainFormat) {
    if (fileName == nullptr) return;
    std::ofstream file(fileName);
    if (!file.is_open()) return;
    const std::string text = ChainWrite_toString(chain, plainFormat);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
}
