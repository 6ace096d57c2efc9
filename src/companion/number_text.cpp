#include "companion/number_text.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>

namespace ptick::companion {

std::string GroupedCount(std::uint64_t count) {
  std::string text = fmt::format_int(count).str();
  for (std::size_t at = text.size(); at > 3;) {
    at -= 3;
    text.insert(at, ",");
  }
  return text;
}

std::string ByteCount(std::uint64_t bytes) {
  constexpr std::array kUnits = {"kB", "MB", "GB", "TB", "PB", "EB"};
  if (bytes < 1000) {
    return fmt::format("{} bytes", bytes);
  }
  // Thousandths of the unit, so that all digits are exact; what is too small to show is cut.
  std::size_t unit = 0;
  std::uint64_t thousandths = bytes;
  while (thousandths >= 1'000'000) {
    thousandths /= 1000;
    ++unit;
  }
  const std::uint64_t whole = thousandths / 1000;
  const std::uint64_t rest = thousandths % 1000;
  if (whole >= 100) {
    return fmt::format("{} {}", whole, kUnits.at(unit));
  }
  if (whole >= 10) {
    return fmt::format("{}.{} {}", whole, rest / 100, kUnits.at(unit));
  }
  return fmt::format("{}.{:02} {}", whole, rest / 10, kUnits.at(unit));
}

std::string Duration(std::uint64_t seconds) {
  constexpr std::uint64_t kMinute = 60;
  constexpr std::uint64_t kHour = 60 * kMinute;
  if (seconds < kMinute) {
    return fmt::format("{} s", seconds);
  }
  if (seconds < kHour) {
    return fmt::format("{} min {} s", seconds / kMinute, seconds % kMinute);
  }
  return fmt::format("{} h {} min", seconds / kHour, seconds % kHour / kMinute);
}

}  // namespace ptick::companion
