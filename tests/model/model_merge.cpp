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
  ValueList keys;
  ValueList values;
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
  const std::string type = Field(Field(line, '\t', 1).text, ':', 2).text;
  const Value key = Field(line, '\t', 1, fields - 1).text;
  const Value value = Field(line, '\t', fields).text;
  if (dropped_keys.contains(type)) {
    return;
  }
  const Located known = LocateIn(key, tables.keys, LocateOrder::kNone);
  if (!known.found) {
    tables.keys.push_back(key);
    tables.values.push_back(value);
    return;
  }
  Value& stored = tables.values[static_cast<std::size_t>(known.position - 1)];
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
  for (std::size_t i = 0; i < tables.keys.size(); ++i) {
    merged.push_back(tables.keys[i].Text() + "\t" + tables.values[i].Text());
  }
  return merged;
}

}  // namespace ptick::model
