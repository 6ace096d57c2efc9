// The numbers of a command as formats name them.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "profile/tables/perform_table.h"
#include "value/value.h"

namespace ptick::exports {

struct PerformField {
  std::string_view name;
  PerformNumber number;
};

inline constexpr std::array<PerformField, kPerformNumbers> kPerformFields = {{
    {"startclock", PerformNumber::kStartClock},
    {"endclock", PerformNumber::kEndClock},
    {"starttime", PerformNumber::kStartTime},
    {"endtime", PerformNumber::kEndTime},
    {"ticks", PerformNumber::kTicks},
    {"usrcpu", PerformNumber::kUsrCpu},
    {"syscpu", PerformNumber::kSysCpu},
}};

/// A number of a command as it counts, nothing where the record has none.
inline std::optional<Number> FieldOf(const PerformTable::Record& perform, PerformNumber number) {
  return perform.Has(number) ? std::optional(perform.AsNumber(number)) : std::nullopt;
}

}  // namespace ptick::exports
