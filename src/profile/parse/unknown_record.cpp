#include "profile/parse/unknown_record.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "profile/scan/trace_line.h"
#include "profile/tables/record_types.h"

namespace ptick {

// TABs at both ends of a line mean nothing, and the prefix has none, so only those before it and
// the one after the type are looked for.
std::optional<std::string_view> UnknownTypeOf(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
  if (!line.starts_with(kProfilePrefix)) {
    return std::nullopt;
  }
  line.remove_prefix(kProfilePrefix.size());
  const std::string_view type = line.substr(0, line.find('\t'));
  return FindRecordType(type) == nullptr ? std::optional(type) : std::nullopt;
}

std::optional<UnknownRecord> FindUnknownRecord(std::string_view block, std::uint64_t& lines) {
  const char* line = block.data();
  const char* const end = line + block.size();
  for (; line != end; ++lines) {
    if (const TraceLine trace = ScanTraceLine(line); trace.next != nullptr) {
      line = trace.next;
      continue;
    }
    const auto* line_end =
        static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
    const std::string_view text(line, static_cast<std::size_t>(line_end - line));
    if (const std::optional<std::string_view> type = UnknownTypeOf(text)) {
      return UnknownRecord{.line = text, .type = *type};
    }
    line = line_end + 1;
  }
  return std::nullopt;
}

}  // namespace ptick
