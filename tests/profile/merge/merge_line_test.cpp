#include "profile/merge/merge_line.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Tabs;

/// The line divided: key, "=", value; "-" for one that is not merged.
std::string Divided(std::string_view line) {
  const MergeLine divided = SplitLine(line);
  if (divided.kind == MergeKind::kDropped) {
    return "-";
  }
  MergeKeys keys;
  std::string shown;
  keys.AppendText(keys.Intern(divided.key), shown);
  return shown.append("=").append(divided.value);
}

TEST(MergeLine, IsDividedAtItsLastTab) {
  struct Row {
    std::string line;
    std::string want;
  };
  const std::string head(60, 'h');
  const std::string long_name(300, 'n');
  const std::vector<Row> rows = {
      {"PROFILE:trace|P|10|3", "trace|P|10=3"},
      {"PROFILE:trace|P|010|3", "trace|P|010=3"},
      {"PROFILE:trace|P|10|003", "trace|P|10=003"},
      {"PROFILE:trace|P|10|", "trace|P|10="},
      {"PROFILE:trace||P|10||3", "trace||P|10|=3"},
      {"PROFILE:TRACE|P|10|3", "TRACE|P|10=3"},
      {"PROFILE:ticks|5", "ticks=5"},
      {"PROFILE:ticks|", "ticks="},
      {"PROFILE:|5", "=5"},
      {"PROFILE:|10|5", "|10=5"},
      {"PROFILE:||", "|="},
      {"PROFILE:ticks|5\r", "ticks=5\r"},
      {"PROFILE:x\x01\x02|5", "x\x01\x02=5"},
      {"PROFILE:" + head + "|1", head + "=1"},
      {"PROFILE:" + head + "|1|2", head + "|1=2"},
      {"PROFILE:a|" + head + "|2", "a|" + head + "=2"},
      {"PROFILE:trace|" + long_name + "|10|3", "trace|" + long_name + "|10=3"},
      {"PROFILE:perform|cmd|" + long_name, "perform|cmd=" + long_name},
      {"PROFILE:ticks", "-"},
      {"PROFILE:", "-"},
      {"PROFILE:" + long_name, "-"},
      {"", "-"},
      {"|", "-"},
      {" PROFILE:ticks|5", "-"},
      {"|PROFILE:ticks|5", "-"},
      {"profile:ticks|5", "-"},
      {"PROFILE|:ticks|5", "-"},
      {"a comment|5", "-"},
      {long_name + "|5", "-"},
      {"PROFILE:pid|5", "-"},
      {"PROFILE:pid:x|5", "-"},
      {"PROFILE:Pid|5", "Pid=5"},
      {"PROFILE:pid|" + long_name + "|5", "-"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Divided(Tabs(row.line)), Tabs(row.want)) << row.line;
  }
}

}  // namespace

}  // namespace ptick
