// The plain and the PDB layout of a chain. Numbers are written as the standard streams write them by default
// under the global locale.
#include "libloopwise.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <locale>
#include <sstream>
#include <string_view>

namespace loopwise::textio {
namespace {

/// Typical length of a line, for the first guess at the length of the text.
constexpr std::size_t usual_plain_line = 32;
constexpr std::size_t pdb_line = 69;
constexpr int significant_digits = 6;

class Writer {
  public:
    std::string plain(const Chain& chain) {
        text_.reserve(chain.size() * usual_plain_line);
        for (const ChainAtom& atom : chain) {
            text_ += text_of(atom.id);
            for (const double coordinate : {atom.x, atom.y, atom.z}) (text_ += ' ') += text_of(coordinate);
            text_ += '\n';
        }
        return std::move(text_);
    }

    std::string pdb(const Chain& chain) {
        constexpr std::size_t serial_column = 5, residue_column = 4, coordinate_column = 8;
        constexpr std::size_t longest = coordinate_column - 1; // the column begins with a blank
        text_.reserve(chain.size() * pdb_line);
        for (const ChainAtom& atom : chain) {
            text_ += "ATOM  ";
            append_right_justified(text_of(atom.id), serial_column);
            text_ += "  CA  XXX A";
            append_right_justified(text_of(atom.id), residue_column);
            text_ += "    ";
            for (const double coordinate : {atom.x, atom.y, atom.z}) // cut, not rounded
                append_right_justified(text_of(coordinate).substr(0, longest), coordinate_column);
            text_ += "  1.00  1.00 C\n";
        }
        return std::move(text_);
    }

  private:
    /// Puts blanks before a text up to the width of its column. A longer text is never cut.
    void append_right_justified(std::string_view text, std::size_t width) {
        if (text.size() < width) text_.append(width - text.size(), ' ');
        text_ += text;
    }

    std::string_view text_of(std::int32_t number) {
        return is_classic_ ? up_to(std::to_chars(digits_, std::end(digits_), number)) : by_stream(number);
    }
    std::string_view text_of(double number) {
        if (!is_classic_ || !std::isfinite(number)) return by_stream(number);
        return up_to(std::to_chars(digits_, std::end(digits_), number, std::chars_format::general,
                                   significant_digits));
    }
    std::string_view up_to(std::to_chars_result written) const {
        return {digits_, static_cast<std::size_t>(written.ptr - digits_)};
    }

    template <class Number> std::string_view by_stream(Number number) {
        std::ostringstream stream;
        stream.exceptions(std::ios_base::badbit); // out of memory must not pass for an empty text
        stream << number;
        return by_stream_ = std::move(stream).str();
    }

    std::string text_, by_stream_;
    bool is_classic_ = std::locale() == std::locale::classic();
    char digits_[32]; // not initialised
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
