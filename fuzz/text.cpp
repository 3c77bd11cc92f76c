// Any text.
#include "support/properties.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    properties::hold(std::string(data, data + size));
    return 0;
}
