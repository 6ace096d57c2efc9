#include "figures/running_sum.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(RunningSum, IsNothingAtFirst) { EXPECT_EQ(RunningSum().Total().Text(), "0"); }

TEST(RunningSum, AddsWholeNumbers) {
  struct Row {
    std::vector<std::int64_t> added;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {{5}, "5"},
      {{5, 7, -3}, "9"},
      {{-5, 5}, "0"},
      {{kMax}, "9223372036854775807"},
      {{kMax, -1, 1}, "9223372036854775807"},
      {{kMin}, "-9223372036854775808"},
      // A sum that has left 64 bits is a floating number from there on.
      {{kMax, 1}, "9223372036854775808"},
      {{kMax, kMax}, "18446744073709551616"},
      {{kMax, kMax, kMax, kMax}, "36893488147419103232"},
      {{kMin, -1}, "-9223372036854775808"},
      {{kMin, kMin}, "-18446744073709551616"},
  };
  for (const Row& row : rows) {
    RunningSum sum;
    for (const std::int64_t number : row.added) {
      sum.Add(number);
    }
    EXPECT_EQ(sum.Total().Text(), row.want);
  }
}

TEST(RunningSum, AddsAnyValues) {
  struct Row {
    std::vector<Value> added;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {{Value("1.5"), Value("1.5")}, "3"},
      {{Value("007"), Value("")}, "7"},
      {{Value("abc")}, "0"},
      {{Value("-1"), Value(0.5)}, "-0.5"},
      {{Value(kMax), Value(1)}, "9223372036854775808"},
  };
  for (const Row& row : rows) {
    RunningSum sum;
    for (const Value& value : row.added) {
      sum.Add(value);
    }
    EXPECT_EQ(sum.Total().Text(), row.want);
  }
}

TEST(RunningSum, MixesBothKinds) {
  RunningSum sum;
  sum.Add(std::int64_t{2});
  sum.Add(Value("0.5"));
  sum.Add(std::int64_t{3});
  sum.Add(Value("0.25"));
  EXPECT_EQ(sum.Total().Text(), "5.75");
  sum.Add(std::int64_t{1});
  EXPECT_EQ(sum.Total().Text(), "6.75");
}

// Figures of a few decimals are added as the decimals they are.
TEST(RunningSum, LosesNothingInDecimals) {
  struct Row {
    int times;
    std::string_view added;
    std::string_view want;
  };
  const std::vector<Row> rows = {{60, "0.1", "6"}, {20, "4.02", "80.4"}, {3, "33.33", "99.99"}};
  for (const Row& row : rows) {
    RunningSum sum;
    for (int i = 0; i < row.times; ++i) {
      sum.Add(Value(row.added));
    }
    EXPECT_EQ(sum.Total().Text(), row.want) << row.times << " times " << row.added;
  }
}

}  // namespace

}  // namespace ptick
