// Counts of subroutine calls, for formats that hold whole ones only.
#pragma once

#include <cstdint>
#include <optional>

#include "value/value.h"

namespace ptick::exports {

/// Recorded calls that such a format does not hold as they are.
struct CallLosses {
  std::uint64_t cut = 0;        ///< a fraction of their times was cut
  std::uint64_t below_one = 0;  ///< left out: no whole call remained
  std::uint64_t negative = 0;   ///< left out
  std::uint64_t too_large = 0;  ///< left out: above 2^63 - 1
};

/// What such a format holds of the times of a call, nothing where it is left out; counts losses.
std::optional<std::int64_t> WholeTimes(const Number& times, CallLosses& losses);

}  // namespace ptick::exports
