#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/line_end.h"
#include "profile/scan/line_numbers.h"

namespace ptick {

/// How every line of an input begins that is written in the usual form.
inline constexpr std::string_view kInputStart = "PROFILE:input\t";

/// An input line that is written the way profiled processes write them: four ordinary numbers below
/// 2^31, each with a single TAB after it, and to the end of the line what was typed, in which no
/// TAB is next to another or the last byte.
struct InputLine {
  std::array<std::uint32_t, 4> numbers;  ///< code, characters, start clock, end clock
  std::string_view text;
  const char* next;  ///< the start of the next line
};

/// Takes apart the line that starts at `line` with kInputStart. The text ends with LF, with
/// kBlockPadding readable bytes after it. False, and `input` is anything, for a line in another
/// form.
inline bool ScanInputLine(const char* line, InputLine& input) {
  const char* at = line + kInputStart.size();
  for (std::uint32_t& number : input.numbers) {
    const std::size_t size = ReadNumber(at, number);
    if (size == 0) {
      return false;
    }
    at += size + 1;
  }
  const LineEnd end = FindLineEnd(at);
  // Where nothing was typed, the last TAB ends the line.
  if (end.has_empty_field && end.at != at) {
    return false;
  }
  input.text = {at, static_cast<std::size_t>(end.at - at)};
  input.next = end.at + 1;
  return true;
}

}  // namespace ptick
