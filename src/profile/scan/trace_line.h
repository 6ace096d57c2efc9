#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/control_bytes.h"
#include "profile/scan/load_word.h"

namespace ptick {

inline constexpr std::uint32_t kNoOrdinaryNumber = ~std::uint32_t{0};

/// The ordinary number of `size` digits, at most 7, in front of `end`; kNoOrdinaryNumber for any
/// other text. 8 bytes in front of the end are readable.
inline std::uint32_t NumberBefore(const char* end, std::size_t size) {
  static_assert(std::endian::native == std::endian::little, "words are read as little-endian");
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  constexpr std::uint64_t kHighs = 0x8080808080808080U;
  constexpr std::size_t kMostDigits = 7;
  if (size - 1 >= kMostDigits) {  // none at all, too
    return kNoOrdinaryNumber;
  }
  const std::uint64_t own = ~std::uint64_t{0} << (64 - 8 * size);
  const std::uint64_t digits = (LoadWord(end - 8) ^ (kOnes * '0')) & own;
  const std::uint64_t above_nine = (digits & ~kHighs) + kOnes * (0x7F - 9);
  const bool leading_zero = size > 1 && end[-static_cast<std::ptrdiff_t>(size)] == '0';
  if (((above_nine | digits) & kHighs) != 0 || leading_zero) {
    return kNoOrdinaryNumber;
  }
  std::uint64_t value = (digits * 10 + (digits >> 8U)) & 0x00FF00FF00FF00FFU;
  value = (value * 100 + (value >> 16U)) & 0x0000FFFF0000FFFFU;
  return static_cast<std::uint32_t>(value * 10000 + (value >> 32U));
}

/// A trace line that is written the way profiled processes write them; nearly every line of a big
/// profile is one.
///
/// Such a line is exactly "PROFILE:trace", a program name, a line number and a tick count,
/// separated by single TABs; it is at most 64 bytes long with its end, the name is not empty and
/// free of control bytes below 11, and both numbers have at most 7 digits and no leading zeros.
struct TraceLine {
  std::string_view program;
  std::uint32_t line = 0;
  std::uint32_t ticks = 0;
  const char* next = nullptr;  ///< the start of the line behind it; null for a line of another form
};

/// Takes apart the line that starts at `line`. The text ends with LF, with kBlockPadding readable
/// bytes behind it. What is not of the form above is left to those who know all rules; the result
/// is the same, so this is speed and nothing else.
///
/// Looks at 64 bytes at once for the bytes that end something: one bit each for TABs, line ends and
/// other low control bytes. Where the fields of the line stand is then known from four bits,
/// without a loop and without waiting for one field to be read before the next is found. Numbers
/// are read as the 8 bytes in front of their end, all digits valued together.
inline TraceLine ScanTraceLine(const char* line) {
  constexpr std::string_view kStart = "PROFILE:trace\t";
  if (LoadWord(line) != LoadWord(kStart.data()) ||
      LoadWord(line + 6) != LoadWord(kStart.data() + 6)) {
    return {};
  }
  std::uint64_t ends = ControlBytes(line) >> kStart.size();
  const char* const name = line + kStart.size();
  const auto next_end = [&ends, name] {
    const char* const end = name + std::countr_zero(ends);
    ends &= ends - 1;
    return end;
  };
  const char* const name_end = next_end();
  const char* const number_end = next_end();
  if (ends == 0) {
    return {};
  }
  const char* const ticks_end = next_end();
  if (*name_end != '\t' || name_end == name || *number_end != '\t' || *ticks_end != '\n') {
    return {};
  }
  const auto distance = [](const char* begin, const char* end) {
    return static_cast<std::size_t>(end - begin);
  };
  const std::uint32_t number = NumberBefore(number_end, distance(name_end + 1, number_end));
  const std::uint32_t ticks = NumberBefore(ticks_end, distance(number_end + 1, ticks_end));
  if (number == kNoOrdinaryNumber || ticks == kNoOrdinaryNumber) {
    return {};
  }
  return {{name, distance(name, name_end)}, number, ticks, ticks_end + 1};
}

}  // namespace ptick
