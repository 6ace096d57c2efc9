// The test whether the means of two groups of runs differ by more than their spread.
#pragma once

namespace ptick::compare {

/// What is known of a number over the runs of a side.
struct Sample {
  /// Two or more.
  double runs = 0;
  double mean = 0;
  /// Of the sample: squares divided by one less than the runs.
  double deviation = 0;
};

/// The two-sided p-value of Welch's t-test, which does not take both sides to have one deviation.
/// Where no run differs from the others on its side: 0, or 1 for equal means.
double WelchPValue(const Sample& old_runs, const Sample& new_runs);

}  // namespace ptick::compare
