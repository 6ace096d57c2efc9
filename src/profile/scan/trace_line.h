#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/byte_masks.h"
#include "profile/scan/line_numbers.h"
#include "profile/scan/load_word.h"

namespace ptick {

/// How every trace line begins that is written in the usual form.
inline constexpr std::string_view kTraceStart = "PROFILE:trace\t";

inline bool StartsAsTraceLine(const char* line) {
  return LoadWord(line) == LoadWord(kTraceStart.data()) &&
         LoadWord(line + 6) == LoadWord(kTraceStart.data() + 6);
}

/// A trace line that is written the way profiled processes write them; nearly every line of a big
/// profile is one.
///
/// Such a line is exactly "PROFILE:trace", a program name, a line number and a tick count,
/// separated by single TABs; it is at most 64 bytes long with its end, the name is not empty and
/// free of control bytes below 11, and both numbers have at most 8 digits and no leading zeros.
struct TraceLine {
  std::string_view program;
  std::uint32_t line = 0;
  std::uint32_t ticks = 0;
  const char* next = nullptr;  ///< the start of the next line; null for a line in another form
};

/// Takes apart the line that starts at `line`. The text ends with LF, with kBlockPadding readable
/// bytes after it. What is not of the form above is left to those who know all rules; the result
/// is the same, so this is speed and nothing else.
///
/// Looks at 64 bytes at once for the bytes that end something: one bit each for TABs, line ends and
/// other low control bytes. Where the fields of the line are is then known from four bits,
/// without a loop and without waiting for one field to be read before the next is found. Numbers
/// are read as the 8 bytes before their end, all digits valued together.
inline TraceLine ScanTraceLine(const char* line) {
  if (!StartsAsTraceLine(line)) {
    return {};
  }
  std::uint64_t ends = ByteMasks<64>(line).AtMost(10) >> kTraceStart.size();
  const char* const name = line + kTraceStart.size();
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
