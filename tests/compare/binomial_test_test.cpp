#include "compare/binomial_test.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace ptick::compare {

namespace {

struct Row {
  double old_count;
  double new_count;
  double old_weight;
  double new_weight;
  double want;
};

void ExpectPValues(const std::vector<Row>& rows, double relative_error) {
  for (const Row& row : rows) {
    BinomialTest test(row.old_weight, row.new_weight);
    EXPECT_NEAR(test.PValue(row.old_count, row.new_count), row.want, row.want * relative_error)
        << row.old_count << " and " << row.new_count << ", weights " << row.old_weight << " and "
        << row.new_weight;
    BinomialTest swapped(row.new_weight, row.old_weight);
    EXPECT_NEAR(swapped.PValue(row.new_count, row.old_count), row.want, row.want * relative_error)
        << row.new_count << " and " << row.old_count << ", swapped";
  }
}

// What all outcomes that are no more likely sum up to, in fractions of whole numbers.
TEST(BinomialTest, SumsTheOutcomesThatAreNoMoreLikely) {
  ExpectPValues(
      {
          {0, 1, 1, 1, 1},
          {3, 3, 1, 1, 1},
          {4, 3, 1, 1, 1},
          {0, 5, 1, 1, 0.0625},
          {0, 6, 1, 1, 0.03125},
          {10, 25, 1, 1, 0.016673847800120711},
          {100, 130, 1, 1, 0.055613577781392386},
          {10, 25, 2, 1, 5.306594677051222e-06},
          {10, 10, 2, 1, 0.15234223511142753},
          {7, 0, 3, 2, 0.0468352},
          {0, 7, 3, 2, 0.0016383999999999999},
          {120, 61, 2, 1, 0.93719730165040693},
          {100, 220, 1, 2, 0.44150642884110231},
          {1, 2, 1, 2, 1},
          {500, 350, 3, 2, 0.48403961546311058},
          {3, 90, 5, 1, 6.996343457788333e-66},
          {200, 215, 1000, 1070, 1},
          {600, 300, 2, 1, 1},
          {601, 300, 2, 1, 1},
      },
      1e-11);
}

// As another implementation has them.
TEST(BinomialTest, IsSureOfLargeCounts) {
  ExpectPValues(
      {
          {100000, 100900, 1, 1, 0.044886148461475969},
          {50000, 101000, 1, 2, 0.069084140677659805},
          {1e6, 1.005e6, 1, 1, 0.00041490326571830109},
          {2e6, 1.003e6, 2, 1, 0.014378958055118199},
          {1e9, 1.0001e9, 1, 1, 0.025352445238285479},
          {2e9, 1.00009e9, 2, 1, 0.020139659601891916},
          {1e12, 1.000003e12, 1, 1, 0.033895786980856046},
      },
      1e-6);
}

TEST(BinomialTest, AnswersForTheLargestCounts) {
  struct {
    double old_count;
    double new_count;
  } const rows[] = {{0, 9e18}, {9e18, 0}, {9e18, 9e18}, {4e18, 4.1e18}, {1, 9e18}, {1e300, 1e299}};
  for (const auto& row : rows) {
    for (const double weight : {1.0, 3.0, 0.001}) {
      const double p_value = BinomialTest(1, weight).PValue(row.old_count, row.new_count);
      EXPECT_TRUE(p_value >= 0 && p_value <= 1) << row.old_count << " " << row.new_count;
    }
  }
}

// The sum over all outcomes, one by one, in logarithms.
double SumOneByOne(double old_count, double new_count, double share) {
  const double all = old_count + new_count;
  const auto likelihood = [&](double outcome) {
    return std::exp(std::lgamma(all + 1) - std::lgamma(outcome + 1) -
                    std::lgamma(all - outcome + 1) + outcome * std::log(share) +
                    (all - outcome) * std::log1p(-share));
  };
  const double bar = likelihood(new_count) * (1 + 1e-7);
  double sum = 0;
  for (double outcome = 0; outcome <= all; ++outcome) {
    sum += likelihood(outcome) <= bar ? likelihood(outcome) : 0;
  }
  return sum;
}

TEST(BinomialTest, IsTheSumOneByOneForAllSmallCounts) {
  for (const double new_weight : {1.0, 2.0, 7.0, 0.2, 1.37, 100.0}) {
    BinomialTest test(1, new_weight);
    const double share = new_weight / (1 + new_weight);
    for (double old_count = 0; old_count < 40; ++old_count) {
      for (double new_count = old_count == 0 ? 1 : 0; new_count < 40; ++new_count) {
        const double want = SumOneByOne(old_count, new_count, share);
        // Twice: the second answer is remembered.
        EXPECT_NEAR(test.PValue(old_count, new_count), want, 1e-9) << old_count << " " << new_count;
        EXPECT_NEAR(test.PValue(old_count, new_count), want, 1e-9) << old_count << " " << new_count;
      }
    }
  }
}

}  // namespace

}  // namespace ptick::compare
