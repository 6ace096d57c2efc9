#include "compare/amounts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "value/number_text.h"

namespace ptick::compare {

namespace {

using Numbers = std::vector<std::string>;

// What the runs, each with its numbers of key 0, add up to.
Amounts AmountsOf(const std::vector<Numbers>& runs) {
  Amounts amounts;
  for (const Numbers& run : runs) {
    for (const std::string& number : run) {
      amounts.Add(0, Value(number));
    }
    amounts.EndRun();
  }
  return amounts;
}

TEST(Amounts, AddUpExactly) {
  struct Row {
    std::vector<Numbers> runs;
    std::string sum;
    bool is_count;
  };
  const std::vector<Row> rows = {
      {{{"1", "2"}, {"4"}}, "7", true},
      {{{}, {"4"}}, "4", true},
      {{{"0.1", "0.2"}}, "0.3", false},
      {{{"1.5", "1.5"}}, "3", true},
      {{{"1.5"}, {"1.5"}}, "3", false},
      {{{"-1"}, {"2"}}, "1", false},
      {{{"-1", "2"}}, "1", true},
      {{{"abc"}}, "0", true},
      {{{"9223372036854775807"}, {"-7"}}, "9223372036854775800", false},
      {{{"9223372036854775807", "1", "-1"}}, "9223372036854775807", true},
      {{{"9223372036854775807"}, {"1"}}, "9223372036854775808", true},
      {{{"100000000000000000000"}, {"1"}}, "100000000000000000000", true},
  };
  for (const Row& row : rows) {
    const Amounts amounts = AmountsOf(row.runs);
    EXPECT_EQ(CompareNumbers(amounts.Sum(0), *ParseNumber(row.sum)), 0)
        << NumberText(amounts.Sum(0)) << ", want " << row.sum;
    EXPECT_EQ(amounts.IsCount(0), row.is_count) << row.sum;
    EXPECT_EQ(amounts.Runs(), row.runs.size()) << row.sum;
  }
}

TEST(Amounts, KnowHowFarRunsAreApart) {
  struct Row {
    std::vector<Numbers> runs;
    double want;
  };
  const std::vector<Row> rows = {
      {{}, 0},
      {{{"5"}}, 0},
      {{{"5"}, {"5"}, {"5"}}, 0},
      {{{"10"}, {"12"}, {"14"}}, 2},
      {{{}, {"0"}, {"3"}}, std::sqrt(3)},
      {{{"3"}, {}, {}}, std::sqrt(3)},
      {{{}, {}, {"1", "2"}}, std::sqrt(3)},
      {{{"0.5"}, {"1.5"}}, std::sqrt(0.5)},
      {{{"1000000000000000001"}, {"1000000000000000003"}}, std::sqrt(2)},
      {{{"1"}, {}}, std::sqrt(0.5)},
  };
  for (const Row& row : rows) {
    EXPECT_NEAR(AmountsOf(row.runs).Deviation(0), row.want, 1e-12)
        << row.runs.size() << " runs, " << row.want;
  }
}

TEST(Amounts, KnowWhatNoRunHad) {
  Amounts amounts;
  amounts.Add(2, std::int64_t{0});
  amounts.EndRun();
  amounts.EndRun();
  EXPECT_TRUE(amounts.Has(2));
  for (const Amounts::Id key : {0U, 1U, 3U, 100U}) {
    EXPECT_FALSE(amounts.Has(key)) << key;
    EXPECT_EQ(amounts.Sum(key), Number(std::int64_t{0})) << key;
    EXPECT_EQ(amounts.Deviation(key), 0) << key;
    EXPECT_TRUE(amounts.IsCount(key)) << key;
  }
}

// Keys come and go: what was before must not be taken for what is now.
TEST(Amounts, KeepKeysApart) {
  Amounts amounts;
  amounts.Add(0, std::int64_t{1});
  amounts.Add(1, Value("0.5"));
  amounts.EndRun();
  amounts.Add(1, std::int64_t{2});
  amounts.Add(5, std::int64_t{7});
  amounts.EndRun();
  EXPECT_EQ(NumberText(amounts.Sum(0)), "1");
  EXPECT_EQ(NumberText(amounts.Sum(1)), "2.5");
  EXPECT_EQ(NumberText(amounts.Sum(5)), "7");
  EXPECT_NEAR(amounts.Deviation(1), std::sqrt(1.125), 1e-12);
  EXPECT_NEAR(amounts.Deviation(5), std::sqrt(24.5), 1e-12);
}

}  // namespace

}  // namespace ptick::compare
