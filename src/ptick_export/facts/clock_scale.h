// Clocks as nanoseconds.
#pragma once

#include <cstdint>
#include <optional>

#include "value/value.h"

namespace ptick::exports {

/// Clocks as times from a start, rounded to the nanosecond. Rounding keeps their order, so that
/// what nests in clocks nests in times.
class ClockScale {
 public:
  /// `hertz`, clock ticks per second, is above 0.
  ClockScale(const Number& start, const Number& hertz) : start_(start), hertz_(hertz) {}

  /// Nothing for what is more than 2^62 nanoseconds, 146 years, from the start.
  std::optional<std::int64_t> Time(const Number& clock) const;

 private:
  Number start_;
  Number hertz_;
};

}  // namespace ptick::exports
