// Residue identifiers: text in, the same text out, and what depends on their numbers and insertion codes.
#include "polymer/bonds.hpp"
#include "read/cut.hpp"
#include "read/read.hpp"
#include "write/chain_text.hpp"

#include <gtest/gtest.h>

#include <optional>

using namespace loopwise;
using namespace loopwise::polymer;

namespace {

struct Parsed {
    const char* text;
    std::optional<std::int32_t> number;
    const char* suffix;
};

TEST(ResidueId, PrintsWhatItWasParsedFrom) {
    for (const auto& [text, number, suffix] :
         std::initializer_list<Parsed>{{"0", 0, ""},
                                       {"52A", 52, "A"},
                                       {"-3B", -3, "B"},
                                       {"2147483647Z", 2147483647, "Z"},
                                       {"-2147483648", -2147483648, ""},
                                       {"2147483648", {}, "2147483648"}, // one more than 32 bits hold
                                       {"99999999999A", {}, "99999999999A"},
                                       {"007", 7, ""},
                                       {"-0", 0, ""},
                                       {"007C", 7, "C"},
                                       {"12AB", 12, "AB"},
                                       {"+1", {}, "+1"},
                                       {"A12", {}, "A12"},
                                       {"-", {}, "-"},
                                       {"", {}, ""}}) {
        const ResidueId id = ResidueId::parse(text);
        EXPECT_EQ(id.text(), text);
        EXPECT_EQ(id.number(), number) << text;
        EXPECT_EQ(id.suffix(), suffix) << text;
        EXPECT_EQ(id.is_number(), number && *suffix == 0) << text;
        EXPECT_EQ(id, ResidueId::parse(text));
    }
    EXPECT_EQ(ResidueId::parse("-7"), ResidueId(-7));
}

TEST(ResidueId, IsOrderedByNumberThenText) {
    const std::vector<ResidueId> ordered =
        parsed({"-10", "-9B", "007", "7", "7A", "7AB", "7B", "10", "+1", "5000000000", "A1"});
    for (std::size_t i = 0; i < ordered.size(); ++i)
        for (std::size_t j = 0; j < ordered.size(); ++j) {
            EXPECT_EQ(ordered[i] < ordered[j], i < j) << ordered[i].text() << " " << ordered[j].text();
            EXPECT_EQ(ordered[i] == ordered[j], i == j) << ordered[i].text() << " " << ordered[j].text();
        }
}

NamedChain chain_of(const std::vector<std::string>& residues) {
    NamedChain chain{"", {}, parsed(residues)};
    for (std::size_t i = 0; i < residues.size(); ++i) chain.beads.push_back({5.0 * static_cast<double>(i), 0, 0, 0});
    chain.kind = BeadKind::amino_acids;
    return chain;
}

std::vector<std::string> cut(const std::vector<std::string>& residues, const std::string& first,
                             const std::string& last) {
    NamedChain chain = chain_of(residues);
    try {
        read::cut(chain, ResidueId::parse(first), ResidueId::parse(last));
    } catch (const std::runtime_error&) {
        return {};
    }
    EXPECT_EQ(chain.beads.size(), chain.residues.size());
    return texts_of(chain.residues);
}

TEST(ResidueId, CutsAChain) {
    using Texts = std::vector<std::string>;
    const Texts chain{"-2", "-1", "3", "52", "52A", "52B", "53", "60"};
    EXPECT_EQ(cut(chain, "52A", "53"), (Texts{"52A", "52B", "53"}));
    EXPECT_EQ(cut(chain, "53", "52A"), (Texts{"52A", "52B", "53"}));
    EXPECT_EQ(cut(chain, "4", "52"), (Texts{"52", "52A", "52B"})); // a number means all its insertion codes
    EXPECT_EQ(cut(chain, "3", "-1"), (Texts{"-1", "3"}));
    EXPECT_EQ(cut(chain, "54", "59"), Texts{});  // in a gap
    EXPECT_EQ(cut(chain, "3", "61"), Texts{});   // beyond the end
    EXPECT_EQ(cut(chain, "52C", "60"), Texts{}); // no such code
    EXPECT_EQ(cut({"10", "9", "8", "7"}, "8", "9"), (Texts{"9", "8"}));
}

TEST(ResidueId, NumbersBeadsAndCountsWhatGapsLeaveOut) {
    NamedChain chain = chain_of({"-2147483648", "2147483647", "5A", "9B", "12"});
    EXPECT_TRUE(number_by_residues(chain));
    EXPECT_EQ(chain.beads[2].id, 5);
    const Bonds bonds = bonds_of(chain);
    ASSERT_EQ(bonds.gaps.size(), 4U);
    EXPECT_EQ(bonds.gaps[0].missing, 4294967294U);
    EXPECT_EQ(bonds.gaps[1].missing, 0U);
    EXPECT_EQ(bonds.missing(), std::size_t{4294967294} + 3 + 2);
    chain.residues[1] = ResidueId::parse("A5");
    EXPECT_FALSE(number_by_residues(chain));
    EXPECT_EQ(chain.beads[2].id, 3);
    EXPECT_EQ(bonds_of(chain).missing(), 3U + 2);
}

/// A chain in the PDB format whose residue columns, 23 to 27, are these.
std::string pdb(const std::vector<std::string>& columns) {
    std::string text;
    for (std::size_t i = 0; i < columns.size(); ++i)
        text += "ATOM      1  CA  ALA A" + columns[i] + "     " + std::to_string(10 + 4 * i) +
                ".000   1.000   1.000  1.00  0.00           C\n";
    return text + "TER\nEND\n";
}

TEST(ResidueId, IsReadFromPdbAndWrittenToIt) {
    // In hybrid-36 A000 follows 9999, and a000 follows ZZZZ. Some programs write large numbers into column
    // 27.
    const std::vector<std::string> columns{" -99C", "9999 ", "A000 ", "A00ZB", "ZZZZ ", "a000 ", "zzzz ", "12345"};
    const auto molecules = read::molecules_in("chain.pdb", pdb(columns), {});
    const NamedChain& chain = molecules.front().chains.front();
    EXPECT_EQ(texts_of(chain.residues),
              (std::vector<std::string>{"-99C", "9999", "10000", "10035B", "1223055", "1223056", "2436111", "12345"}));
    EXPECT_EQ(chain.beads[3].id, 10035);
    for (const char* bad : {"9?99 ", "AbCD ", "  A0 ", "     "})
        EXPECT_THROW(read::molecules_in("chain.pdb", pdb({"   1 ", bad}), {}), std::runtime_error) << bad;

    const std::string written = write::pdb_text(chain_of({"-99C", "7", "9999"}), false);
    EXPECT_NE(written.find(" A -99C "), std::string::npos);
    EXPECT_NE(written.find(" A   7  "), std::string::npos);
    for (const char* bad : {"10000", "-1000", "12AB", "A12"})
        EXPECT_THROW(write::pdb_text(chain_of({bad}), false), std::runtime_error) << bad;
}

} // namespace
