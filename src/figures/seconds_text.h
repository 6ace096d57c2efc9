#pragma once

#include <cstddef>
#include <cstdint>

#include "value/value.h"

namespace ptick {

/// Writes clock ticks as seconds, byte for byte as the value layer does (see clock_time.h), but by
/// one division: for whole ticks and a whole clock rate.
///
/// The value layer divides as floating numbers, rounds to 15 significant digits and cuts to 4
/// decimals. That equals the exact quotient, cut: the exact quotient of d ticks by D is no multiple
/// of 1/10000, or at least 1/(10000 D) away from the next one, and the roundings together move it
/// by less than 10^-14 of d/D. With d up to 2^32 that is less than a half of that distance,
/// whatever D.
class SecondsText {
 public:
  /// Ticks are whole and at most this, in size.
  static constexpr std::int64_t kMaxTicks = std::int64_t{1} << 32U;

  /// The longest text is "-4294967296.9999".
  static constexpr std::size_t kMaxSize = 16;

  explicit SecondsText(const Value& hertz);

  /// Whether the clock rate is whole, from 1 to 2^21. REQUIRED by the other operations.
  bool IsQuick() const { return hertz_ != 0; }

  /// Writes the text of `ticks` / hertz to `at`, and returns the place after it. There is room for
  /// kMaxSize bytes, all of which may be written to.
  char* Put(std::int64_t ticks, char* at) const { return PutQuotient(ticks, hertz_, at); }

  /// The same for the text of (`ticks` / hertz) / `parts`.
  char* Put(std::int64_t ticks, std::uint32_t parts, char* at) const {
    return PutQuotient(ticks, hertz_ * parts, at);
  }

 private:
  static char* PutQuotient(std::int64_t ticks, double divisor, char* at);

  double hertz_ = 0;
};

}  // namespace ptick
