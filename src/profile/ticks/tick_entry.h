#pragma once

#include <cstddef>
#include <cstdint>

#include "profile/ticks/name_table.h"

namespace ptick {

/// One trace entry, compact. A line number and a tick count that are written the ordinary way are
/// held as numbers; other texts ("007", "1.50", "abc", empty) are kept aside exactly as they were
/// read.
struct TickEntry {
  static constexpr std::uint32_t kExactText = std::uint32_t{1} << 31U;

  NameTable::Id program;
  std::uint32_t line;   ///< the line number, or kExactText plus the index of the exact texts
  std::uint32_t ticks;  ///< the tick count; 0 where it is no whole number below 2^32

  static bool IsExactText(std::uint32_t line) { return (line & kExactText) != 0; }
  bool HasExactText() const { return IsExactText(line); }
  std::size_t ExactIndex() const { return line & ~kExactText; }
};

}  // namespace ptick
