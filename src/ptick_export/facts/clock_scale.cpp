#include "ptick_export/facts/clock_scale.h"

#include <cmath>
#include <variant>

#include "value/arithmetic.h"

namespace ptick::exports {

namespace {

__extension__ using Wide = __int128;

constexpr std::int64_t kNanoseconds = 1'000'000'000;
// The difference of two times within this has room in 64 bits.
constexpr std::int64_t kMaxNanoseconds = std::int64_t{1} << 62U;

Wide Rounded(std::int64_t ticks, std::int64_t hertz) {
  const Wide scaled = Wide{ticks} * kNanoseconds;
  const Wide half = hertz / 2;
  return (scaled + (ticks < 0 ? -half : half)) / hertz;
}

double AsDouble(const Number& number) {
  return std::visit([](auto form) { return static_cast<double>(form); }, number);
}

template <typename T>
std::optional<std::int64_t> InRange(T time) {
  if (time > static_cast<T>(kMaxNanoseconds) || time < -static_cast<T>(kMaxNanoseconds)) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(time);
}

}  // namespace

std::optional<std::int64_t> ClockScale::Time(const Number& clock) const {
  const Number ticks = Subtract(clock, start_).AsNumber();
  const auto* const whole_ticks = std::get_if<std::int64_t>(&ticks);
  const auto* const whole_hertz = std::get_if<std::int64_t>(&hertz_);
  if (whole_ticks != nullptr && whole_hertz != nullptr) {
    return InRange(Rounded(*whole_ticks, *whole_hertz));
  }
  return InRange(
      std::round(AsDouble(ticks) / AsDouble(hertz_) * static_cast<double>(kNanoseconds)));
}

}  // namespace ptick::exports
