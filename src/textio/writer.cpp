// The plain and the PDB layout of a chain.
#include "libloopwise.h"
#include "src/textio/number_text.hpp"

#include <fstream>

namespace loopwise::textio {
namespace {

/// A usual length of a line, for the first guess at the length of the text.
constexpr std::size_t usual_plain_line = 32;
constexpr std::size_t pdb_line = 69;

/// Appends the text with blanks before it up to the width of its column; a longer text is never cut.
void append_right_justified(std::string& to, std::string_view text, std::size_t width) {
    if (text.size() < width) to.append(width - text.size(), ' ');
    to += text;
}

class Writer {
  public:
    std::string plain(const Chain& chain) {
        text_.reserve(chain.size() * usual_plain_line);
        for (const ChainAtom& atom : chain) {
            text_ += number_.of(atom.id);
            for (const double coordinate : {atom.x, atom.y, atom.z}) (text_ += ' ') += number_.of(coordinate);
            text_ += '\n';
        }
        return std::move(text_);
    }

    std::string pdb(const Chain& chain) {
        constexpr std::size_t serial_column = 5;
        constexpr std::size_t residue_column = 4;
        text_.reserve(chain.size() * pdb_line);
        for (const ChainAtom& atom : chain) {
            text_ += "ATOM  ";
            append_right_justified(text_, number_.of(atom.id), serial_column);
            text_ += "  CA  XXX A";
            append_right_justified(text_, number_.of(atom.id), residue_column);
            text_ += "    ";
            for (const double coordinate : {atom.x, atom.y, atom.z}) append_pdb_coordinate(coordinate);
            text_ += "  1.00  1.00 C\n";
        }
        return std::move(text_);
    }

  private:
    /// A coordinate is cut, not rounded, so that its column begins with a blank.
    void append_pdb_coordinate(double coordinate) {
        constexpr std::size_t longest = 7;
        constexpr std::size_t column = 8;
        append_right_justified(text_, number_.of(coordinate).substr(0, longest), column);
    }

    NumberText number_;
    std::string text_;
};

} // namespace
} // namespace loopwise::textio

using namespace loopwise::textio;

std::string ChainWrite_toString(const std::vector<ChainAtom>& chain, bool plainFormat) {
    return plainFormat ? Writer().plain(chain) : Writer().pdb(chain);
}

void ChainWrite(char* fileName, const std::vector<ChainAtom>& chain, bool plainFormat) {
    if (fileName == nullptr) return;
    std::ofstream file(fileName);
    if (!file.is_open()) return;
    const std::string text = ChainWrite_toString(chain, plainFormat);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
}
