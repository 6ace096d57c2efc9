#include "ptick_export/facts/whole_calls.h"

#include <variant>

#include "value/arithmetic.h"

namespace ptick::exports {

std::optional<std::int64_t> WholeTimes(const Number& times, CallLosses& losses) {
  if (CompareNumbers(times, std::int64_t{0}) < 0) {
    ++losses.negative;
    return std::nullopt;
  }
  const Number cut = Int(times).AsNumber();
  const auto* const whole = std::get_if<std::int64_t>(&cut);
  if (whole == nullptr) {
    ++losses.too_large;
    return std::nullopt;
  }
  if (*whole == 0) {
    ++losses.below_one;
    return std::nullopt;
  }
  if (CompareNumbers(times, cut) != 0) {
    ++losses.cut;
  }
  return *whole;
}

}  // namespace ptick::exports
