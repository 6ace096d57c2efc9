#include "compare/binomial_test.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "compare/binomial_outcomes.h"

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

// Worked out with sixty digits, by the integral that the sum is equal to.
TEST(BinomialTest, IsSureOfLargeCounts) {
  ExpectPValues(
      {
          {50000, 101000, 1, 2, 0.069084140677659109},
          {500000, 501900, 1, 1, 0.05780168843853785},
          {66672000, 33328000, 2, 1, 0.25792878615646091},
          {1e9, 1.0001e9, 1, 1, 0.025352444671547586},
          {2e9, 1.00009e9, 2, 1, 0.020139659151681141},
          {1e9, 3, 1, 1e-9, 0.080301397347303788},
          {1e9, 12, 1, 1e-9, 8.3161079798516934e-10},
          {0, 2e7, 1e-7, 1, 0.27821179115983724},
          {7e8, 3.001e8, 7, 3, 1.364549605880914e-6},
          {1e12, 1.000003e12, 1, 1, 0.033895046786659201},
          {666666906666, 333333333333, 2, 1, 0.86524249838156093},
      },
      1e-9);
  // Counts that doubles hold in part only.
  ExpectPValues(
      {
          {1e15, 1.0000001e15, 1, 1, 0.025347326732209509},
          {483091779538441, 516908220461559, 1000, 1070, 0.61707523682537401},
          {4e18, 4.00000001e18, 1, 1, 0.00040695206386964404},
      },
      1e-6);
}

// All outcomes on one side, from the first on, by what each is of the one before.
double SumOneByOneFrom(double first, double all, double share) {
  long double likelihood =
      std::exp(std::lgamma(all + 1.0L) - std::lgamma(first + 1.0L) -
               std::lgamma(all - first + 1.0L) + first * std::log(static_cast<long double>(share)) +
               (all - first) * std::log1p(-static_cast<long double>(share)));
  long double sum = 0;
  for (double outcome = first; outcome <= all && likelihood > sum * 1e-18L; ++outcome) {
    sum += likelihood;
    likelihood *= (all - outcome) / (outcome + 1) * (share / (1.0L - share));
  }
  return static_cast<double>(sum);
}

TEST(BinomialOutcomes, AddUpOneByOneFromAFewToMillions) {
  for (const double all : {1.0, 2.0, 50.0, 999999.0, 1000000.0, 1000001.0, 3000000.0}) {
    for (const double new_weight : {1.0, 0.5, 20.0, 3e-6}) {
      const BinomialOutcomes outcomes(all, 1, new_weight);
      const double share = new_weight / (1 + new_weight);
      const double deviation = std::sqrt(all * share / (1 + new_weight));
      for (const double distance : {0.1, 1.0, 3.0, 12.0}) {
        const double first = std::ceil(all * share + distance * deviation);
        if (first <= all) {
          const double want = SumOneByOneFrom(first, all, share);
          EXPECT_NEAR(outcomes.SumFrom(first), want, want * 1e-9) << all << " from " << first;
          const BinomialOutcomes mirrored(all, new_weight, 1);
          EXPECT_NEAR(mirrored.SumUpTo(all - first), want, want * 1e-9) << all << " to " << first;
        }
      }
      EXPECT_EQ(outcomes.SumFrom(0), 1);
      EXPECT_EQ(outcomes.SumFrom(all + 1), 0);
      EXPECT_EQ(outcomes.SumUpTo(-1), 0);
    }
  }
}

TEST(BinomialTest, AnswersForTheLargestCounts) {
  struct Counts {
    double old_count;
    double new_count;
  };
  for (const Counts& row : std::vector<Counts>{
           {0, 9e18}, {9e18, 0}, {9e18, 9e18}, {4e18, 4.1e18}, {1, 9e18}, {1e300, 1e299}}) {
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
  for (int outcome = 0; outcome <= static_cast<int>(all); ++outcome) {
    sum += likelihood(outcome) <= bar ? likelihood(outcome) : 0;
  }
  return sum;
}

TEST(BinomialTest, IsTheSumOneByOneForAllSmallCounts) {
  for (const double new_weight : {1.0, 2.0, 7.0, 0.2, 1.37, 100.0}) {
    BinomialTest test(1, new_weight);
    const double share = new_weight / (1 + new_weight);
    for (int old_count = 0; old_count < 40; ++old_count) {
      for (int new_count = old_count == 0 ? 1 : 0; new_count < 40; ++new_count) {
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
