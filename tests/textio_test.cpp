#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <locale>

namespace {

/// A file of its own for each test, gone with the object.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& content) {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        path_ = testing::TempDir() + "loopwise_" + test->name() + ".txt";
        std::ofstream(path_, std::ios::binary) << content;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::filesystem::remove(path_); }
    char* name() { return path_.data(); }
    std::string content() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::string path_;
};

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

struct ReaderCase {
    std::string text;
    Chain from_file, from_string;
    int repeated_in_file = -1, repeated_in_string = -1; ///< index of the message, -1 for none
};

void expect_read(const ReaderCase& expected) {
    SCOPED_TRACE("text: " + expected.text);
    const auto repetition = [](int id, const std::string& rest) {
        const std::string start = "There were two identical atoms with the index ";
        return id < 0 ? "" : start + std::to_string(id) + rest;
    };
    TemporaryFile file(expected.text);
    Capture printed;
    bool error = true;
    EXPECT_TRUE(chains::same_bits(ChainRead(file.name(), error), expected.from_file));
    EXPECT_FALSE(error);
    const std::string name = file.name();
    EXPECT_EQ(printed.cout.str(),
              repetition(expected.repeated_in_file,
                         " in the file " + name + ". Program is done becouse of that.\n"));
    printed.cout.str("");
    EXPECT_TRUE(chains::same_bits(ChainRead_fromString(expected.text, error), expected.from_string));
    EXPECT_EQ(error, expected.repeated_in_string >= 0);
    EXPECT_EQ(printed.cout.str(), repetition(expected.repeated_in_string,
                                             " in the structure. Program is done because of that.\n"));
}

ReaderCase both(const std::string& text, const Chain& chain) { return {text, chain, chain}; }
ReaderCase repeated(const std::string& text, int id) { return {text, {}, {}, id, id}; }

TEST(Reader, TakesOneAtomPerLine) {
    const Chain three{{0, 0, 0, 1}, {3.8, 0, 0, 2}, {7.6, 0, 0, 3}};
    expect_read(both("1 0 0 0\n2 3.8 0 0\n3 7.6 0 0\n", three));
    expect_read(both("1 0 0 0\r\n\t2 3.8\t0  0 tail 9\r\n3 76e-1 0 0", three));
    expect_read(both("", {}));
    expect_read({"1 0 0 0\n\n2 3.8 0 0\n", {three[0], three[1]}, {}, -1, 1});
    expect_read(both("+1 0x 0 0\n", {{0, 0, 0.65436, 1}})); // no hexadecimal: y begins at the x
}

TEST(Reader, KeepsThePreviousLineForWhatALineLacks) {
    expect_read(both("6 0 0 9\n7 1.5 2.5\n", {{0, 0, 9, 6}, {1.5, 2.5, 9, 7}}));
    expect_read(both("4 1 2 3\n5 abc 1 2\n", {{1, 2, 3, 4}, {0, 2, 3, 5}}));
    expect_read(both("9 7\n", {{7, 3.432312, 0.65436, 9}}));
    expect_read(both("1.5 2 3\n", {{0.5, 2, 3, 1}}));
    expect_read(repeated("99999999999 2 3 4\n1 5 6 7\n", 2147483647));
    expect_read(both("1 1e999 2 3\n", {{std::numeric_limits<double>::max(), 3.432312, 0.65436, 1}}));
}

TEST(Reader, StopsAtARepetition) {
    expect_read(repeated("1 0 0 0\n2 0 0 0\n3 1 1 1\n", 2));
    expect_read(repeated("ATOM 1 CA\n1 0 0 0\n", 0));
    expect_read(repeated("1 0 0 0\n   \n", 1));
    expect_read(repeated("1 0 0 0\n\r\n", 1));
    expect_read(repeated("1 0 0 0\n5\n", 5));
    expect_read(repeated("3 1.412341234 3.432312 0.65436\n", 3));
    expect_read(repeated(" \n", 0));
    expect_read(both("1 0 0 0\n2 1e-9 0 0\n1 0 0 0\n", {{0, 0, 0, 1}, {1e-9, 0, 0, 2}, {0, 0, 0, 1}}));
}

TEST(Reader, ReportsAFileThatCannotBeOpened) {
    const Capture printed;
    bool error = false;
    std::string missing = testing::TempDir() + "no such folder/no such file", folder = testing::TempDir();
    EXPECT_TRUE(ChainRead(missing.data(), error).empty());
    EXPECT_TRUE(error);
    error = false;
    EXPECT_TRUE(ChainRead(nullptr, error).empty());
    EXPECT_TRUE(error);
    EXPECT_TRUE(ChainRead(folder.data(), error).empty());
    EXPECT_FALSE(error);
    EXPECT_TRUE(printed.silent());
}

TEST(Writer, LaysOutBothFormats) {
    const Chain chain{
        {11.104, -123.456789, 0.5, 7}, {0.0, -0.0, 1234567, -12345}, {0.000123456, 1e-5, -999.5, 123456}};
    EXPECT_EQ(ChainWrite_toString(chain, false),
              "ATOM      7  CA  XXX A   7      11.104 -123.45     0.5  1.00  1.00 C\n"
              "ATOM  -12345  CA  XXX A-12345           0      -0 1.23457  1.00  1.00 C\n"
              "ATOM  123456  CA  XXX A123456     0.00012   1e-05  -999.5  1.00  1.00 C\n");
    EXPECT_EQ(ChainWrite_toString(chain, true), "7 11.104 -123.457 0.5\n-12345 0 -0 1.23457e+06\n"
                                                "123456 0.000123456 1e-05 -999.5\n");
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(ChainWrite_toString({{inf, -inf, std::numeric_limits<double>::quiet_NaN(), 1}}, true),
              "1 inf -inf nan\n");
    EXPECT_EQ(ChainWrite_toString({}, true) + ChainWrite_toString({}, false), "");
}

