// What the lines of a program took, added up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "profile/ticks/ordered_ticks.h"
#include "value/value.h"

namespace ptick::companion {

/// Ticks of a line of the source.
struct LineTicks {
  std::uint32_t line;
  Value ticks;
};

/// Ticks of a line that no source can have: its text is no number written in digits, or too large.
struct OddLineTicks {
  /// Points into the table that it comes from.
  std::string_view line;
  Value ticks;
};

/// What a program took. Entries of one line are added up; lines whose ticks come to 0 are left out.
struct ProgramTicks {
  std::vector<LineTicks> lines;   ///< ascending by line
  std::vector<OddLineTicks> odd;  ///< ascending by the bytes of their lines
  Value total = std::int64_t{0};
};

/// `ticks` has a row for each program; `row` is that of one.
ProgramTicks TicksOfProgram(const OrderedTicks& ticks, std::size_t row);

}  // namespace ptick::companion
