#pragma once

#include "value/arithmetic.h"
#include "value/value.h"

namespace ptick {

/// Clock ticks as seconds. Without a clock rate, 0.
inline Value Seconds(const Value& clock_ticks, const Value& hertz) {
  return Divide(clock_ticks, hertz);
}

/// The seconds from one clock to another.
inline Value ElapsedSeconds(const Value& start_clock, const Value& end_clock, const Value& hertz) {
  return Seconds(Subtract(end_clock, start_clock), hertz);
}

}  // namespace ptick
