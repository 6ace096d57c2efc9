// How likely the outcomes of many independent events of two kinds are.
#pragma once

namespace ptick::compare {

/// Of a number of events each is new with the same share, else old; an outcome is the number of new
/// ones. All answers take about the same time, however many events there are.
class BinomialOutcomes {
 public:
  /// Events are whole, and at least 1. Each is new with `new_weight` parts of both weights, which
  /// are finite and above 0.
  BinomialOutcomes(double events, double old_weight, double new_weight);

  double Events() const { return events_; }
  double Mean() const { return events_ * new_share_; }
  double MostLikely() const;
  /// The logarithm of how likely an outcome is.
  double LogLikelihood(double outcome) const;
  /// The sum of an outcome and all below it, or above it. None are 0, all are 1. The outcome is
  /// less than the mean, or more.
  double SumUpTo(double last) const;
  double SumFrom(double first) const;

 private:
  BinomialOutcomes Mirrored() const { return {events_, new_weight_, old_weight_}; }
  double AboveMean(double outcome) const;
  double IntegrateFrom(double first) const;

  double events_;
  double old_weight_;
  double new_weight_;
  double old_share_;
  double new_share_;
};

}  // namespace ptick::compare
