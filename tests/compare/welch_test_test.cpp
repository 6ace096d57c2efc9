#include "compare/welch_test.h"

#include <gtest/gtest.h>

#include <vector>

namespace ptick::compare {

namespace {

// As another implementation has them.
TEST(WelchPValue, IsThatOfTheTextbook) {
  struct Row {
    Sample old_runs;
    Sample new_runs;
    double want;
  };
  const std::vector<Row> rows = {
      {{3, 12, 2}, {3, 23, 3.6055512754639891}, 0.017440645155016948},
      {{3, 5, 0}, {3, 7.333333333333333, 1.5275252316519468}, 0.11808289631180312},
      {{4, 102, 6.2716292407422598},
       {3, 102.66666666666667, 4.7258156262526088},
       0.87887987907174903},
      {{3, 0.33333333333333331, 0.57735026918962573},
       {3, 1.3333333333333333, 1.5275252316519468},
       0.37853076038781197},
      {{3, 2.3333333333333335, 0.76376261582597338},
       {4, 9.8125, 0.89849411053532602},
       9.2300217281360636e-05},
  };
  for (const Row& row : rows) {
    EXPECT_NEAR(WelchPValue(row.old_runs, row.new_runs), row.want, row.want * 1e-10) << row.want;
    EXPECT_NEAR(WelchPValue(row.new_runs, row.old_runs), row.want, row.want * 1e-10) << row.want;
  }
}

TEST(WelchPValue, IsSureWhereNoRunDiffers) {
  EXPECT_EQ(WelchPValue({3, 5, 0}, {3, 6, 0}), 0);
  EXPECT_EQ(WelchPValue({3, 5, 0}, {4, 5, 0}), 1);
}

TEST(WelchPValue, KnowsNoLargestAndNoSmallestNumber) {
  const double want = WelchPValue({3, 12, 2}, {3, 23, 3});
  for (const double unit : {1e300, 1e-200}) {
    EXPECT_NEAR(WelchPValue({3, 12 * unit, 2 * unit}, {3, 23 * unit, 3 * unit}), want, 1e-12)
        << unit;
  }
  EXPECT_EQ(WelchPValue({3, 0, 1e-300}, {3, 1e300, 0}), 0);
}

}  // namespace

}  // namespace ptick::compare
