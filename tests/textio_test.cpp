#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/files.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct GlobalLocale {
    explicit GlobalLocale(const std::locale& wanted) : before(std::locale::global(wanted)) {}
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;
    ~GlobalLocale() { std::locale::global(before); }
    std::locale before;
};

struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// The identifiers say which atom counts as repeated; they are empty where none does.
void expect_read(const std::string& text, const Chain& from_file, const Chain& from_string,
                 const std::string& id_in_file, const std::string& id_in_string) {
    SCOPED_TRACE("text: " + text);
    const auto message = [](const std::string& id, const std::string& rest) {
        return id.empty() ? "" : "There were two identical atoms with the index " + id + " in the " + rest;
    };
    MemoryFile file(text);
    Capture printed;
    bool error = true;
    EXPECT_TRUE(chains::same_bits(ChainRead(file.name(), error), from_file));
    EXPECT_FALSE(error);
    EXPECT_TRUE(chains::same_bits(ChainRead_fromString(text, error), from_string));
    EXPECT_EQ(error, !id_in_string.empty());
    EXPECT_EQ(printed.cout.str(),
              message(id_in_file, std::string("file ") + file.name() + ". Program is done becouse of that.\n") +
                  message(id_in_string, "structure. Program is done because of that.\n"));
}

void expect_read(const std::string& text, const Chain& chain) { expect_read(text, chain, chain, "", ""); }
void expect_repeated(const std::string& text, const std::string& id) { expect_read(text, {}, {}, id, id); }

TEST(Reader, TakesOneAtomPerLine) {
    const Chain three{{0, 0, 0, 1}, {3.8, 0, 0, 2}, {7.6, 0, 0, 3}};
    expect_read("1 0 0 0\n2 3.8 0 0\n3 7.6 0 0\n", three);
    expect_read("1 0 0 0\r\n\t2 3.8\t0  0 tail 9\r\n3 76e-1 0 0", three);
    expect_read("", {});
    expect_read("1 0 0 0\n\n2 3.8 0 0\n", {three[0], three[1]}, {}, "", "1");
    expect_read("+1 0x 0 0\n", {{0, 0, 0.65436, 1}}); // no hexadecimal: y begins at the x
}

TEST(Reader, KeepsThePreviousLineForWhatALineLacks) {
    expect_read("6 0 0 9\n7 1.5 2.5\n", {{0, 0, 9, 6}, {1.5, 2.5, 9, 7}});
    expect_read("4 1 2 3\n5 abc 1 2\n", {{1, 2, 3, 4}, {0, 2, 3, 5}});
    expect_read("9 7\n", {{7, 3.432312, 0.65436, 9}});
    expect_read("1.5 2 3\n", {{0.5, 2, 3, 1}});
    expect_repeated("99999999999 2 3 4\n1 5 6 7\n", "2147483647");
    expect_read("1 1e999 2 3\n", {{std::numeric_limits<double>::max(), 3.432312, 0.65436, 1}});
}

TEST(Reader, StopsAtARepetition) {
    expect_repeated("1 0 0 0\n2 0 0 0\n3 1 1 1\n", "2");
    expect_repeated("ATOM 1 CA\n1 0 0 0\n", "0");
    expect_repeated("1 0 0 0\n   \n", "1");
    expect_repeated("1 0 0 0\n\r\n", "1");
    expect_repeated("1 0 0 0\n5\n", "5");
    expect_repeated("3 1.412341234 3.432312 0.65436\n", "3");
    expect_repeated(" \n", "0");
    expect_read("1 0 0 0\n2 1e-9 0 0\n1 0 0 0\n", {{0, 0, 0, 1}, {1e-9, 0, 0, 2}, {0, 0, 0, 1}});
}

TEST(Files, ThatCannotBeOpenedAreReportedByTheReaderOnly) {
    const Capture printed;
    std::string missing = testing::TempDir() + "no such folder/no such file", folder = testing::TempDir();
    for (char* const name : {missing.data(), static_cast<char*>(nullptr)}) {
        bool error = false;
        EXPECT_TRUE(ChainRead(name, error).empty() && error);
        ChainWrite(name, {{1, 2, 3, 4}}, true);
    }
    bool error = true;
    EXPECT_TRUE(ChainRead(folder.data(), error).empty() && !error);
    EXPECT_TRUE(printed.silent());
}

