// What "trace" records leave in `Details`.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Parse;
using testing::Records;
using testing::RowTexts;

std::string Details(std::string_view text, bool per_program, bool increasing) {
  return RowTexts(std::move(Parse(text).tables->Details),
                  increasing ? SortOrder::kAscending : SortOrder::kDescending, per_program);
}

TEST(TraceRecords, MakeAnEntryEach) {
  struct Row {
    std::string_view record;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"trace|A|10|3", "A|10|3"},
      {"TRACE|A|10|3", "A|10|3"},
      {"Trace|A|10|3|more|and more", "A|10|3"},
      {"trace|a b c|10|3", "a b c|10|3"},
      {"trace| A | 10 | 3 ", " A | 10 | 3 "},
      {"trace|A|0010|3.50", "A|0010|3.50"},
      {"trace|A|x|y", "A|x|y"},
      {"trace|A|12345678|12345678", "A|12345678|12345678"},
      {"trace|A\xfd"
       "B|10|3",
       "A\xfd"
       "B|10|3"},
      {"trace|main()|10|3", "main()|10|3"},
      // A missing field shifts the others, for a run of TABs separates like one.
      {"trace||10|3", "10|3|"},
      {"trace|A||3", "A|3|"},
      {"trace|A|10|", "A|10|"},
      {"trace|A", "A||"},
      {"trace", "||"},
  };
  for (const Row& row : rows) {
    for (const bool per_program : {false, true}) {
      EXPECT_EQ(Details(Records({row.record}), per_program, false), row.want) << row.record;
    }
  }
}

TEST(TraceRecords, AreKeptInTickOrder) {
  struct Row {
    std::string text;
    std::string_view want_decreasing;
    std::string_view want_increasing;
  };
  const std::vector<Row> rows = {
      {"", "", ""},
      {Records({"trace|A|1|5", "trace|B|2|9", "trace|A|3|7"}), "B|2|9 A|3|7 A|1|5",
       "A|1|5 A|3|7 B|2|9"},
      {Records({"trace|A|1|9", "trace|A|2|10"}), "A|2|10 A|1|9", "A|1|9 A|2|10"},
      // Entries are never joined; of equal ticks the later comes first.
      {Records({"trace|A|1|5", "trace|A|1|5"}), "A|1|5 A|1|5", "A|1|5 A|1|5"},
      {Records({"trace|A|1|5", "trace|A|2|5", "trace|A|3|5"}), "A|3|5 A|2|5 A|1|5",
       "A|3|5 A|2|5 A|1|5"},
      // However they are written: usual lines and others mixed.
      {Records({"trace|A|1|5", "TRACE|A|2|5", "trace|A|3|05", "trace|A|4|5|", "trace|A|5|5.0"}),
       "A|5|5.0 A|4|5 A|3|05 A|2|5 A|1|5", "A|5|5.0 A|4|5 A|3|05 A|2|5 A|1|5"},
      {Records({"trace|A|1|", "trace|A|2|0", "trace|A|3|abc", "trace|A|4|-1"}),
       "A|3|abc A|2|0 A|1| A|4|-1", "A|4|-1 A|3|abc A|2|0 A|1|"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Details(row.text, false, false), row.want_decreasing) << row.text;
    EXPECT_EQ(Details(row.text, false, true), row.want_increasing) << row.text;
  }
}

TEST(TraceRecords, HaveARowPerProgramWhenAskedFor) {
  struct Row {
    std::string text;
    std::string_view want_decreasing;
    std::string_view want_increasing;
  };
  const std::vector<Row> rows = {
      {"", "", ""},
      {Records({"trace|b|1|5", "trace|a|2|9", "trace|b|3|7", "trace|B|4|1"}),
       "b|3|7 b|1|5 / a|2|9 / B|4|1", "b|1|5 b|3|7 / a|2|9 / B|4|1"},
      {Records({"trace|A|1|5", "trace|B|2|5", "trace|A|3|5", "trace|B|4|5"}),
       "A|3|5 A|1|5 / B|4|5 B|2|5", "A|3|5 A|1|5 / B|4|5 B|2|5"},
      {Records({"trace|A|1|5", "trace|A |1|5", "trace|a|1|5"}), "A|1|5 / A |1|5 / a|1|5",
       "A|1|5 / A |1|5 / a|1|5"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Details(row.text, true, false), row.want_decreasing) << row.text;
    EXPECT_EQ(Details(row.text, true, true), row.want_increasing) << row.text;
  }
}

TEST(TraceRecords, MayBeOfAnyNumberOfPrograms) {
  std::string text;
  std::string want;
  for (int program = 1; program <= 1200; ++program) {
    const std::string name = "P" + std::to_string(program);
    text += Records({"trace|" + name + "|1|5"});
    text += Records({"trace|P1|2|" + std::to_string(program)});
    want += program == 1 ? "" : " / " + name + "|1|5";
  }
  const std::string rows = Details(text, true, false);
  EXPECT_EQ(rows.substr(rows.find(" / ")), want);
  EXPECT_EQ(rows.substr(0, 10), "P1|2|1200 ");
}

TEST(TraceRecords, LeaveAllElseAlone) {
  const testing::Parsed parsed = Parse(Records({"trace|A|1|5", "trace|A|2|6"}));
  EXPECT_TRUE(parsed.tables->TotalTicks.Empty());
  EXPECT_EQ(parsed.tables->ProgramName, "(unknown)");
  EXPECT_EQ(parsed.tables->InputCount.Text(), "0");
}

}  // namespace

}  // namespace ptick
