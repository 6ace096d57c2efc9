#pragma once

#include "figures/clock_time.h"
#include "profile/tables/perform_table.h"
#include "value/value.h"

namespace ptick {

/// What a PERFORM took, in seconds.
struct PerformTimes {
  Value elapsed;
  Value usr_cpu;
  Value sys_cpu;
};

/// `hertz` best as a number: a text is read again each time.
inline PerformTimes TimesOf(const PerformTable::Record& perform, const Value& hertz) {
  return {.elapsed = ElapsedSeconds(perform.AsNumber(PerformNumber::kStartClock),
                                    perform.AsNumber(PerformNumber::kEndClock), hertz),
          .usr_cpu = Seconds(perform.AsNumber(PerformNumber::kUsrCpu), hertz),
          .sys_cpu = Seconds(perform.AsNumber(PerformNumber::kSysCpu), hertz)};
}

}  // namespace ptick
