// Any text: the readers and writers against the literal ones, and what was written read again.
#include "input.hpp"
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/literal.hpp"

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A file in memory that has a name.
struct File {
    int descriptor = ::memfd_create("chain", 0);
    std::string name = "/proc/self/fd/" + std::to_string(descriptor);
    void hold(const std::string& text) const {
        REQUIRE(::ftruncate(descriptor, 0) == 0);
        REQUIRE(::pwrite(descriptor, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
    }
};

std::string without_empty_lines(const std::string& text) {
    std::string result;
    for (const char c : text)
        if (c != '\n' || (!result.empty() && result.back() != '\n')) result += c;
    return result;
}

bool all_finite(const Chain& chain) {
    return std::all_of(chain.begin(), chain.end(),
                       [](const ChainAtom& a) { return a.x - a.x == 0 && a.y - a.y == 0 && a.z - a.z == 0; });
}

void check_distances(const Chain& chain) {
    bool broken = false;
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const ChainAtom &a = chain[i - 1], &b = chain[i];
        const double d = Dist({a.x, a.y, a.z}, {b.x, b.y, b.z});
        broken = broken || d < 3.4 || d > 4.2;
    }
    REQUIRE((CheckDistancesBetweenAtoms(chain) != "OK") == broken);
}

void check_cut(Chain chain, int start, int end) {
    const Chain before = chain;
    CutChain(chain, start, end);
    REQUIRE(chain.empty() == before.empty());
    REQUIRE(std::search(before.begin(), before.end(), chain.begin(), chain.end(),
                        [](const ChainAtom& a, const ChainAtom& b) { return chains::same_bits({a}, {b}); }) !=
                before.end() ||
            chain.empty());
}

void check_writing(const Chain& chain, File& file) {
    const std::string text = ChainWrite_toString(chain, true);
    REQUIRE(text == literal::write(chain, true));
    REQUIRE(ChainWrite_toString(chain, false) == literal::write(chain, false));
    ChainWrite(file.name.data(), chain, true);
    bool error = false;
    const Chain again = ChainRead(file.name.data(), error);
    REQUIRE(!error);
    if (again.empty() || !all_finite(chain)) return; // two atoms became equal, or "inf" is not read
    REQUIRE(ChainWrite_toString(again, true) == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static File file;
    const std::string text(data, data + size);
    const Capture printed;
    bool error = false, expected_error = false;
    const Chain expected = literal::read(text, expected_error);
    const Chain chain = ChainRead_fromString(text, error);
    REQUIRE(error == expected_error && chains::same_bits(chain, expected));

    file.hold(text);
    const Chain from_file = ChainRead(file.name.data(), error);
    REQUIRE(!error && chains::same_bits(from_file, literal::read(without_empty_lines(text), error)));

    for (const Chain& read : {chain, from_file}) {
        check_distances(read);
        check_writing(read, file);
        if (!read.empty()) check_cut(read, read[read.size() / 3].id, read[read.size() * 2 / 3].id);
    }
    return 0;
}
