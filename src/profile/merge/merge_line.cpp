#include "profile/merge/merge_line.h"

#include <algorithm>

namespace ptick {

namespace {

// The text after the prefix's ":" up to the next ":" or the end of the first field.
std::string_view RecordTypeOf(std::string_view key) {
  return key.substr(0, std::min(key.find(':'), key.find('\t')));
}

}  // namespace

MergeLine SplitLine(std::string_view line) {
  const std::size_t last_tab = line.rfind('\t');
  if (last_tab == std::string_view::npos || !line.starts_with(kProfilePrefix)) {
    return {};
  }
  const std::string_view key = line.substr(0, last_tab).substr(kProfilePrefix.size());
  return {.key = SplitKey(key),
          .value = line.substr(last_tab + 1),
          .kind = MergeKindOf(RecordTypeOf(key))};
}

}  // namespace ptick
