#include "ptick_annotate/line_ticks.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "ptick_annotate/shares.h"
#include "support/profiles.h"

namespace ptick::companion {

namespace {

using ptick::testing::Records;

/// "1:5 7:2 | x:1 | total 8" of the first program.
std::string TicksOf(std::string_view profile) {
  auto parsed = ptick::testing::Parse(profile);
  const OrderedTicks ticks(std::move(parsed.tables->Details), SortOrder::kDescending, true);
  const ProgramTicks sums = TicksOfProgram(ticks, 0);
  std::string text;
  for (const LineTicks& own : sums.lines) {
    text += std::to_string(own.line) + ":" + own.ticks.Text() + " ";
  }
  text += "|";
  for (const OddLineTicks& own : sums.odd) {
    text += " " + std::string(own.line) + ":" + own.ticks.Text();
  }
  return text + " | total " + sums.total.Text();
}

TEST(LineTicks, AreAddedUpByLine) {
  struct Row {
    std::string profile;
    std::string want;
  };
  const std::vector<Row> rows = {
      {Records({"trace|A|7|2", "trace|A|1|5", "trace|B|1|9", "trace|A|7|1"}),
       "1:5 7:3 | | total 8"},
      // All that name a line of the source in digits are that line.
      {Records({"trace|A|7|2", "trace|A|007|0.5"}), "7:2.5 | | total 2.5"},
      {Records({"trace|A|0|2", "trace|A|x|1", "trace|A|-1|1", "trace|A|99999999999|4",
                "trace|A|+7|1", "trace|A|x|2"}),
       "| +7:1 -1:1 0:2 99999999999:4 x:3 | total 11"},
      {Records({"trace|A|1|5", "trace|A|1|-5", "trace|A|2|0", "trace|A|3|what"}), "| | total 0"},
      {Records({"trace|A|4294967295|1", "trace|A|1|4294967296"}),
       "1:4294967296 4294967295:1 | | total 4294967297"},
      {Records({"trace|A"}), "| | total 0"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(TicksOf(row.profile), row.want) << row.profile;
  }
}

TEST(Shares, AreCutToOneDecimal) {
  struct Row {
    Value ticks;
    Value total;
    std::string want;
    Style style;
  };
  const std::vector<Row> rows = {
      {1, 3, "33.3", Style::kHot},     {2, 3, "66.6", Style::kHot},
      {3, 3, "100.0", Style::kHot},    {0, 3, "0.0", Style::kPlain},
      {1, 0, "0.0", Style::kPlain},    {1, "x", "0.0", Style::kPlain},
      {5, 100, "5.0", Style::kHot},    {499, 10000, "4.9", Style::kWarm},
      {1, 100, "1.0", Style::kWarm},   {99, 10000, "0.9", Style::kPlain},
      {-1, 3, "-33.3", Style::kPlain}, {-1, 1001, "0.0", Style::kPlain},
      {0.5, 4, "12.5", Style::kHot},   {3000, 2, "150000.0", Style::kHot},
  };
  for (const Row& row : rows) {
    const Shares shares(row.total);
    EXPECT_EQ(shares.Of(row.ticks), row.want);
    EXPECT_EQ(shares.StyleOf(row.ticks), row.style) << row.want;
  }
}

}  // namespace

}  // namespace ptick::companion
