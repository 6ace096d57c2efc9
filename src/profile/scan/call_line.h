#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/byte_masks.h"
#include "profile/scan/line_numbers.h"

namespace ptick {

/// How every line of a subroutine call begins that is written in the usual form.
inline constexpr std::string_view kCallStart = "PROFILE:subroutine_call\t";

/// A subroutine_call line that is written the way profiled processes write them: the caller, a
/// blank, the subroutine called, a TAB, and how often, an ordinary number of at most 8 digits. What
/// follows kCallStart is at most 64 bytes long with its end, and holds no control byte below 11.
struct CallLine {
  std::string_view caller;
  std::string_view called;  ///< up to a second blank, where there is one
  std::uint32_t times = 0;
  const char* next = nullptr;  ///< the start of the next line; null for a line in another form
};

/// Takes apart the line that starts at `line` with kCallStart. The text ends with LF, with
/// kBlockPadding readable bytes after it.
inline CallLine ScanCallLine(const char* line) {
  const char* const text = line + kCallStart.size();
  const ByteMasks<64> masks(text);
  const std::uint64_t ends = masks.AtMost(10);
  const std::uint64_t after_names = ends & (ends - 1);
  if (after_names == 0) {
    return {};
  }
  const char* const names_end = text + std::countr_zero(ends);
  const char* const end = text + std::countr_zero(after_names);
  const std::uint64_t blanks = masks.Equal(' ') & (ends ^ (ends - 1));
  if (*names_end != '\t' || *end != '\n' || blanks == 0) {
    return {};
  }
  const auto between = [](const char* from, const char* to) {
    return std::string_view(from, static_cast<std::size_t>(to - from));
  };
  const char* const caller_end = text + std::countr_zero(blanks);
  const std::uint64_t called_ends = (blanks & (blanks - 1)) | (ends & (~ends + 1));
  const std::uint32_t times = NumberBefore(end, between(names_end + 1, end).size());
  if (times == kNoOrdinaryNumber) {
    return {};
  }
  return {.caller = between(text, caller_end),
          .called = between(caller_end + 1, text + std::countr_zero(called_ends)),
          .times = times,
          .next = end + 1};
}

}  // namespace ptick
