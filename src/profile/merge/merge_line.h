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

/// How the head of a trace line in its usual form begins; the program's name follows.
inline constexpr std::string_view kTraceHead = kTraceStart.substr(kProfilePrefix.size());

/// The head of a trace line, whose program is part of it.
inline std::string_view TraceHead(std::string_view program) {
  return {program.data() - kTraceHead.size(), program.size() + kTraceHead.size()};
}

/// The key of a trace line, as SplitKey has it.
inline MergeKey KeyOfTrace(const TraceLine& trace) {
  return {TraceHead(trace.program), trace.line};
}

/// Splits a line without its end. A line without a TAB or without the prefix "PROFILE:" is not
/// merged.
MergeLine SplitLine(std::string_view line);

}  // namespace ptick
