#include "model/model_merge.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

#include "value/arithmetic.h"
#include "value/list_operations.h"
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
  static const RecordTypes min_keys = {"startclock", "starttime"};
  static const RecordTypes max_keys = {"endclock", "endtime", "memused", "memfree"};
  static const RecordTypes last_keys = {"pagesize", "hertz"};
  if (min_keys.contains(type)) {
    return value < stored ? value : stored;
  }
  if (max_keys.contains(type)) {
    return value > stored ? value : stored;
  }
  return last_keys.contains(type) ? value : Value(Add(stored, value).Text());
}

void MergeLine(std::string_view line, MergeTables& tables) {
  static const RecordTypes dropped_keys = {"pid",      "ppid",  "typerate",
                                           "resource", "input", "program"};
  const std::int64_t fields = DCount(line, '\t');
  if (fields < 2 || Substring(line, 1, 8) != "PROFILE:") {
    return;
  }
  const std::string type = Field(Field(line, '\t', 1).Text, ':', 2).Text;
  const Value key = Field(line, '\t', 1, fields - 1).Text;
  const Value value = Field(line, '\t', fields).Text;
  if (dropped_keys.contains(type)) {
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
