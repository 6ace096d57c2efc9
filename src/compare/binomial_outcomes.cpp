// Up to a million events Boost sums outcomes up by its incomplete beta function. That loses digits
// where there are more: of 1e12 events five are left, of 1e17 none. From there on the integral that
// the sum is equal to is worked out here, and likelihoods always are: by Stirling's series and
// deviances, as C. Loader has shown, none of which is a difference of large numbers.
#include "compare/binomial_outcomes.h"

#include <algorithm>
#include <boost/math/distributions/binomial.hpp>
#include <boost/math/quadrature/gauss.hpp>
#include <boost/math/special_functions/log1p.hpp>
#include <cmath>
#include <numbers>

#include "compare/boost_policy.h"

namespace ptick::compare {

namespace {

using Binomial = boost::math::binomial_distribution<double, BoostPolicy>;

constexpr double kMostForBoost = 1e6;

// log(1 + x) - x
double LogLessItself(double x) { return boost::math::log1pmx(x, BoostPolicy()); }

// a * b - c * d, rounded once.
double DifferenceOfProducts(double a, double b, double c, double d) {
  const double product = c * d;
  return std::fma(a, b, -product) - std::fma(c, d, -product);
}

// What Stirling's formula lacks of the logarithm of a factorial.
double StirlingRest(double n) {
  constexpr double kFewest = 16;
  if (n < kFewest) {
    const double log_of_turn = std::log(2 * std::numbers::pi);
    return std::lgamma(n + 1) - (n + 0.5) * std::log(n) + n - log_of_turn / 2;
  }
  const double square = n * n;
  return (1.0 / 12 -
          (1.0 / 360 - (1.0 / 1260 - (1.0 / 1680 - 1.0 / 1188 / square) / square) / square) /
              square) /
         n;
}

// count * log(count / mean) + mean - count, where `above` is how far the count is above the mean.
double Deviance(double count, double mean, double above) {
  const double part = above / mean;
  return std::abs(part) < 0.5 ? mean * ((1 + part) * LogLessItself(part) + part * part)
                              : count * std::log(count / mean) - above;
}

}  // namespace

// Weights become at most 1 by a power of two, which loses nothing: products have an end then.
BinomialOutcomes::BinomialOutcomes(double events, double old_weight, double new_weight)
    : events_(events),
      old_weight_(std::ldexp(old_weight, -std::ilogb(std::max(old_weight, new_weight)) - 1)),
      new_weight_(std::ldexp(new_weight, -std::ilogb(std::max(old_weight, new_weight)) - 1)),
      old_share_(old_weight_ / (old_weight_ + new_weight_)),
      new_share_(new_weight_ / (old_weight_ + new_weight_)) {}

double BinomialOutcomes::MostLikely() const {
  return std::min(events_, std::floor((events_ + 1) * new_share_));
}

double BinomialOutcomes::AboveMean(double outcome) const {
  return DifferenceOfProducts(outcome, old_weight_, events_ - outcome, new_weight_) /
         (old_weight_ + new_weight_);
}

double BinomialOutcomes::LogLikelihood(double outcome) const {
  const double rest = events_ - outcome;
  if (outcome == 0) {
    return events_ * std::log1p(-new_share_);
  }
  if (rest == 0) {
    return events_ * std::log1p(-old_share_);
  }
  const double above = AboveMean(outcome);
  return StirlingRest(events_) - StirlingRest(outcome) - StirlingRest(rest) -
         Deviance(outcome, events_ * new_share_, above) -
         Deviance(rest, events_ * old_share_, -above) +
         std::log(events_ / outcome / rest / (2 * std::numbers::pi)) / 2;
}

double BinomialOutcomes::SumUpTo(double last) const {
  if (last < 0) {
    return 0;
  }
  return events_ <= kMostForBoost ? cdf(Binomial(events_, new_share_), last)
                                  : Mirrored().IntegrateFrom(events_ - last);
}

double BinomialOutcomes::SumFrom(double first) const {
  if (first <= 0 || first > events_) {
    return first <= 0 ? 1 : 0;
  }
  return events_ <= kMostForBoost ? cdf(complement(Binomial(events_, new_share_), first - 1))
                                  : IntegrateFrom(first);
}

// The sum is the integral of the beta density from 0 to the share. Taken from the share downwards,
// as parts x of it, and times its value there, this is a bell or less: it never rises for long and
// falls at least as fast as exp(-curve / 2 * x * x) does near 0.
double BinomialOutcomes::IntegrateFrom(double first) const {
  constexpr double kNothing = -45;  // exp() of it adds nothing to a sum
  constexpr int kPieces = 4;
  const double more = first - 1;
  const double rest = events_ - first;
  const double odds = new_weight_ / old_weight_;
  const double slope = (AboveMean(first) - old_share_) / old_share_;
  const auto log_density = [=](double x) {
    return -slope * x + more * LogLessItself(-x) + rest * LogLessItself(x * odds);
  };
  const double curve = more + rest * odds * odds;
  const double falling = std::max(slope, 0.0);
  double width = std::min(
      1.0, -2 * kNothing / (falling + std::hypot(falling, std::sqrt(-2 * kNothing * curve))));
  while (width > 0 && width < 1 && log_density(width) > kNothing) {
    width = std::min(1.0, 2 * width);
  }
  double integral = 0;
  for (int piece = 0; piece < kPieces; ++piece) {
    integral += boost::math::quadrature::gauss<double, 20>::integrate(
        [&](double x) { return std::exp(log_density(x)); }, width * piece / kPieces,
        width * (piece + 1) / kPieces);
  }
  return std::exp(LogLikelihood(first)) * first * integral;
}

}  // namespace ptick::compare
