// What both fuzz targets share: taking values off the input, and stopping where a property fails.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#define REQUIRE(property)                                                                                    \
    if (!(property)) std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #property), std::abort()

/// The bytes of an input as numbers; zeros after its end.
class Input {
  public:
    explicit Input(std::span<const std::uint8_t> bytes) : left_(bytes) {}
    template <class Number> Number take() {
        Number number{};
        const std::size_t size = std::min(sizeof number, left_.size());
        if (size > 0) std::memcpy(&number, left_.data(), size);
        left_ = left_.subspan(size);
        return number;
    }
    int below(int limit) { return take<std::uint8_t>() % limit; }

  private:
    std::span<const std::uint8_t> left_;
};