TEST(Writer, LaysOutBothFormats) {
    const Chain chain{{11.104, -123.456789, 0.5, 7}, {0.0, -0.0, 1234567, -12345}, {0.000123456, 1e-5, -999.5, 123456}};
    EXPECT_EQ(ChainWrite_toString(chain, false),
              "ATOM      7  CA  XXX A   7      11.104 -123.45     0.5  1.00  1.00 C\n"
              "ATOM  -12345  CA  XXX A-12345           0      -0 1.23457  1.00  1.00 C\n"
              "ATOM  123456  CA  XXX A123456     0.00012   1e-05  -999.5  1.00  1.00 C\n");
    EXPECT_EQ(ChainWrite_toString(chain, true), "7 11.104 -123.457 0.5\n-12345 0 -0 1.23457e+06\n"
                                                "123456 0.000123456 1e-05 -999.5\n");
    EXPECT_EQ(ChainWrite_toString({{inf, -inf, nan, 1}}, true), "1 inf -inf nan\n");
}

TEST(Writer, ReplacesWhatTheFileHeld) {
    MemoryFile file("longer than the new text of one line");
    for (const bool plain : {true, false}) {
        ChainWrite(file.name(), {{1, 2, 3, 4}}, plain);
        EXPECT_EQ(file.content(), ChainWrite_toString({{1, 2, 3, 4}}, plain));
    }
}

TEST(TextLocale, IsTheGlobalOneAtTheTimeOfTheCall) {
    const Chain chain{{1.5, 12345.5, -2, 1234}};
    const GlobalLocale comma(std::locale(std::locale::classic(), new CommaNumbers));
    EXPECT_EQ(ChainWrite_toString(chain, true), "1.234 1,5 12.345,5 -2\n");
    EXPECT_EQ(ChainWrite_toString(chain, false),
              "ATOM  1.234  CA  XXX A1.234         1,5 12.345,      -2  1.00  1.00 C\n");
    expect_read("1.234 1,5 12.345,5 -2\n", chain);
    EXPECT_EQ(CheckDistancesBetweenAtoms({{0, 0, 0, 1234}, {4.5, 0, 0, 1235}}),
              "HEAD: broken protein between 1234-1235(4,5)");
    const GlobalLocale classic(std::locale::classic());
    EXPECT_EQ(ChainWrite_toString(chain, true), "1234 1.5 12345.5 -2\n");
    expect_read("1234 1.5 12345.5 -2\n", chain);
}

/// The verdict on atoms along a line at the given distances, numbered from the given identifier.
std::string verdict(std::initializer_list<double> distances, int id = 1) {
    Chain chain{{0, 0, 0, id}};
    for (const double d : distances) chain.push_back({chain.back().x + d, 0, 0, ++id});
    return CheckDistancesBetweenAtoms(chain);
}

TEST(BreakCheck, NamesTheClosestAndTheFarthestPair) {
    const std::string broken = "HEAD: broken protein between ";
    EXPECT_EQ(CheckDistancesBetweenAtoms({}) + verdict({}) + verdict({3.8}), "OKOKOK");
    EXPECT_EQ(verdict({3.4}) + verdict({4.2}) + verdict({nan}), "OKOKOK");
    EXPECT_EQ(verdict({3.3999}), broken + "1-2(3.3999)");
    EXPECT_EQ(verdict({4.2001}), broken + "1-2(4.2001)");
    EXPECT_EQ(verdict({0}, -1), broken + "-1-0(0)");
    EXPECT_EQ(verdict({3, 3, 3.8}), broken + "1-2(3)");
    EXPECT_EQ(verdict({5, 5, 5}), broken + "1-2(5)");
    EXPECT_EQ(verdict({12.3456789, 1234567.8}), broken + "2-3(1.23457e+06)");
    const Chain both{{0, 0, 0, 1}, {3.8, 0, 0, 2}, {3.8, 3.1, 0, 3}, {3.8, 6.9, 0, 5}, {3.8, 6.9, 12.25, 9}};
    EXPECT_EQ(CheckDistancesBetweenAtoms(both), broken + "2-3(3.1) 5-9(12.25)");
}

} // namespace
