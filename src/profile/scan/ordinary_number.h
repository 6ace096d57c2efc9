#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace ptick {

/// The number that `text` spells in the ordinary way, so that its digits can be had back from the
/// number: digits only, no leading zeros, below 2^32. Nothing for any other text.
inline std::optional<std::uint32_t> ParseOrdinary(std::string_view text) {
  constexpr std::size_t kMaxDigits = 10;
  if (text.empty() || text.size() > kMaxDigits || (text.front() == '0' && text.size() > 1)) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') {
      return std::nullopt;
    }
    number = number * 10 + static_cast<std::uint64_t>(c - '0');
  }
  if (number > std::numeric_limits<std::uint32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(number);
}

}  // namespace ptick
