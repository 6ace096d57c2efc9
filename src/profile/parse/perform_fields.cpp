#include "profile/parse/perform_fields.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

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

// Fills a value with a text that may hold value marks: what comes after each of them fills a
// further value, and the values that were there move up. Nothing that has moved past the last one
// comes back.
void SetSpread(std::vector<std::string_view>& values, std::size_t value, std::string_view text) {
  values.resize(std::max(values.size(), value + 1));
  for (std::size_t mark = text.find(kValueMark);
       mark != std::string_view::npos && value + 1 < kValues; mark = text.find(kValueMark)) {
    values[value++] = text.substr(0, mark);
    text.remove_prefix(mark + 1);
    values.insert(values.begin() + static_cast<std::ptrdiff_t>(value), std::string_view());
  }
  values[value] = text.substr(0, text.find(kValueMark));
  values.resize(std::min(values.size(), kValues));
}

void AddSpreadValues(TabFields fields, bool keep, PerformTable& performs) {
  std::vector<std::string_view> spread;
  ForEachValue(fields, [&spread](std::size_t value, std::string_view text) {
    SetSpread(spread, value, text);
  });
  std::array<std::string_view, kValues> values;
  std::ranges::copy(spread, values.begin());
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
