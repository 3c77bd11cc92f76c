// From files to chains of C-alpha atoms.
#ifndef CLOSURE_SURVEY_INPUT_HPP
#define CLOSURE_SURVEY_INPUT_HPP

#include "libloopwise.h"

#include <string>
#include <vector>

struct NamedChain {
    std::string name; ///< as the file has it; chain text has no names
    Chain chain;
};

/// The chains of a file: PDB or mmCIF by its extension, gzipped or not, otherwise chain text.
/// None is empty and all coordinates are finite. Throws std::runtime_error with the reason.
std::vector<NamedChain> read_chains(const std::string& path);

/// Cuts the chain to the stretch between two residues. Throws std::runtime_error when it lacks them.
void cut(Chain& chain, int first, int last);

/// The kinds of files that read_chains() takes in this build.
const char* readable_formats();

#endif