TEST(Writer, ReplacesTheFileOrStaysSilent) {
    TemporaryFile file("what was there before, longer than the new text of one line");
    const Chain chain{{1, 2, 3, 4}};
    const Capture printed;
    ChainWrite(file.name(), chain, false);
    EXPECT_EQ(file.content(), ChainWrite_toString(chain, false));
    ChainWrite(file.name(), {}, true);
    EXPECT_EQ(file.content(), "");
    std::string missing = testing::TempDir() + "no such folder/file";
    ChainWrite(missing.data(), chain, true);
    ChainWrite(nullptr, chain, true);
    EXPECT_TRUE(printed.silent());
}

TEST(Writer, EqualsTheStreamsForNumbersOfAllSizes) {
    chains::Random random(13);
    Chain chain;
    for (int i = 0; i < 60000; ++i) {
        double c[3];
        for (double& x : c) {
            x = random.between(-1, 1) * std::pow(10.0, random.below(14) - 4);
            if (i % 3 == 0) x = std::round(x * 1e3) / 1e3;
            if (i % 5 == 0)
                x = std::nextafter((std::round(x * 10) + 0.5) / std::pow(10.0, random.below(6)),
                                   random.below(3) - 1); // ties
        }
        chain.push_back({c[0], c[1], c[2], i % 2 == 0 ? i : -random.below(2147483647)});
    }
    EXPECT_EQ(ChainWrite_toString(chain, true), literal::write(chain, true));
    EXPECT_EQ(ChainWrite_toString(chain, false), literal::write(chain, false));
    for (const chains::Kind kind : chains::all_kinds) {
        const Chain nasty = chains::make(kind, 200, random);
        EXPECT_EQ(ChainWrite_toString(nasty, true), literal::write(nasty, true));
    }
}

TEST(Reader, EqualsTheStreamsOnBrokenText) {
    chains::Random random(14);
    const std::string pieces[] = {
        "1",     "27",  "-3.5",  "1e3",    "2.5e-2",     "+4",    ".5",    "-",   "1.",
        "0x1p3", "nan", "1e999", "7e-400", "9999999999", "abc",   "1.5.2", "3,4", "\t",
        "\r",    "\v",  "\n",    "\n\n",   "\0",         "00012", "1e",    "-0",  "4.1234567890123456789"};
    int read_well = 0;
    for (int i = 0; i < 30000; ++i) {
        std::string text;
        for (int line = random.below(5) + 1; line-- > 0; text += '\n') {
            for (int field = 4; field-- > 0; text += ' ')
                text += random.below(8) != 0 ? std::to_string(random.below(100))
                                             : pieces[random.below(std::size(pieces))];
            if (random.below(9) == 0) text += pieces[random.below(std::size(pieces))];
        }
        bool ours = false, theirs = false;
        const Capture printed;
        const Chain expected = literal::read(text, theirs);
        ASSERT_TRUE(chains::same_bits(ChainRead_fromString(text, ours), expected)) << text;
        ASSERT_EQ(ours, theirs) << text;
        read_well += !expected.empty();
    }
    EXPECT_GT(read_well, 10000);
}

TEST(TextLocale, IsTheGlobalOneAtTheTimeOfTheCall) {
    bool error = false;
    const Chain chain{{1.5, 12345.5, -2, 1234}};
    const GlobalLocale comma(std::locale(std::locale::classic(), new CommaNumbers));
    EXPECT_EQ(ChainWrite_toString(chain, true), "1.234 1,5 12.345,5 -2\n");
    EXPECT_EQ(ChainWrite_toString(chain, false),
              "ATOM  1.234  CA  XXX A1.234         1,5 12.345,      -2  1.00  1.00 C\n");
    EXPECT_TRUE(chains::same_bits(ChainRead_fromString("1.234 1,5 12.345,5 -2\n", error), chain));
    TemporaryFile file("1.234 1,5 12.345,5 -2\n");
    EXPECT_TRUE(chains::same_bits(ChainRead(file.name(), error), chain));
    const GlobalLocale classic(std::locale::classic());
    EXPECT_EQ(ChainWrite_toString(chain, true), "1234 1.5 12345.5 -2\n");
    EXPECT_TRUE(chains::same_bits(ChainRead_fromString("1234 1.5 12345.5 -2\n", error), chain));
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
    EXPECT_EQ(verdict({3.4}) + verdict({4.2}) + verdict({std::nan("")}), "OKOKOK");
    EXPECT_EQ(verdict({3.3999}), broken + "1-2(3.3999)");
    EXPECT_EQ(verdict({4.2001}), broken + "1-2(4.2001)");
    EXPECT_EQ(verdict({0}, -1), broken + "-1-0(0)");
    EXPECT_EQ(verdict({5, 5, 5}), broken + "1-2(5)");
    EXPECT_EQ(verdict({12.3456789, 1234567.8}), broken + "2-3(1.23457e+06)");
    const Chain both{{0, 0, 0, 1}, {3.8, 0, 0, 2}, {3.8, 3.1, 0, 3}, {3.8, 6.9, 0, 5}, {3.8, 6.9, 12.25, 9}};
    EXPECT_EQ(CheckDistancesBetweenAtoms(both), broken + "2-3(3.1) 5-9(12.25)");
    const GlobalLocale comma(std::locale(std::locale::classic(), new CommaNumbers));
    EXPECT_EQ(verdict({4.5}, 1234), broken + "1234-1235(4,5)");
}

} // namespace
