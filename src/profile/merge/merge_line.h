#pragma once

#include <cstddef>
#include <string_view>

#include "profile/merge/merge_keys.h"
#include "profile/scan/trace_line.h"
#include "profile/tables/record_types.h"

namespace ptick {

/// A line split at its last TAB.
struct MergeLine {
  MergeKey key;
  std::string_view value;
  MergeKind kind = MergeKind::kDropped;  ///< also that of a line that is not merged at all
};

/// The key of the trace line at `line`, as SplitKey has it.
inline MergeKey KeyOfTrace(const char* line, const TraceLine& trace) {
  const char* const key = line + kProfilePrefix.size();
  const char* const name_end = trace.program.data() + trace.program.size();
  return {{key, static_cast<std::size_t>(name_end - key)}, trace.line};
}

/// Splits a line without its end. A line without a TAB or without the prefix "PROFILE:" is not
/// merged.
MergeLine SplitLine(std::string_view line);

}  // namespace ptick
