// Any chains: every operation on coordinates does what is said of it.
#include "support/properties.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FillFulerenData();
    properties::hold(chains::Random(0, {data, size}));
    return 0;
}
