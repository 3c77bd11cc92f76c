// Any text: it is read as streams read it, and what was read is written and read again.
#include "support/capture.hpp"
#include "support/properties.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    properties::reads(text);
    bool error = false;
    const Silence quiet;
    const Chain chain = ChainRead_fromString(text, error);
    properties::writes(chain);
    properties::reads(ChainWrite_toString(chain, true));
    return 0;
}
