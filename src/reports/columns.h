#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ptick {

/// Pieces of rows that are laid out in place.

/// Writes a column that holds `text`, left-justified, cut where it is too long, and returns the
/// place after the column.
inline char* PutLeft(std::string_view text, std::size_t width, char* at) {
  const std::string_view shown = text.substr(0, width);
  return std::fill_n(std::copy(shown.begin(), shown.end(), at), width - shown.size(), ' ');
}

/// Writes the digits of a number, at most 10, and returns the place after them.
inline char* PutNumber(std::uint32_t number, char* at) {
  return std::to_chars(at, at + 10, number).ptr;
}

/// The digits of a number, in `digits`.
inline std::string_view NumberDigits(std::uint32_t number, std::array<char, 10>& digits) {
  const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

}  // namespace ptick
