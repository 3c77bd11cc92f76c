// The files of the reviewed runs, whole, packed and cut off: what the program takes of them is sound.
#include "draw/canvas.hpp"
#include "read/bytes.hpp"
#include "support/input_properties.hpp"

#include <gtest/gtest.h>

#include <algorithm>
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
            bytes = loopwise::read::read_bytes(entry.path());
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
    const std::string packed(std::istreambuf_iterator<char>(file), {}), whole = loopwise::read::unpacked(packed);
    EXPECT_EQ(loopwise::read::unpacked(packed + packed), whole + whole);
    for (std::size_t size = 2; size < packed.size(); ++size)
        EXPECT_THROW(loopwise::read::unpacked(packed.substr(0, size)), std::runtime_error) << size;
    constexpr std::size_t head = 10; // of which most bytes may be anything
    for (std::size_t at = head; at < packed.size(); ++at) {
        std::string damaged = packed;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        std::string unpacked;
        try {
            unpacked = loopwise::read::unpacked(damaged);
        } catch (const std::runtime_error&) {
            continue;
        }
        EXPECT_EQ(unpacked, whole) << at;
    }
}

TEST(Labels, KeepOffBoxesAndGoNowhereRatherThanInto) {
    const auto middle = [](const std::string& label) {
        constexpr std::string_view before = "x=\"";
        return std::stod(label.substr(label.find(before) + before.size()));
    };
    // 60 wide, beside a spot 2 to the left of a box or as far to the right of one.
    for (const double side : {-1.0, 1.0}) {
        loopwise::draw::Labels labels(400, 100);
        labels.keep_off({200 + std::min(0.0, -200 * side), 0}, {200 + std::max(0.0, -200 * side), 100});
        const double at = middle(labels.beside({200 + 2 * side, 50}, 1, "ten digits", 10, ""));
        EXPECT_GT(side * (at - 200), 30);
    }
    loopwise::draw::Labels full(400, 100);
    full.keep_off({0, 0}, {400, 100});
    EXPECT_EQ(full.beside({200, 50}, 1, "ten digits", 10, ""), "");
}

} // namespace
