#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "profile/tables/profile_tables.h"

namespace ptick {
namespace {

TEST(ExtractPerform, GivesTheValueOrNothing) {
  struct Case {
    std::string_view entry;
    PerformValue position;
    std::string_view want;
  };
  const std::string_view full =
      "1\xfd"
      "2\xfd"
      "3\xfd"
      "4\xfd"
      "5\xfd"
      "6\xfd"
      "7\xfd"
      "t\xfd"
      "cmd";
  const std::vector<Case> cases = {
      {full, PerformValue::kStartClock, "1"},
      {full, PerformValue::kEndClock, "2"},
      {full, PerformValue::kStartTime, "3"},
      {full, PerformValue::kEndTime, "4"},
      {full, PerformValue::kTicks, "5"},
      {full, PerformValue::kUsrCpu, "6"},
      {full, PerformValue::kSysCpu, "7"},
      {full, PerformValue::kType, "t"},
      {full, PerformValue::kCommand, "cmd"},
      {"\xfd\xfd\xfd\xfd\xfd\xfd\xfd\xfd"
       "cmd",
       PerformValue::kStartClock, ""},
      {"\xfd\xfd\xfd\xfd\xfd\xfd\xfd\xfd"
       "cmd",
       PerformValue::kType, ""},
      {"\xfd\xfd\xfd\xfd\xfd\xfd\xfd\xfd"
       "cmd",
       PerformValue::kCommand, "cmd"},
      {"\xfd\xfd\xfd\xfd\xfd\xfd\xfd\xfd"
       "cmd\xfd"
       "more",
       PerformValue::kCommand, "cmd"},
      {"1\xfd"
       "2",
       PerformValue::kEndClock, "2"},
      {"1\xfd"
       "2",
       PerformValue::kStartTime, ""},
      {"1\xfd"
       "2",
       PerformValue::kCommand, ""},
      {"", PerformValue::kStartClock, ""},
      {"", PerformValue::kCommand, ""},
      {"a\xfc"
       "b",
       PerformValue::kStartClock,
       "a\xfc"
       "b"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ExtractPerform(c.entry, c.position), c.want)
        << c.entry << " " << static_cast<int>(c.position);
  }
}

}  // namespace
}  // namespace ptick
