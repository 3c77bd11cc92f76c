// Any coordinates.
#include "support/properties.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    properties::hold(chains::Random(0, {data, size}));
    return 0;
}
