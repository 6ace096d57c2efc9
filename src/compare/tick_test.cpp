#include "compare/tick_test.h"

#include "compare/as_double.h"
#include "compare/welch_test.h"

namespace ptick::compare {

namespace {

constexpr std::size_t kEnoughRuns = 3;

bool IsCount(const Observed& ticks) { return !ticks.key || ticks.amounts.IsCount(*ticks.key); }

Sample SampleOf(const Observed& ticks, std::size_t runs, double scale) {
  const auto count = static_cast<double>(runs);
  return {.runs = count,
          .mean = AsDouble(ticks.sum) / count * scale,
          .deviation = ticks.key ? ticks.amounts.Deviation(*ticks.key) * scale : 0};
}

}  // namespace

TickTest::TickTest(const Sides& sides)
    : sides_(sides),
      is_welch_(sides.old_runs >= kEnoughRuns && sides.new_runs >= kEnoughRuns),
      binomial_(sides.old_weight, sides.new_weight) {}

std::optional<double> TickTest::PValue(const Observed& old_ticks, const Observed& new_ticks) {
  if (!IsCount(old_ticks) || !IsCount(new_ticks)) {
    return std::nullopt;
  }
  if (is_welch_) {
    return WelchPValue(SampleOf(old_ticks, sides_.old_runs, 1),
                       SampleOf(new_ticks, sides_.new_runs, sides_.new_scale));
  }
  return binomial_.PValue(AsDouble(old_ticks.sum), AsDouble(new_ticks.sum));
}

}  // namespace ptick::compare
