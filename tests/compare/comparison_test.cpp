#include "compare/comparison.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "compare/support/comparison_of.h"
#include "value/number_text.h"

namespace ptick::compare {

namespace {

using testing::RowTexts;
using testing::Runs;
using testing::Sides;
using testing::Traces;
using Texts = std::vector<std::string>;

Runs OneRun(const Texts& entries) { return {Traces(entries)}; }

TEST(Comparison, HasARowForEachKeyWhoseMeanChanged) {
  struct Row {
    Runs old_runs;
    Runs new_runs;
    Texts want;
  };
  const std::vector<Row> rows = {
      {OneRun({}), OneRun({}), {}},
      {OneRun({"A 1 500"}), OneRun({"A 1 500"}), {}},
      {OneRun({"A 1 500"}), OneRun({"A 1 700"}), {"A 1 500 700 +200"}},
      {OneRun({"A 1 700"}), OneRun({"A 1 500"}), {"A 1 700 500 -200"}},
      {OneRun({"A 1 500"}), OneRun({}), {"A 1 500 - -500"}},
      {OneRun({}), OneRun({"A 1 500"}), {"A 1 - 500 +500"}},
      // Absent counts as 0.
      {OneRun({"A 1 0"}), OneRun({}), {}},
      {OneRun({}), OneRun({"A 1 0"}), {}},
      // Entries of one key are added up.
      {OneRun({"A 1 200", "A 1 300"}), OneRun({"A 1 500"}), {}},
      {OneRun({"A 1 5"}), OneRun({"A 1 6"}), {"A 1 5 6 +1~"}},
      // Means of runs; a run without the key is 0.
      {{Traces({"A 1 500"}), Traces({"A 1 700"})}, OneRun({"A 1 600"}), {}},
      {{Traces({"A 1 500"}), {}}, OneRun({"A 1 250"}), {}},
      {{Traces({"A 1 500"}), Traces({"A 1 501"})}, OneRun({"A 1 900"}), {"A 1 500.5 900 +399.5"}},
      // Lines are told apart by their texts where they are not ordinary.
      {OneRun({"A 7 500"}), OneRun({"A 007 500"}), {"A 007 - 500 +500", "A 7 500 - -500"}},
      {OneRun({"A x 500"}), OneRun({"A x 900"}), {"A x 500 900 +400"}},
      {OneRun({"A 4000000000 500"}), OneRun({"A 4000000000 5"}), {"A 4000000000 500 5 -495"}},
      // An ordinary line whose ticks are not is that line.
      {OneRun({"A 7 1.5"}), OneRun({"A 7 1"}), {"A 7 1.5 1 -0.5"}},
      {OneRun({"A 7 1.0"}), OneRun({"A 7 1"}), {}},
  };
  for (const Row& row : rows) {
    const Sides sides(Kind::kLine, row.old_runs, row.new_runs);
    EXPECT_EQ(RowTexts(sides.Compare()), row.want) << ::testing::PrintToString(row.new_runs);
  }
}

TEST(Comparison, TellsTestedRowsFromOthers) {
  struct Row {
    Runs old_runs;
    Runs new_runs;
    bool is_tested;
    bool is_significant;
  };
  const std::vector<Row> rows = {
      {OneRun({"A 1 5"}), OneRun({"A 1 6"}), true, false},
      {OneRun({"A 1 5"}), OneRun({"A 1 60"}), true, true},
      {OneRun({"A 1 5"}), OneRun({"A 1 5.5"}), false, true},
      {OneRun({"A 1 -5"}), OneRun({"A 1 5"}), false, true},
      {OneRun({"A 1 -5"}), OneRun({}), false, true},
      {OneRun({"A 1 100000000000000000000"}), OneRun({"A 1 5"}), true, true},
  };
  for (const Row& row : rows) {
    const Sides sides(Kind::kLine, row.old_runs, row.new_runs);
    const Comparison comparison = sides.Compare();
    ASSERT_EQ(comparison.Rows().size(), 1U);
    EXPECT_EQ(comparison.Rows()[0].IsTested(), row.is_tested)
        << ::testing::PrintToString(row.new_runs);
    EXPECT_EQ(comparison.Rows()[0].is_significant, row.is_significant)
        << ::testing::PrintToString(row.new_runs);
  }
}

// Rows that are not tested do not make the bar higher for the others: 0.04 counts when it is alone.
TEST(Comparison, CountsTestedRowsOnly) {
  const Sides alone(Kind::kLine, OneRun({"A 1 10"}), OneRun({"A 1 22", "A 2 1.5", "A 3 -4"}));
  const Comparison comparison = alone.Compare();
  for (const Row& row : comparison.Rows()) {
    if (row.IsTested()) {
      EXPECT_NEAR(row.p_value, 0.0501, 1e-4);
      EXPECT_EQ(row.p_value, row.rate);
    }
  }
  const Sides two(Kind::kLine, OneRun({"A 1 10"}), OneRun({"A 1 22", "A 2 1"}));
  const Comparison with_another = two.Compare();
  for (const Row& row : with_another.Rows()) {
    EXPECT_EQ(row.rate, std::min(1.0, row.p_value == 1 ? 1.0 : 2 * row.p_value));
  }
}

TEST(Comparison, TestsByTheRunsWhereThereAreThree) {
  const Sides welch(Kind::kLine, {Traces({"A 1 100"}), Traces({"A 1 900"}), Traces({"A 1 500"})},
                    {Traces({"A 1 900"}), Traces({"A 1 1200"}), Traces({"A 1 300"})});
  const Comparison by_runs = welch.Compare();
  EXPECT_TRUE(by_runs.IsWelch());
  ASSERT_EQ(by_runs.Rows().size(), 1U);
  EXPECT_FALSE(by_runs.Rows()[0].is_significant);
  EXPECT_NEAR(*by_runs.OldDeviation(by_runs.Rows()[0]), 400, 1e-9);
  const Sides two(Kind::kLine, {Traces({"A 1 100"}), Traces({"A 1 900"})},
                  {Traces({"A 1 900"}), Traces({"A 1 1200"}), Traces({"A 1 300"})});
  const Comparison by_counts = two.Compare();
  EXPECT_FALSE(by_counts.IsWelch());
  EXPECT_TRUE(by_counts.Rows()[0].is_significant);
  // No run differs on its side.
  const Sides equal(Kind::kLine, {Traces({"A 1 5"}), Traces({"A 1 5"}), Traces({"A 1 5"})},
                    {Traces({"A 1 6"}), Traces({"A 1 6"}), Traces({"A 1 6"})});
  EXPECT_EQ(equal.Compare().Rows()[0].p_value, 0);
}

TEST(Comparison, AddsUpProgramsByThemselves) {
  const Sides sides(Kind::kProgram, OneRun({"A 1 500", "A 2 100", "B 1 5"}),
                    OneRun({"A 1 100", "A 3 900", "B 2 5"}));
  EXPECT_EQ(RowTexts(sides.Compare()), Texts{"A 600 1000 +400"});
}

TEST(Comparison, TakesTotalsFromHeaders) {
  struct Row {
    Runs runs;
    std::string total;
  };
  const std::vector<Row> rows = {
      {{{"ticks|50", "trace|A|1|7"}}, "50"},
      {{{"trace|A|1|7", "trace|A|2|0.5"}}, "7.5"},
      {{{"ticks|50", "trace|A|1|7"}, {"trace|A|1|10"}}, "30"},
      {{{"ticks|abc", "trace|A|1|7"}}, "0"},
      {{{"ticks", "trace|A|1|7"}}, "7"},
      {{{"ticks|0", "trace|A|1|7"}}, "0"},
  };
  for (const Row& row : rows) {
    for (const Kind kind : {Kind::kLine, Kind::kProgram, Kind::kCommand, Kind::kCounter}) {
      const Sides sides(kind, row.runs, row.runs);
      EXPECT_EQ(NumberText(sides.Compare().OldTotal()), row.total) << static_cast<int>(kind);
      EXPECT_EQ(NumberText(sides.Compare().TotalChange()), "0") << static_cast<int>(kind);
    }
  }
}

TEST(Comparison, NormalizesTheNewSide) {
  const Runs old_runs = {{"ticks|1000", "trace|A|1|400", "trace|A|2|600"}};
  const Runs new_runs = {{"ticks|2000", "trace|A|1|800", "trace|A|2|1100", "trace|A|3|100"}};
  const Sides sides(Kind::kLine, old_runs, new_runs);
  const Comparison comparison = sides.Compare({.normalize = true});
  EXPECT_EQ(comparison.Scale(), 0.5);
  EXPECT_EQ(RowTexts(comparison), (Texts{"A 2 600 550 -50~", "A 3 - 50 +50"}));
  EXPECT_EQ(NumberText(comparison.NewTotal()), "2000");
  // 600 of 1000 against 1100 of 2000, by their raw counts.
  BinomialTest test(1000, 2000);
  for (const Row& row : comparison.Rows()) {
    EXPECT_EQ(row.p_value, row.new_detail == 2 ? test.PValue(600, 1100) : test.PValue(0, 100));
  }
  EXPECT_TRUE(CanNormalize(sides.old_side, sides.new_side));
  const Sides nothing(Kind::kLine, old_runs, {{}});
  EXPECT_FALSE(CanNormalize(nothing.old_side, nothing.new_side));
}

TEST(Comparison, NormalizesSeveralRuns) {
  const Sides sides(Kind::kLine, {{"ticks|100", "trace|A|1|100"}, {"ticks|100", "trace|A|1|100"}},
                    {{"ticks|50", "trace|A|1|10", "trace|A|2|40"},
                     {"ticks|50", "trace|A|1|30", "trace|A|2|20"},
                     {"ticks|50", "trace|A|1|20", "trace|A|2|30"}});
  const Comparison comparison = sides.Compare({.normalize = true});
  EXPECT_EQ(RowTexts(comparison), (Texts{"A 1 100 40 -60", "A 2 - 60 +60"}));
  for (const Row& row : comparison.Rows()) {
    EXPECT_NEAR(*comparison.NewDeviation(row), 20, 1e-9);
  }
}

}  // namespace

}  // namespace ptick::compare
