#pragma once

#include <cstdint>
#include <string_view>

#include "profile/merge_keys.h"
#include "profile/trace_line.h"

namespace ptick {

/// How the lines of one record type are combined.
enum class MergeKind {
  kSmallest,
  kLargest,
  kDropped,
  kLast,
  kAdded,
};

/// The kind of a record type; names are compared exactly, and unknown types are added.
MergeKind MergeKindOf(std::string_view record_type);

/// A line divided at its last TAB.
struct MergeLine {
  MergeKey Key;
  std::uint32_t Number = kNoOrdinaryNumber;  ///< of most lines that are added: the value
  std::string_view Value;                    ///< of any other line: the value's text
  MergeKind Kind = MergeKind::kDropped;      ///< also that of a line that is not merged at all
};

/// Divides the line that starts at `line` and ends with LF; kBlockPadding readable bytes stand
/// behind the end. A line without a TAB or without the prefix "PROFILE:" is not merged. Sets `line`
/// to the start of the next one.
MergeLine DivideLine(const char*& line);

}  // namespace ptick
