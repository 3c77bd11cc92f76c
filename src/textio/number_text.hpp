// Writing numbers as the standard streams write them with default settings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace loopwise::textio {

/// Turns numbers into text under the global locale of the time when it was made.
class NumberText {
  public:
    NumberText();

    std::string_view of(std::int32_t number);
    /// Six significant digits in general notation.
    std::string_view of(double number);

  private:
    template <class Number> std::string_view by_stream(Number number);

    bool classic_;
    char digits_[32];  ///< what is written without a stream
    std::string text_; ///< what a stream has written
};

/// Writes what printf's %.6g writes for numbers of the sizes that coordinates have. Returns how many
/// characters that are, at most 12; 0 and nothing written for numbers that it leaves to others.
std::size_t write_coordinate(char* to, double number);

} // namespace loopwise::textio
