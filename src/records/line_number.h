#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace ptick {

/// The line of a source that a text names: a number written in digits. 0, which names none, for any
/// other text and for numbers that no source reaches.
inline std::uint32_t SourceLineNumber(std::string_view text) {
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end ? number : 0;
}

}  // namespace ptick
