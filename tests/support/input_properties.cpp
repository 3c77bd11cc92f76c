#include "support/input_properties.hpp"

#include "read/read.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <stdexcept>

using namespace loopwise::read;
using namespace loopwise::polymer;

namespace {

void require(bool holds, const char* what) {
    if (!holds) throw std::logic_error(what);
}

using Molecules = std::optional<std::vector<Molecule>>;

Molecules read(const char* name, const std::string& bytes, const Selection& selection = {}) {
    try {
        return molecules_in(name, bytes, selection);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

bool same(const ChainAtom& a, const ChainAtom& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

bool same(const NamedChain& a, const NamedChain& b) {
    return a.name == b.name && a.residues == b.residues &&
           std::equal(a.beads.begin(), a.beads.end(), b.beads.begin(), b.beads.end(),
                      [](const ChainAtom& one, const ChainAtom& other) { return same(one, other); });
}

bool is_sound(const NamedChain& chain) {
    const auto in_range = [](double value) { return std::abs(value) <= largest_coordinate; };
    return !chain.beads.empty() && chain.beads.size() == chain.residues.size() &&
           std::all_of(
               chain.beads.begin(), chain.beads.end(),
               [&](const ChainAtom& bead) { return in_range(bead.x) && in_range(bead.y) && in_range(bead.z); }) &&
           std::adjacent_find(chain.beads.begin(), chain.beads.end(),
                              [](const ChainAtom& a, const ChainAtom& b) { return same(a, b); }) == chain.beads.end();
}

void check_sound(const std::vector<Molecule>& molecules) {
    require(!molecules.empty(), "no molecule");
    for (const Molecule& molecule : molecules) {
        require(!molecule.chains.empty(), "no chain");
        for (const NamedChain& chain : molecule.chains) require(is_sound(chain), "unsound chain");
    }
}

void check_part_of_text(const std::string& part, const NamedChain& whole, bool counted) {
    const Molecules molecules = read("text", part);
    if (!molecules || !molecules->front().chains.front().notes.empty()) return;
    const Chain &beads = molecules->front().chains.front().beads, &all = whole.beads;
    require(beads.size() <= all.size() && (!counted || beads.size() == all.size()), "number of beads");
    require(std::equal(beads.begin(), beads.end(), all.begin(),
                       [](const ChainAtom& a, const ChainAtom& b) { return same(a, b); }),
            "beads of a part");
}

std::string field(const char* format, double value) {
    std::array<char, 64> text{};
    return {text.data(), static_cast<std::size_t>(std::snprintf(text.data(), text.size(), format, value))};
}

std::string counted_text(const NamedChain& chain) {
    std::string text = std::to_string(chain.beads.size()) + "\ntitle\n";
    for (const ChainAtom& bead : chain.beads)
        text += field("%.3f ", bead.x) + field("%.3f ", bead.y) + field("%.3f\n", bead.z);
    return text;
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
        for (const ChainAtom& bead : chain.beads) {
            ++number;
            text += "CA C ALA c" + std::to_string(chain_number) + field(" %.0f", number) + field(" %.0f", number) +
                    field(" %.3f", bead.x) + field(" %.3f", bead.y) + field(" %.3f", bead.z) + '\n';
        }
    }
    return text + "#\n";
}

void check_cut(const char* name, const std::string& whole, std::size_t cut) {
    const Molecules all = read(name, whole), part = read(name, whole.substr(0, cut % whole.size()));
    if (!all || !part) return; // such as neighbours that three decimals do not tell apart
    const std::vector<NamedChain>&chains = all->front().chains, &left = part->front().chains;
    require(std::equal(chains.begin(), chains.end(), left.begin(), left.end(),
                       [](const NamedChain& a, const NamedChain& b) { return same(a, b); }),
            "chains of a file that is cut off");
}

} // namespace

namespace properties {

void takes_text(const std::string& bytes, std::size_t cut) {
    const Molecules molecules = read("text", bytes);
    if (!molecules || molecules->front().chains.front().kind != BeadKind::any) return; // it was no text
    check_sound(*molecules);
    const NamedChain& chain = molecules->front().chains.front();
    if (chain.notes.empty() && !bytes.empty() && bytes.front() != '\x1f')
        check_part_of_text(bytes.substr(0, cut % bytes.size()), chain, false);
    const std::string whole = counted_text(chain);
    if (const Molecules again = read("text", whole))
        check_part_of_text(whole.substr(0, cut % whole.size()), again->front().chains.front(), true);
}

void takes_structure(const std::string& bytes, std::size_t cut) {
    const Selection everything{{}, every_model, "P"};
    for (const char* name : {"file.pdb", "file.cif"})
        for (const Selection& selection : {Selection{}, everything}) {
            const Molecules molecules = read(name, bytes, selection);
            if (!molecules) continue;
            check_sound(*molecules);
            check_cut("file.pdb", pdb_of(molecules->front()), cut);
            check_cut("file.cif", mmcif_of(molecules->front()), cut);
        }
}

} // namespace properties
