// Numbers as programs and people read them.
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <string>

namespace ptick::companion {

template <typename T>
concept PlainNumber = (std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char>) ||
                      std::same_as<T, double>;

/// Adds a number by the shortest digits that read back as the same one, a zero without sign.
/// Returns false, and adds nothing, for what is no finite number.
template <PlainNumber T>
bool AppendNumber(std::string& text, T number) {
  if constexpr (std::same_as<T, double>) {
    if (!std::isfinite(number)) {
      return false;
    }
    if (number == 0) {
      number = 0;
    }
  }
  std::array<char, 32> digits = {};  // room for the shortest text of any number
  text.append(digits.data(),
              std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
  return true;
}

/// A count with commas between its thousands: "1,204".
std::string GroupedCount(std::uint64_t count);

/// A number of bytes in decimal units, its three first digits: "512 bytes", "1.20 kB", "34.5 MB".
std::string ByteCount(std::uint64_t bytes);

/// A time in its two largest units: "9 s", "3 min 20 s", "2 h 5 min".
std::string Duration(std::uint64_t seconds);

}  // namespace ptick::companion
