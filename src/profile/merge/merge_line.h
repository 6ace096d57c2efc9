#pragma once

#include <string_view>

#include "profile/merge/merge_keys.h"
#include "profile/tables/record_types.h"

namespace ptick {

/// A line split at its last TAB.
struct MergeLine {
  MergeKey key;
  std::string_view value;
  MergeKind kind = MergeKind::kDropped;  ///< also that of a line that is not merged at all
};

/// Splits a line without its end. A line without a TAB or without the prefix "PROFILE:" is not
/// merged.
MergeLine SplitLine(std::string_view line);

}  // namespace ptick
