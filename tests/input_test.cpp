// The files of the reviewed runs, whole, packed and cut off: what the program takes of them is sound.
#include "input/bytes.hpp"
#include "support/input_properties.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

TEST(Input, IsSoundOrRefused) {
    constexpr std::size_t step = 29, longest = 2000;
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ODD_FILES)) {
        SCOPED_TRACE(entry.path());
        std::string bytes;
        try {
            bytes = loopwise::read_bytes(entry.path());
        } catch (const std::runtime_error&) {
            continue; // damaged where it is packed
        }
        for (std::size_t cut = 0; cut < longest; cut += step) {
            EXPECT_NO_THROW(properties::takes_text(bytes, cut)) << cut;
            EXPECT_NO_THROW(properties::takes_structure(bytes, cut)) << cut;
        }
        ++files;
    }
    EXPECT_GT(files, 60);
}

TEST(Input, IsUnpackedWholeOrRefused) {
    const std::string path = std::string(ODD_FILES) + "/pdb_packed.pdb.gz";
    std::ifstream file(path, std::ios::binary);
    const std::string packed(std::istreambuf_iterator<char>(file), {}), whole = loopwise::unpacked(packed);
    EXPECT_EQ(loopwise::unpacked(packed + packed), whole + whole);
    for (std::size_t size = 2; size < packed.size(); ++size)
        EXPECT_THROW(loopwise::unpacked(packed.substr(0, size)), std::runtime_error) << size;
    constexpr std::size_t head = 10; // of which most bytes may be anything
    for (std::size_t at = head; at < packed.size(); ++at) {
        std::string damaged = packed;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        std::string unpacked;
        try {
            unpacked = loopwise::unpacked(damaged);
        } catch (const std::runtime_error&) {
            continue;
        }
        EXPECT_EQ(unpacked, whole) << at;
    }
}

} // namespace
