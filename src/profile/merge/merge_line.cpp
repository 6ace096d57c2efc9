#include "profile/merge/merge_line.h"

#include <algorithm>
#include <array>

#include "profile/tables/record_types.h"

namespace ptick {

namespace {

struct MergeRule {
  std::string_view record_type;
  MergeKind kind;
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

// The text behind the prefix's ":" up to the next ":" or the end of the first field.
std::string_view RecordTypeOf(std::string_view key) {
  return key.substr(0, std::min(key.find(':'), key.find('\t')));
}

}  // namespace

MergeKind MergeKindOf(std::string_view record_type) {
  for (const MergeRule& rule : kMergeRules) {
    if (rule.record_type == record_type) {
      return rule.kind;
    }
  }
  return MergeKind::kAdded;
}

MergeLine DivideLine(std::string_view line) {
  const std::size_t last_tab = line.rfind('\t');
  if (last_tab == std::string_view::npos || !line.starts_with(kProfilePrefix)) {
    return {};
  }
  const std::string_view key = line.substr(0, last_tab).substr(kProfilePrefix.size());
  return {.key = DivideKey(key),
          .value = line.substr(last_tab + 1),
          .kind = MergeKindOf(RecordTypeOf(key))};
}

}  // namespace ptick
