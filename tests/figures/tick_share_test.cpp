#include "figures/tick_share.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

TEST(TickShare, IsCutToHundredthsOfAPerCent) {
  struct Row {
    std::uint32_t ticks;
    std::string_view total;
    std::int64_t want;
  };
  const std::vector<Row> rows = {
      {1, "3", 3333},   {2, "3", 6666},      {3, "3", 10000},   {0, "3", 0},
      {5, "0", 0},      {5, "", 0},          {5, "abc", 0},     {4294967295U, "4294967295", 10000},
      {1, "-3", -3333}, {1, "100000000", 0}, {7, "007", 10000},
  };
  for (const Row& row : rows) {
    const TickShare share{Value(row.total)};
    ASSERT_TRUE(share.TotalIsWhole()) << row.total;
    EXPECT_EQ(share.Hundredths(row.ticks), row.want) << row.ticks << " of " << row.total;
    EXPECT_EQ(share.Hundredths(Value(std::int64_t{row.ticks})), row.want)
        << row.ticks << " of " << row.total;
  }
}

TEST(TickShare, TakesAnyNumbers) {
  struct Row {
    std::string_view ticks;
    std::string_view total;
    std::int64_t want;
  };
  const std::vector<Row> rows = {{"1.5", "3", 5000},
                                 {"abc", "3", 0},
                                 {"-1", "3", -3333},
                                 {"1", "2.5", 4000},
                                 {"1", "0.001", 10000000}};
  for (const Row& row : rows) {
    EXPECT_EQ(TickShare(Value(row.total)).Hundredths(Value(row.ticks)), row.want)
        << row.ticks << " of " << row.total;
  }
  EXPECT_FALSE(TickShare(Value("2.5")).TotalIsWhole());
}

}  // namespace

}  // namespace ptick
