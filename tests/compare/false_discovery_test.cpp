#include "compare/false_discovery.h"

#include <gtest/gtest.h>

#include <vector>

namespace ptick::compare {

namespace {

TEST(FalseDiscoveryRates, AreThoseOfBenjaminiAndHochberg) {
  struct Row {
    std::vector<double> p_values;
    std::vector<double> want;
  };
  const std::vector<Row> rows = {
      {{}, {}},
      {{0.04}, {0.04}},
      {{1, 1}, {1, 1}},
      {{0.03, 0.02}, {0.03, 0.03}},
      {{0.01, 0.04, 0.03, 0.005, 0.5, 0.04, 1.0},
       {0.035, 0.056, 0.056, 0.035, 0.5 * 7 / 6, 0.056, 1.0}},
      {{0, 0.9, 0}, {0, 0.9, 0}},
  };
  for (const Row& row : rows) {
    const std::vector<double> rates = FalseDiscoveryRates(row.p_values);
    ASSERT_EQ(rates.size(), row.want.size());
    for (std::size_t n = 0; n < rates.size(); ++n) {
      EXPECT_NEAR(rates[n], row.want[n], 1e-15)
          << n << " of " << ::testing::PrintToString(row.p_values);
    }
  }
}

}  // namespace

}  // namespace ptick::compare
