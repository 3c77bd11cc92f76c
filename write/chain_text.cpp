#include "write/chain_text.hpp"

#include "words/numbers.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <stdexcept>

namespace loopwise::write {
namespace {

constexpr std::size_t most_serials = 99'999;
constexpr int lowest_residue = -999, highest_residue = 9'999;
constexpr double lowest_coordinate = -999.999, highest_coordinate = 9999.999;

[[noreturn]] void refuse(const std::string& what) {
    throw std::runtime_error(what + " does not fit the PDB format; write chain text instead");
}

/// The residue number and insertion code, columns 23 to 27.
std::string residue_columns(const polymer::ResidueId& residue) {
    const std::string insertion = residue.suffix();
    if (!residue.number() || *residue.number() < lowest_residue || *residue.number() > highest_residue ||
        insertion.size() > 1)
        refuse("residue " + residue.text());
    return words::right(std::to_string(*residue.number()), 4) + (insertion.empty() ? " " : insertion);
}

std::string coordinate_columns(double value) {
    if (!(value >= lowest_coordinate && value <= highest_coordinate)) refuse("coordinate " + words::exact(value));
    return words::right(words::fixed(value, 3), 8);
}

std::string bond(std::size_t from, std::size_t to) {
    return "CONECT" + words::right(std::to_string(from), 5) + words::right(std::to_string(to), 5) + "\n";
}

} // namespace

std::string plain_text(const Chain& chain) {
    std::string text;
    for (const ChainAtom& bead : chain) {
        text += std::to_string(bead.id);
        for (const double value : {bead.x, bead.y, bead.z}) text.append(1, ' ').append(words::exact(value));
        text += '\n';
    }
    return text;
}

std::string pdb_text(const polymer::NamedChain& chain, bool loop) {
    const std::size_t count = chain.beads.size();
    if (count > most_serials) refuse("a chain of " + std::to_string(count) + " atoms");
    if (chain.name.size() > 1) refuse("chain name " + chain.name);
    const char name = chain.name.empty() ? 'A' : chain.name.front();
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        const ChainAtom& bead = chain.beads[i];
        text.append("ATOM  ").append(words::right(std::to_string(i + 1), 5)).append("  CA  UNK ").append(1, name);
        text.append(residue_columns(chain.residues[i])).append("   ");
        for (const double value : {bead.x, bead.y, bead.z}) text += coordinate_columns(value);
        text += "  1.00  0.00           C\n";
    }
    // Beads that close a loop are far from the rest; the bonds show that they belong to the chain.
    text += "TER\n";
    for (std::size_t i = 1; i < count; ++i) text += bond(i, i + 1);
    if (loop && count > 2) text += bond(count, 1);
    return text + "END\n";
}

} // namespace loopwise::write
