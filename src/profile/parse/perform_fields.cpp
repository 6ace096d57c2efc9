#include "profile/parse/perform_fields.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "value/dynamic_array.h"

namespace ptick {

namespace {

/// Keys that come later in a record than this field are not read.
constexpr int kLastKeyField = 1000;

constexpr char kShellMark = static_cast<char>(255);

/// The values of a `Performs` entry: the numbers, the type and the command.
constexpr std::size_t kType = kPerformNumbers;
constexpr std::size_t kCommand = kType + 1;
constexpr std::size_t kValues = kCommand + 1;

/// Keys in the order of the values that they fill.
constexpr std::array<std::string_view, kCommand> kKeys = {
    "startclock", "endclock", "starttime", "endtime", "ticks", "usrcpu", "syscpu", "type"};

// A command for the shell has a mark before it: the mark and the byte after it are dropped. The
// first value of what remains is the command.
std::string_view CommandOf(std::string_view text) {
  if (!text.empty() && text.front() == kShellMark) {
    text.remove_prefix(std::min<std::size_t>(2, text.size()));
  }
  return text.substr(0, std::min(text.find(kFieldMark), text.find(kValueMark)));
}

// Calls set(value, text) for each pair of the record that fills a value, in order.
template <typename Set>
void ForEachValue(TabFields fields, const Set& set) {
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
      set(static_cast<std::size_t>(known - kKeys.begin()), text);
    }
  }
}

void AddValues(const std::array<std::string_view, kValues>& values, bool keep,
               PerformTable& performs) {
  if (values[kCommand].empty()) {
    return;
  }
  PerformTexts texts;
  std::copy_n(values.begin(), kPerformNumbers, texts.numbers.begin());
  texts.type = values[kType];
  texts.command = values[kCommand];
  performs.Add(texts, keep);
}

// A text that holds value marks also fills the values after its own, which later pairs may
// overwrite; assigning to a list does just that.
void AddSpreadValues(TabFields fields, bool keep, PerformTable& performs) {
  std::string list;
  ForEachValue(fields, [&list](std::size_t value, std::string_view text) {
    list = Assign(list, {1, static_cast<std::int64_t>(value) + 1}, text);
  });
  std::array<std::string, kValues> texts;
  std::array<std::string_view, kValues> values;
  for (std::size_t value = 0; value < kValues; ++value) {
    texts[value] = Extract(list, {1, static_cast<std::int64_t>(value) + 1});
    values[value] = texts[value];
  }
  AddValues(values, keep, performs);
}

}  // namespace

void AddPerform(TabFields fields, bool keep, PerformTable& performs) {
  if (fields.Rest().find(kValueMark) != std::string_view::npos) {
    AddSpreadValues(fields, keep, performs);
    return;
  }
  std::array<std::string_view, kValues> values;
  ForEachValue(fields,
               [&values](std::size_t value, std::string_view text) { values[value] = text; });
  AddValues(values, keep, performs);
}

}  // namespace ptick
