#include "profile/parse/trace_lines.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "profile/scan/tab_fields.h"
#include "profile/scan/trace_line.h"
#include "profile/tables/record_types.h"
#include "value/text.h"

namespace ptick {

namespace {

// Whether a line can be a trace record at all, upper and lower case alike. Its TABs need not be
// trimmed.
bool MayBeTrace(std::string_view line) {
  constexpr std::string_view kType = "trace";
  line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
  if (!line.starts_with(kProfilePrefix)) {
    return false;
  }
  line.remove_prefix(kProfilePrefix.size());
  return std::ranges::equal(line.substr(0, kType.size()), kType,
                            [](char a, char b) { return (a | 0x20) == b; });
}

// A trace line in an unusual form; false for any other line.
bool TakeUnusual(std::string_view line, TickTable& ticks) {
  if (!MayBeTrace(line)) {
    return false;
  }
  const std::string trimmed = Trim(line, '\t');
  TabFields fields(std::string_view(trimmed).substr(kProfilePrefix.size()));
  const RecordType* const type = FindRecordType(fields.Next());
  if (type == nullptr || type->kind != RecordKind::kTrace) {
    return false;
  }
  const std::string_view program = fields.Next();
  const std::string_view number = fields.Next();
  ticks.Add(program, number, fields.Next());
  return true;
}

}  // namespace

std::int64_t TakeTraceLines(std::string_view block, std::int64_t before, TickTable& ticks,
                            OtherLines& others) {
  std::int64_t line_no = before;
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    if (const TraceLine trace = ScanTraceLine(line); trace.next != nullptr) {
      ticks.Add(ticks.Programs().Intern(trace.program), trace.line, trace.ticks);
      line = trace.next;
      ++line_no;
      continue;
    }
    const auto left = static_cast<std::size_t>(end - line);
    const char* const next = static_cast<const char*>(std::memchr(line, '\n', left)) + 1;
    const auto size = static_cast<std::size_t>(next - line);
    if (!TakeUnusual({line, size - 1}, ticks)) {
      others.Add({line, size}, line_no);
    }
    line = next;
    ++line_no;
  }
  return line_no - before;
}

}  // namespace ptick
