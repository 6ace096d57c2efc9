#include "compare/welch_test.h"

#include <boost/math/distributions/students_t.hpp>
#include <cmath>

#include "compare/boost_policy.h"

namespace ptick::compare {

namespace {

using StudentsT = boost::math::students_t_distribution<double, BoostPolicy>;

}  // namespace

double WelchPValue(const Sample& old_runs, const Sample& new_runs) {
  const double difference = new_runs.mean - old_runs.mean;
  // Squares of the largest numbers would have no end: only the proportion counts.
  const double scale = std::max(old_runs.deviation, new_runs.deviation);
  if (scale == 0) {
    return difference == 0 ? 1 : 0;
  }
  const double old_part = std::pow(old_runs.deviation / scale, 2) / old_runs.runs;
  const double new_part = std::pow(new_runs.deviation / scale, 2) / new_runs.runs;
  const double t = difference / scale / std::sqrt(old_part + new_part);
  const double degrees =
      std::pow(old_part + new_part, 2) /
      (std::pow(old_part, 2) / (old_runs.runs - 1) + std::pow(new_part, 2) / (new_runs.runs - 1));
  if (!std::isfinite(t)) {
    return 0;
  }
  return 2 * cdf(complement(StudentsT(degrees), std::abs(t)));
}

}  // namespace ptick::compare
