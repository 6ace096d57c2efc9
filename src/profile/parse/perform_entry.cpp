#include "profile/parse/perform_entry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "profile/scan/tab_fields.h"
#include "profile/tables/profile_tables.h"
#include "value/dynamic_array.h"

namespace ptick {

namespace {

constexpr int kLastKeyField = 1000;
constexpr auto kCommand = static_cast<std::size_t>(PerformValue::kCommand);
constexpr char kShellMark = static_cast<char>(255);

/// Keys in the order of the values that they fill, from value 1 on.
constexpr std::array<std::string_view, kCommand - 1> kKeys = {
    "startclock", "endclock", "starttime", "endtime", "ticks", "usrcpu", "syscpu", "type"};

// A command for the shell is marked in front: the mark and the byte behind it are dropped. The
// first value of what remains is the command.
std::string_view CommandOf(std::string_view text) {
  if (!text.empty() && text.front() == kShellMark) {
    text.remove_prefix(std::min<std::size_t>(2, text.size()));
  }
  return text.substr(0, std::min(text.find(kFieldMark), text.find(kValueMark)));
}

// Calls set(value, text) for each pair of the record that fills a value of the entry, in order.
template <typename Set>
void ForEachValue(std::string_view profile_line, const Set& set) {
  TabFields fields(profile_line);
  fields.Next();  // the record type
  for (int field = 2; field <= kLastKeyField; field += 2) {
    const std::string_view key = fields.Next();
    if (key.empty()) {
      return;
    }
    if (key == "cmd") {
      set(kCommand, CommandOf(fields.Rest()));
      return;
    }
    const std::string_view text = fields.Next();
    const auto* const known = std::find(kKeys.begin(), kKeys.end(), key);
    if (known != kKeys.end()) {
      set(static_cast<std::size_t>(known - kKeys.begin()) + 1, text);
    }
  }
}

// Texts that hold value marks spread over the values behind theirs, which later pairs may replace:
// the entry is assigned to like any list.
std::string SpreadEntry(std::string_view profile_line) {
  std::string entry;
  ForEachValue(profile_line, [&entry](std::size_t value, std::string_view text) {
    entry = Assign(entry, {1, static_cast<std::int64_t>(value)}, text);
  });
  return ExtractPerform(entry, PerformValue::kCommand).empty() ? std::string() : entry;
}

}  // namespace

std::string PerformEntry(std::string_view profile_line) {
  if (profile_line.find(kValueMark) != std::string_view::npos) {
    return SpreadEntry(profile_line);
  }
  std::array<std::string_view, kCommand> values;
  ForEachValue(profile_line,
               [&values](std::size_t value, std::string_view text) { values[value - 1] = text; });
  std::string entry;
  if (values.back().empty()) {
    return entry;
  }
  for (const std::string_view value : values) {
    entry.append(value);
    entry += kValueMark;
  }
  entry.pop_back();
  return entry;
}

}  // namespace ptick
