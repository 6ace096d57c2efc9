#pragma once

#include <string_view>

#include "profile/merge/merge_keys.h"

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
  MergeKey key;
  std::string_view value;
  MergeKind kind = MergeKind::kDropped;  ///< also that of a line that is not merged at all
};

/// Divides a line without its end. A line without a TAB or without the prefix "PROFILE:" is not
/// merged.
MergeLine DivideLine(std::string_view line);

}  // namespace ptick
