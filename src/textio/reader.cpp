// The two chain readers: one procedure over lines, two sources.
#include "model/points.hpp"

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

/// What the first line is compared with, and what it keeps for the fields that it lacks.
constexpr ChainAtom before_first_line{1.412341234, 3.432312, 0.65436, 0};

/// The fields of a line replace those of the atom; extraction stops at the first that does not read.
void read_fields(const std::string& line, ChainAtom& atom) {
    std::istringstream fields(line);
    fields >> atom.id >> atom.x >> atom.y >> atom.z;
}

enum class EmptyLines { skipped, read };

struct Reading {
    Chain chain;
    bool repeated = false;
    int repeated_id = 0;
};

Reading read_lines(std::istream& text, EmptyLines empty_lines) {
    Reading result;
    ChainAtom current = before_first_line;
    for (std::string line; std::getline(text, line);) {
        const ChainAtom previous = current;
        read_fields(line, current);
        if (line.empty() && empty_lines == EmptyLines::skipped) continue;
        if (loopwise::distance(loopwise::position(current), loopwise::position(previous)) == 0.0)
            return {{}, true, current.id};
        result.chain.push_back(current);
    }
    return result;
}

} // namespace

std::vector<ChainAtom> ChainRead(char* fileName, bool& error) {
    error = true;
    if (fileName == nullptr) return {};
    std::ifstream file(fileName);
    if (!file.is_open()) return {};
    error = false;
    Reading reading = read_lines(file, EmptyLines::skipped);
    if (reading.repeated)
        std::cout << "There were two identical atoms with the index " << reading.repeated_id
                  << " in the file " << fileName << ". Program is done becouse of that.\n";
    return std::move(reading.chain);
}

std::vector<ChainAtom> ChainRead_fromString(const std::string& text, bool& error) {
    std::istringstream stream(text);
    Reading reading = read_lines(stream, EmptyLines::read);
    if (reading.repeated)
        std::cout << "There were two identical atoms with the index " << reading.repeated_id
                  << " in the structure. Program is done because of that.\n";
    error = reading.repeated;
    return std::move(reading.chain);
}
