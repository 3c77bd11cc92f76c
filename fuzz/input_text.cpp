// Any text for the program's reader of chains: what it takes is sound, and a part of it gives no other chain
// without a word.
#include "require.hpp"

#include "input/input.hpp"

#include <cmath>
#include <optional>
#include <stdexcept>

using namespace loopwise;

namespace {

std::optional<Molecule> read(const std::string& text) {
    try {
        return molecules_in("text", text, {}).front();
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

bool same(const ChainAtom& a, const ChainAtom& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

void check_sound(const NamedChain& chain) {
    REQUIRE(!chain.beads.empty() && chain.beads.size() == chain.labels.size());
    for (const ChainAtom& bead : chain.beads)
        for (const double value : {bead.x, bead.y, bead.z}) REQUIRE(std::abs(value) <= largest_coordinate);
    for (std::size_t i = 1; i < chain.beads.size(); ++i) REQUIRE(!same(chain.beads[i - 1], chain.beads[i]));
}

/// The text up to any byte: refused, noted, or the first beads of the whole, all of them if they are counted.
void check_part(const std::string& part, const NamedChain& whole, bool counted) {
    const std::optional<Molecule> molecule = read(part);
    if (!molecule || !molecule->chains.front().notes.empty()) return;
    const NamedChain& chain = molecule->chains.front();
    REQUIRE(chain.beads.size() <= whole.beads.size());
    REQUIRE(std::equal(chain.beads.begin(), chain.beads.end(), whole.beads.begin(), same));
    REQUIRE(!counted || chain.beads.size() == whole.beads.size());
}

std::string lines_of(const NamedChain& chain) {
    std::string text;
    for (const ChainAtom& bead : chain.beads)
        text += std::to_string(bead.x) + ' ' + std::to_string(bead.y) + ' ' + std::to_string(bead.z) + '\n';
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const std::optional<Molecule> molecule = read(text);
    if (!molecule) return 0;
    const NamedChain& chain = molecule->chains.front();
    check_sound(chain);
    const std::size_t cut = size < 2 ? 0 : (static_cast<std::size_t>(data[0]) * 256 + data[size - 1]) % size;
    const bool counted = text.find_first_not_of("0123456789") != std::string::npos &&
                         text[text.find_first_not_of("0123456789")] == '\n' && text[0] != '\n';
    if (chain.notes.empty()) check_part(text.substr(0, cut), chain, counted);

    // The same beads as a counted file, cut anywhere.
    const std::string whole = std::to_string(chain.beads.size()) + "\ntitle\n" + lines_of(chain);
    const std::optional<Molecule> again = read(whole);
    if (!again) return 0; // beads that six decimals do not tell apart
    REQUIRE(again->chains.front().beads.size() == chain.beads.size());
    check_part(whole.substr(0, cut % whole.size()), again->chains.front(), true);
    return 0;
}
