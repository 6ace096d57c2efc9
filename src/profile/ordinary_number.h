#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace ptick {

/// The number that `text` spells in the ordinary way, so that its digits can be had back from the
/// number: digits only, no leading zeros, below 2^32. Nothing for any other text.
inline std::optional<std::uint32_t> ParseOrdinary(std::string_view text) {
  if (text.empty() || text.front() < '0' || text.front() > '9' ||
      (text.front() == '0' && text.size() > 1)) {
    return std::nullopt;
  }
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

}  // namespace ptick
