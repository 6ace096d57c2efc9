#include "compare/per_run.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "value/number_text.h"

namespace ptick::compare {

namespace {

Number Of(const std::string& text) { return *ParseNumber(text); }

TEST(Factor, GivesMeansPerRun) {
  struct Row {
    std::string sum;
    std::size_t runs;
    Number want;
  };
  const std::vector<Row> rows = {
      {"6", 3, std::int64_t{2}},
      {"7", 2, 3.5},
      {"-7", 2, -3.5},
      {"1", 3, 1.0 / 3},
      {"0.3", 3, 0.1},
      {"9223372036854775807", 1, std::numeric_limits<std::int64_t>::max()},
      {"0", 5, std::int64_t{0}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Factor::PerRun(row.runs).Times(Of(row.sum)), row.want) << row.sum;
  }
}

TEST(Factor, MakesTotalsEqual) {
  // The new side has 300 ticks in 3 runs, the old one 50 in 2.
  const Factor factor = Factor::ToTotal(Of("300"), Of("50"), 2);
  EXPECT_EQ(factor.Times(Of("300")), Number(std::int64_t{25}));
  EXPECT_EQ(factor.Times(Of("6")), Number(0.5));
  EXPECT_NEAR(factor.AsDouble(), 1.0 / 12, 1e-15);
  EXPECT_EQ(Factor::ToTotal(Of("1.5"), Of("3"), 1).Times(Of("1.5")), Number(3.0));
}

TEST(Factor, TakesDifferencesExactly) {
  const Factor one = Factor::PerRun(1);
  const Factor third = Factor::PerRun(3);
  struct Row {
    std::string new_sum;
    Factor new_factor;
    std::string old_sum;
    Factor old_factor;
    Number want;
  };
  const std::string most = "9223372036854775807";
  const std::vector<Row> rows = {
      {"5", one, "7", one, std::int64_t{-2}},
      {"3", third, "1", one, std::int64_t{0}},
      {"7", third, "2", one, 1.0 / 3},
      {most, one, "9223372036854775806", one, std::int64_t{1}},
      {most, one, "-" + most, one, 18446744073709551614.0},
      {"0.3", one, "0.1", one, 0.2},
      {"0.3", third, "0.1", one, std::int64_t{0}},
      {most, Factor::ToTotal(Of(most), Of(most), 1), most, one, std::int64_t{0}},
  };
  for (const Row& row : rows) {
    const Number got =
        Factor::Difference(Of(row.new_sum), row.new_factor, Of(row.old_sum), row.old_factor);
    EXPECT_EQ(CompareNumbers(got, row.want), 0)
        << row.new_sum << " - " << row.old_sum << " is " << NumberText(got);
  }
}

}  // namespace

}  // namespace ptick::compare
