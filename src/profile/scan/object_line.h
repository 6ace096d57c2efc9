#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/byte_masks.h"
#include "profile/scan/line_numbers.h"

namespace ptick {

/// How every line of a shared object begins that is written in the usual form.
inline constexpr std::string_view kObjectStart = "PROFILE:shared_object\t";

/// A shared_object line that is written the way profiled processes write them: a name that is not
/// empty and free of control bytes below 11, a TAB, and an ordinary number of at most 8 digits.
struct ObjectLine {
  std::string_view name;
  std::uint32_t used = 0;      ///< 0 when the object was not used
  const char* next = nullptr;  ///< the start of the next line; null for a line in another form
};

/// Takes apart the line that starts at `line` with kObjectStart. The text ends with LF, with
/// kBlockPadding readable bytes after it.
inline ObjectLine ScanObjectLine(const char* line) {
  constexpr unsigned char kMaxEnd = 10;
  const char* const name = line + kObjectStart.size();
  const char* from = name;
  std::uint64_t ends = ByteMasks<64>(from).AtMost(kMaxEnd);
  while (ends == 0) {
    from += 64;
    ends = ByteMasks<64>(from).AtMost(kMaxEnd);
  }
  const char* const name_end = from + std::countr_zero(ends);
  if (*name_end != '\t' || name_end == name) {
    return {};
  }
  const std::uint64_t number_ends = ByteMasks<16>(name_end + 1).AtMost(kMaxEnd);
  if (number_ends == 0) {
    return {};
  }
  const auto size = static_cast<std::size_t>(std::countr_zero(number_ends));
  const char* const end = name_end + 1 + size;
  const std::uint32_t used = NumberBefore(end, size);
  if (*end != '\n' || used == kNoOrdinaryNumber) {
    return {};
  }
  return {.name = {name, static_cast<std::size_t>(name_end - name)}, .used = used, .next = end + 1};
}

}  // namespace ptick
