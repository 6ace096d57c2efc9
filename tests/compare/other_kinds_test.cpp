#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "compare/comparison.h"
#include "compare/support/comparison_of.h"
#include "value/number_text.h"

namespace ptick::compare {

namespace {

using testing::RowTexts;
using testing::Runs;
using testing::Sides;
using Texts = std::vector<std::string>;

TEST(Comparison, ShowsCommandsOfWhichAnyFigureChanged) {
  const std::string open =
      "perform|startclock|100|endclock|250|ticks|30|usrcpu|110|syscpu|10|cmd|OPEN";
  const std::string open_later =
      "perform|startclock|100|endclock|300|ticks|30|usrcpu|110|syscpu|10|cmd|OPEN";
  const Runs old_runs = {
      {"hertz|100", open, "perform|ticks|5|cmd|GONE X", "perform|ticks|1|cmd|SAME"}};
  const Runs new_runs = {{"hertz|100", open_later, open, "perform|ticks|1|cmd|SAME"}};
  const Sides sides(Kind::kCommand, old_runs, new_runs);
  const Comparison comparison = sides.Compare();
  EXPECT_EQ(RowTexts(comparison), (Texts{"OPEN 30 60 +30", "GONE X 5 - -5"}));
  for (const Row& row : comparison.Rows()) {
    EXPECT_FALSE(row.IsTested());
    const bool is_open = comparison.Names().Names()[row.name] == "OPEN";
    const auto text = [](const std::optional<Number>& number) {
      return number ? DecimalText(*number) : "-";
    };
    EXPECT_EQ(text(comparison.OldFigure(row, CommandFigure::kElapsed)), is_open ? "1.5" : "0");
    EXPECT_EQ(text(comparison.NewFigure(row, CommandFigure::kElapsed)), is_open ? "3.5" : "-");
    EXPECT_EQ(text(comparison.NewFigure(row, CommandFigure::kTimes)), is_open ? "2" : "-");
    EXPECT_EQ(text(comparison.NewFigure(row, CommandFigure::kCpu)), is_open ? "2.4" : "-");
  }
  // The same ticks in the same number of times, but longer.
  const Sides longer(Kind::kCommand, {{"hertz|100", open}}, {{"hertz|100", open_later}});
  EXPECT_EQ(RowTexts(longer.Compare()), Texts{"OPEN 30 30 +0"});
  const Sides same(Kind::kCommand, {{"hertz|100", open}}, {{"hertz|100", open}});
  EXPECT_EQ(RowTexts(same.Compare()), Texts{});
}

TEST(Comparison, KnowsNoSecondsWithoutAClockRate) {
  const Sides sides(Kind::kCommand, {{"perform|startclock|1|endclock|2|cmd|A"}}, {{}});
  const Comparison comparison = sides.Compare();
  ASSERT_EQ(comparison.Rows().size(), 1U);
  EXPECT_FALSE(comparison.OldFigure(comparison.Rows()[0], CommandFigure::kElapsed));
  EXPECT_TRUE(comparison.OldFigure(comparison.Rows()[0], CommandFigure::kTimes));
}

TEST(Comparison, CountsCallsByCallerAndSubroutine) {
  const Sides sides(
      Kind::kSubroutine,
      {{"subroutine_call|A SUB|3", "subroutine_call|B SUB|3", "subroutine_call|A SUB|4"}},
      {{"subroutine_call|A SUB|9", "subroutine_call|B SUB|3", "subroutine_call|B NEW|1"}});
  EXPECT_EQ(RowTexts(sides.Compare()), (Texts{"A SUB 7 9 +2", "B NEW - 1 +1"}));
}

TEST(Comparison, HasTheCountersThatCount) {
  const Sides sides(Kind::kCounter,
                    {{"ticks|95", "hertz|100", "startclock|500", "endclock|800", "usrcpu|190",
                      "portno|7", "pid|4711", "memused|5", "pagesize|4096", "read_count|18",
                      "user_ticks|1|20", "user_ticks|10|4"}},
                    {{"ticks|96", "hertz|100", "startclock|100", "endclock|300", "usrcpu|200",
                      "syscpu|3", "portno|9", "pid|4712", "memused|6", "pagesize|1", "read_count|8",
                      "user_ticks|1|21", "user_ticks|10|4", "input_count|2"}});
  EXPECT_EQ(RowTexts(sides.Compare(), SortBy::kName),
            (Texts{"elapsed 3 2 -1", "input_count 0 2 +2", "read_count 18 8 -10", "syscpu - 3 +3",
                   "ticks 95 96 +1", "user_ticks_1 20 21 +1", "usrcpu 190 200 +10"}));
}

TEST(Comparison, HasMeansOfCounters) {
  const Sides sides(Kind::kCounter, {{"ticks|10"}, {"ticks|20"}}, {{"ticks|16"}});
  const Comparison comparison = sides.Compare();
  EXPECT_EQ(RowTexts(comparison), Texts{"ticks 15 16 +1"});
  EXPECT_NEAR(*comparison.OldDeviation(comparison.Rows()[0]), 7.0710678118654755, 1e-12);
  EXPECT_FALSE(comparison.NewDeviation(comparison.Rows()[0]));
}

}  // namespace

}  // namespace ptick::compare
