#include "compare/gates.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "compare/row_order.h"
#include "compare/support/comparison_of.h"

namespace ptick::compare {

namespace {

using testing::Runs;
using testing::Sides;
using testing::Traces;

Runs Ticks(const std::vector<std::string>& totals) {
  Runs runs;
  for (const std::string& total : totals) {
    runs.push_back({"ticks|" + total});
  }
  return runs;
}

TEST(Gates, SayWhetherTheTotalIsSlower) {
  struct Row {
    std::vector<std::string> old_totals;
    std::vector<std::string> new_totals;
    std::string percent;
    bool want;
  };
  const std::vector<Row> rows = {
      {{"10000"}, {"11000"}, "5", true},
      {{"10000"}, {"11000"}, "10", false},
      {{"10000"}, {"11000"}, "9.9999", true},
      {{"10000"}, {"11000"}, "0", true},
      {{"10000"}, {"10000"}, "0", false},
      {{"10000"}, {"9000"}, "0", false},
      // More than the bar, but by noise.
      {{"100"}, {"110"}, "5", false},
      {{"10000", "20000", "15000"}, {"18000", "11000", "20000"}, "5", false},
      {{"10000", "10001", "10002"}, {"11000", "11001", "11002"}, "5", true},
      // One run against several: a mean each.
      {{"10000"}, {"11000", "11000"}, "9", true},
      {{"10000"}, {"11000", "9000"}, "0", false},
      // Of nothing everything is more than any share.
      {{"0"}, {"1000"}, "1000000", true},
      {{"0"}, {"0"}, "0", false},
      // What is not tested is not taken as noise.
      {{"100.5"}, {"110"}, "5", true},
      {{"-100"}, {"5"}, "5", true},
  };
  for (const Row& row : rows) {
    const Sides sides(Kind::kProgram, Ticks(row.old_totals), Ticks(row.new_totals));
    EXPECT_EQ(IsTotalSlower(sides.Compare(), row.percent), row.want)
        << row.old_totals[0] << " to " << row.new_totals[0] << " at " << row.percent;
  }
}

TEST(Gates, FindTheRowsThatAreSlower) {
  const Sides sides(Kind::kLine, {Traces({"A 1 1000", "A 2 500", "A 3 8500"})},
                    {Traces({"A 1 1600", "A 2 520", "A 3 7000", "A 4 400", "A 5 2.5"})});
  const Comparison comparison = sides.Compare();
  const std::vector<std::uint32_t> order = OrderRows(comparison, SortBy::kChange);
  struct Row {
    std::string percent;
    std::vector<std::uint32_t> want;  ///< lines
  };
  const std::vector<Row> rows = {
      {"0", {1, 4, 5}}, {"0.02", {1, 4, 5}}, {"3.9", {1, 4}}, {"4", {1}}, {"5.9", {1}}, {"6", {}},
  };
  for (const Row& row : rows) {
    std::vector<std::uint32_t> lines;
    for (const std::uint32_t n : SlowerRows(comparison, order, row.percent)) {
      lines.push_back(comparison.Rows()[n].new_detail);
    }
    EXPECT_EQ(lines, row.want) << row.percent;
  }
}

}  // namespace

}  // namespace ptick::compare
