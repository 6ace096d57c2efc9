#pragma once

#include "profile/tick_table.h"

namespace ptick {

/// Takes the trace lines that are written the way profiled processes write them straight from the
/// text into the table; nearly every line of a big profile is one.
///
/// Such a line is exactly "PROFILE:trace", a program name, a line number and a tick count,
/// separated by single TABs; it is at most 64 bytes long with its end, the name is not empty and
/// free of control bytes below 11, and both numbers have at most 7 digits and no leading zeros. Any
/// other line is left to the record parser, which knows all rules; the result is the same, so this
/// is speed and nothing else.
class TraceScanner {
 public:
  explicit TraceScanner(TickTable& table) : table_(table) {}

  /// Adds the line that starts at `line` when it is of that form and returns the start of the next
  /// one; null when it is not. The text ends with LF, with kBlockPadding readable bytes behind it.
  const char* Take(const char* line);

 private:
  TickTable& table_;
};

}  // namespace ptick
