#include "model/model_merge.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

#include "value/text.h"

namespace ptick::model {

namespace {

using RecordTypes = std::set<std::string, std::less<>>;

/// `MergeKeys` and `MergeValues`. A sum is kept as its text, like everything in a list.
struct MergeTables {
  ValueList Keys;
  ValueList Values;
};

// What the values of a record type become when its key is known already.
Value Combined(const std::string& type, const Value& stored, const Value& value) {
  static const RecordTypes kMinKeys = {"startclock", "starttime"};
  static const RecordTypes kMaxKeys = {"endclock", "endtime", "memused", "memfree"};
  static const RecordTypes kLastKeys = {"pagesize", "hertz"};
  if (kMinKeys.contains(type)) {
    return value < stored ? value : stored;
  }
  if (kMaxKeys.contains(type)) {
    return value > stored ? value : stored;
  }
  return kLastKeys.contains(type) ? value : Value(Add(stored, value).Text());
}

void MergeLine(std::string_view line, MergeTables& tables) {
  static const RecordTypes kDroppedKeys = {"pid",      "ppid",  "typerate",
                                           "resource", "input", "program"};
  const std::int64_t fields = DCount(line, '\t');
  if (fields < 2 || Substring(line, 1, 8) != "PROFILE:") {
    return;
  }
  const std::string type = Field(Field(line, '\t', 1).Text, ':', 2).Text;
  const Value key = Field(line, '\t', 1, fields - 1).Text;
  const Value value = Field(line, '\t', fields).Text;
  if (kDroppedKeys.contains(type)) {
    return;
  }
  const Located known = LocateIn(key, tables.Keys, LocateOrder::kNone);
  if (!known.Found) {
    tables.Keys.push_back(key);
    tables.Values.push_back(value);
    return;
  }
  Value& stored = tables.Values[static_cast<std::size_t>(known.Position - 1)];
  stored = Combined(type, stored, value);
}

}  // namespace

std::vector<std::string> MergeModelLines(const std::vector<std::vector<std::string>>& profiles) {
  MergeTables tables;
  for (const std::vector<std::string>& lines : profiles) {
    for (const std::string& line : lines) {
      MergeLine(line, tables);
    }
  }
  std::vector<std::string> merged;
  for (std::size_t i = 0; i < tables.Keys.size(); ++i) {
    merged.push_back(tables.Keys[i].Text() + "\t" + tables.Values[i].Text());
  }
  return merged;
}

}  // namespace ptick::model
