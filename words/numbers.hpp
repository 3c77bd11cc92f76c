// Numbers as text, whatever the locale.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace loopwise::words {

/// "1 gap", "2 gaps".
std::string counted(std::size_t count, std::string_view noun);

std::string fixed(double value, int decimals);

/// In so many significant digits, without trailing zeros; by default as streams write it.
std::string general(double value, int digits = 6);

/// In the fewest digits that read back as the same number.
std::string exact(double value);

/// "12.5 %" for a share of 0.125.
std::string percent(double share);
/// "0.0 %" if the whole is zero.
std::string percent(std::size_t part, std::size_t whole);

} // namespace loopwise::words
