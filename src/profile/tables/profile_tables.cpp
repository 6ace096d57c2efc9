#include "profile/tables/profile_tables.h"

#include "value/dynamic_array.h"

namespace ptick {

std::string_view ExtractPerform(std::string_view entry, PerformValue n) {
  for (int skipped = 1; skipped < static_cast<int>(n); ++skipped) {
    const std::size_t mark = entry.find(kValueMark);
    if (mark == std::string_view::npos) {
      return {};
    }
    entry.remove_prefix(mark + 1);
  }
  return entry.substr(0, entry.find(kValueMark));
}

}  // namespace ptick
