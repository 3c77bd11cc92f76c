// Any PDB or mmCIF file, gzipped or not: what is taken of it is sound. What a file cut off at any byte gives is
// refused, noted, or the same as the whole.
#include "require.hpp"

#include "input/input.hpp"

#include <array>
#include <cmath>
#include <optional>
#include <stdexcept>

using namespace loopwise;

namespace {

std::optional<std::vector<Molecule>> read(const char* name, const std::string& bytes,
                                          const Selection& selection) {
    try {
        return molecules_in(name, bytes, selection);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

void check_sound(const std::vector<Molecule>& molecules) {
    REQUIRE(!molecules.empty());
    for (const Molecule& molecule : molecules) {
        REQUIRE(!molecule.chains.empty());
        for (const NamedChain& chain : molecule.chains) {
            REQUIRE(!chain.beads.empty() && chain.beads.size() == chain.labels.size());
            for (const ChainAtom& bead : chain.beads) {
                REQUIRE(std::abs(bead.x) <= largest_coordinate && std::abs(bead.y) <= largest_coordinate);
                REQUIRE(std::abs(bead.z) <= largest_coordinate);
            }
        }
    }
}

std::string field(const char* format, double value) {
    std::array<char, 64> text{};
    return {text.data(), static_cast<std::size_t>(std::snprintf(text.data(), text.size(), format, value))};
}

/// The chains of a molecule as a file that has all its marks.
std::string pdb_of(const Molecule& molecule) {
    std::string text = "HEADER    MADE\n";
    for (std::size_t i = 0; i < molecule.chains.size() && i < 26; ++i) {
        int number = 0;
        for (const ChainAtom& bead : molecule.chains[i].beads)
            text += "ATOM      1  CA  ALA " + std::string(1, static_cast<char>('A' + i)) +
                    field("%4.0f    ", ++number % 10000) + field("%8.3f", bead.x) + field("%8.3f", bead.y) +
                    field("%8.3f", bead.z) + "  1.00 10.00           C\n";
        text += "TER\n";
    }
    return text + "END\n";
}

std::string mmcif_of(const Molecule& molecule) {
    std::string text = "data_made\n#\nloop_\n";
    for (const char* tag : {"label_atom_id", "type_symbol", "label_comp_id", "label_asym_id", "label_seq_id",
                            "auth_seq_id", "Cartn_x", "Cartn_y", "Cartn_z"})
        text.append("_atom_site.").append(tag).append("\n");
    int chain_number = 0, number = 0;
    for (const NamedChain& chain : molecule.chains) {
        ++chain_number;
        for (const ChainAtom& bead : chain.beads)
            text += "CA C ALA c" + std::to_string(chain_number) + field(" %.0f", ++number) +
                    field(" %.0f", number) + field(" %.3f", bead.x) + field(" %.3f", bead.y) +
                    field(" %.3f", bead.z) + '\n';
    }
    return text + "#\n";
}

bool same(const std::vector<Molecule>& a, const std::vector<Molecule>& b) {
    if (a.front().chains.size() != b.front().chains.size()) return false;
    for (std::size_t i = 0; i < a.front().chains.size(); ++i) {
        const NamedChain &one = a.front().chains[i], &other = b.front().chains[i];
        if (one.labels != other.labels || one.name != other.name) return false;
        for (std::size_t j = 0; j < one.beads.size(); ++j)
            if (one.beads[j].x != other.beads[j].x || one.beads[j].y != other.beads[j].y ||
                one.beads[j].z != other.beads[j].z)
                return false;
    }
    return true;
}

void check_cut(const char* name, const std::string& whole, std::size_t cut) {
    const auto all = read(name, whole, {});
    const auto part = read(name, whole.substr(0, cut % whole.size()), {});
    if (!all || !part) return; // such as neighbours that three decimals do not tell apart
    REQUIRE(same(*all, *part));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string bytes(data + 1, data + size);
    Selection selection;
    if ((data[0] & 1) != 0) selection.model = every_model;
    if ((data[0] & 2) != 0) selection.atom = "P";
    for (const char* name : {"file.pdb", "file.cif"}) {
        const auto molecules = read(name, bytes, selection);
        if (!molecules) continue;
        check_sound(*molecules);
        const std::size_t cut = static_cast<std::size_t>(data[0]) * 256 + data[size - 1];
        check_cut("file.pdb", pdb_of(molecules->front()), cut);
        check_cut("file.cif", mmcif_of(molecules->front()), cut);
    }
    return 0;
}
