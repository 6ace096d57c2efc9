#include "profile/merge_line.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "profile/control_bytes.h"
#include "profile/ordinary_number.h"

namespace ptick {

namespace {

constexpr std::string_view kPrefix = "PROFILE:";

struct MergeRule {
  std::string_view RecordType;
  MergeKind Kind;
};

/// `MinKeys`, `MaxKeys`, `DroppedKeys` and `LastKeys`.
constexpr std::array kMergeRules = {
    MergeRule{"startclock", MergeKind::kSmallest}, MergeRule{"starttime", MergeKind::kSmallest},
    MergeRule{"endclock", MergeKind::kLargest},    MergeRule{"endtime", MergeKind::kLargest},
    MergeRule{"memused", MergeKind::kLargest},     MergeRule{"memfree", MergeKind::kLargest},
    MergeRule{"pid", MergeKind::kDropped},         MergeRule{"ppid", MergeKind::kDropped},
    MergeRule{"typerate", MergeKind::kDropped},    MergeRule{"resource", MergeKind::kDropped},
    MergeRule{"input", MergeKind::kDropped},       MergeRule{"program", MergeKind::kDropped},
    MergeRule{"pagesize", MergeKind::kLast},       MergeRule{"hertz", MergeKind::kLast},
};

constexpr std::size_t kNone = std::string_view::npos;

/// Where a line ends, and its last two TABs.
struct LineMarks {
  std::size_t End = 0;
  std::size_t LastTab = kNone;
  std::size_t TabBefore = kNone;
};

// Nearly every line ends within the 64 bytes that are looked at at once.
LineMarks FindMarks(const char* line) {
  LineMarks marks;
  for (std::uint64_t bits = ControlBytes(line); bits != 0; bits &= bits - 1) {
    const auto at = static_cast<std::size_t>(std::countr_zero(bits));
    if (line[at] == '\n') {
      marks.End = at;
      return marks;
    }
    if (line[at] == '\t') {
      marks.TabBefore = marks.LastTab;
      marks.LastTab = at;
    }
  }
  const auto* const end = static_cast<const char*>(::rawmemchr(line, '\n'));
  const std::string_view text(line, static_cast<std::size_t>(end - line));
  const std::size_t last = text.rfind('\t');
  const std::size_t before = last == kNone ? kNone : text.substr(0, last).rfind('\t');
  return {text.size(), last, before};
}

// The text behind the prefix's ":" up to the next ":" or the end of the first field.
std::string_view RecordTypeOf(std::string_view key) {
  return key.substr(0, std::min(key.find(':'), key.find('\t')));
}

}  // namespace

MergeKind MergeKindOf(std::string_view record_type) {
  for (const MergeRule& rule : kMergeRules) {
    if (rule.RecordType == record_type) {
      return rule.Kind;
    }
  }
  return MergeKind::kAdded;
}

MergeLine DivideLine(const char*& line) {
  if (const TraceLine trace = ScanTraceLine(line); trace.Next != nullptr) {
    const char* const key = line + kPrefix.size();
    const char* const name_end = trace.Program.data() + trace.Program.size();
    line = trace.Next;
    return {.Key = {{key, static_cast<std::size_t>(name_end - key)}, trace.Line},
            .Number = trace.Ticks,
            .Value = {},
            .Kind = MergeKind::kAdded};
  }
  const LineMarks marks = FindMarks(line);
  const std::string_view text(line, marks.End);
  line += marks.End + 1;
  if (marks.LastTab == kNone || !text.starts_with(kPrefix)) {
    return {};
  }
  const std::string_view key = text.substr(0, marks.LastTab).substr(kPrefix.size());
  return {
      .Key = DivideKey(key, marks.TabBefore == kNone ? kNone : marks.TabBefore - kPrefix.size()),
      .Number = kNoOrdinaryNumber,
      .Value = text.substr(marks.LastTab + 1),
      .Kind = MergeKindOf(RecordTypeOf(key))};
}

}  // namespace ptick
