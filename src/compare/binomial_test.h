// The exact test whether two counts differ by more than chance.
#pragma once

#include <cstddef>
#include <vector>

namespace ptick::compare {

/// Given the sum of both counts, chance alone makes the new one binomial: each event falls on the
/// new side with the share that the new weight has of both. The weights are how much was watched on
/// each side: runs, or all ticks.
class BinomialTest {
 public:
  /// Both weights are finite and above 0.
  BinomialTest(double old_weight, double new_weight);

  /// How likely chance alone gives these counts, or any that are no more likely: two-sided, the sum
  /// of all such outcomes. Likelihoods that differ by less than 1e-7 of themselves count as equal.
  /// Counts are whole and not negative, and not both 0.
  ///
  /// Not for two threads at once: it remembers what it computed last.
  double PValue(double old_count, double new_count);

 private:
  struct Known {
    double old_count = -1;
    double new_count = -1;
    double p_value = 0;
  };

  double Compute(double old_count, double new_count) const;

  double old_weight_;
  double new_weight_;
  /// Small counts come again and again: each pair has one place here.
  std::vector<Known> known_;
};

}  // namespace ptick::compare
