// The two chain readers: one procedure over lines, two sources.
#include "src/textio/reader.hpp"

#include "src/model/points.hpp"
#include "src/textio/number_fields.hpp"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <locale>

namespace loopwise::textio {

using namespace model;
namespace {

/// Compared with the first line, which keeps its values for fields that it lacks.
constexpr ChainAtom before_first_line{1.412341234, 3.432312, 0.65436, 0};

class LinesOfFile {
  public:
    /// Without badbit, a stream treats exhausted memory as the end of the file.
    explicit LinesOfFile(std::istream& file) : file_(file) { file_.exceptions(std::ios_base::badbit); }
    bool next(std::string_view& line) {
        try {
            if (!std::getline(file_, line_)) return false;
        } catch (const std::ios_base::failure&) { // as when the file is a directory
            return false;
        }
        line = line_;
        return true;
    }
    static constexpr bool skips_empty = true;

  private:
    std::istream& file_;
    std::string line_;
};

class LinesOfText {
  public:
    explicit LinesOfText(std::string_view text) : left_(text) {}
    bool next(std::string_view& line) {
        if (left_.empty()) return false;
        line = left_.substr(0, left_.find('\n'));
        left_.remove_prefix(std::min(line.size() + 1, left_.size()));
        return true;
    }
    static constexpr bool skips_empty = false;

  private:
    std::string_view left_;
};

template <class Lines> Reading read_lines(Lines lines) {
    Reading result;
    ChainAtom current = before_first_line;
    const bool classic = std::locale() == std::locale::classic();
    for (std::string_view line; lines.next(line);) {
        if (line.empty() && Lines::skips_empty) continue;
        const ChainAtom previous = current;
        if (!classic || !read_plain_fields(line, current)) read_fields(line, current);
        if (distance(position(current), position(previous)) == 0.0) return {{}, current.id};
        result.chain.push_back(current);
    }
    return result;
}

} // namespace

std::optional<Reading> read_file(const char* name) {
    std::ifstream file(name);
    if (!file.is_open()) return std::nullopt;
    return read_lines(LinesOfFile(file));
}

Reading read_text(std::string_view text) { return read_lines(LinesOfText(text)); }

} // namespace loopwise::textio

using namespace loopwise::textio;

std::vector<ChainAtom> ChainRead(char* fileName, bool& error) {
    error = true;
    if (fileName == nullptr) return {};
    std::optional<Reading> reading = read_file(fileName);
    if (!reading) return {};
    error = false;
    if (reading->repeated)
        std::cout << "There were two identical atoms with the index " << *reading->repeated << " in the file "
                  << fileName << ". Program is done becouse of that.\n";
    return std::move(reading->chain);
}

std::vector<ChainAtom> ChainRead_fromString(const std::string& text, bool& error) {
    error = false;
    Reading reading = read_text(text);
    if (reading.repeated)
        std::cout << "There were two identical atoms with the index " << *reading.repeated
                  << " in the structure. Program is done because of that.\n";
    error = reading.repeated.has_value();
    return std::move(reading.chain);
}
