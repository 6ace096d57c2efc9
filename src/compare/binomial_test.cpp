#include "compare/binomial_test.h"

#include <algorithm>
#include <cmath>

#include "compare/binomial_outcomes.h"

namespace ptick::compare {

namespace {

constexpr double kSlack = 1e-7;
constexpr double kFewMirrored = 1e6;

constexpr std::size_t kPlaces = std::size_t{1} << 16U;

std::size_t PlaceOf(double old_count, double new_count) {
  // Counts below 256 have places of their own.
  const double place = std::fmod(old_count * 256 + new_count, static_cast<double>(kPlaces));
  return static_cast<std::size_t>(place);
}

// Outcomes grow less likely on both sides of the most likely one. Finds how far on one side they
// are still more likely than a bar, a logarithm.
class Side {
 public:
  /// `direction` is 1 for outcomes above the most likely one, -1 for those below; `last` is the
  /// last outcome on that side.
  Side(const BinomialOutcomes& outcomes, double bar, double direction, double last)
      : outcomes_(outcomes), bar_(bar), direction_(direction), last_(last) {}

  /// The first outcome after `likely` that is not above the bar, or the one after the last outcome
  /// when all are. The search begins at `guess`.
  double FirstUnlikely(double likely, double guess) const {
    double above = likely;
    double below = last_ + direction_;
    double at =
        direction_ > 0 ? std::clamp(guess, likely, last_) : std::clamp(guess, last_, likely);
    // Walks in ever longer steps until the bar is between two outcomes.
    const bool begins_above = IsAbove(at);
    for (double step = begins_above ? direction_ : -direction_;; step *= 2) {
      (begins_above ? above : below) = at;
      at += step;
      if (Gap(likely, at) <= 0 || Gap(at, last_) < 0) {
        break;
      }
      if (IsAbove(at) != begins_above) {
        (begins_above ? below : above) = at;
        break;
      }
    }
    return Bisect(above, below);
  }

 private:
  bool IsAbove(double outcome) const { return outcomes_.LogLikelihood(outcome) > bar_; }
  double Gap(double from, double to) const { return (to - from) * direction_; }

  double Bisect(double above, double below) const {
    while (Gap(above, below) > 1) {
      const double middle = std::floor(above + (below - above) / 2);
      // Whole numbers that large are not all there is between.
      if (middle == above || middle == below) {
        break;
      }
      (IsAbove(middle) ? above : below) = middle;
    }
    return below;
  }

  const BinomialOutcomes& outcomes_;
  double bar_;
  double direction_;
  double last_;
};

}  // namespace

BinomialTest::BinomialTest(double old_weight, double new_weight)
    : old_weight_(old_weight), new_weight_(new_weight), known_(kPlaces) {}

double BinomialTest::PValue(double old_count, double new_count) {
  Known& known = known_[PlaceOf(old_count, new_count)];
  if (known.old_count != old_count || known.new_count != new_count) {
    known = {old_count, new_count, Compute(old_count, new_count)};
  }
  return known.p_value;
}

double BinomialTest::Compute(double old_count, double new_count) const {
  const BinomialOutcomes outcomes(old_count + new_count, old_weight_, new_weight_);
  const double all = outcomes.Events();
  // Both sides are mirror images, and no two outcomes but twins so near each other as the slack.
  if (old_weight_ == new_weight_ && all <= kFewMirrored) {
    const double smaller = std::min(old_count, new_count);
    return all - 2 * smaller <= 1 ? 1 : std::min(1.0, 2 * outcomes.SumUpTo(smaller));
  }
  const double bar = outcomes.LogLikelihood(new_count) + std::log1p(kSlack);
  const double most_likely = outcomes.MostLikely();
  if (outcomes.LogLikelihood(most_likely) <= bar) {
    return 1;
  }
  const double mirrored = std::round(2 * outcomes.Mean() - new_count);
  const double lower =
      Side(outcomes, bar, -1, 0).FirstUnlikely(most_likely, std::min(new_count, mirrored));
  const double upper =
      Side(outcomes, bar, 1, all).FirstUnlikely(most_likely, std::max(new_count, mirrored));
  return std::min(1.0, outcomes.SumUpTo(lower) + outcomes.SumFrom(upper));
}

}  // namespace ptick::compare
