#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "value/value.h"

namespace ptick {

/// How many seconds local time is ahead of universal time at a moment; nothing when no calendar
/// shows that moment. An empty function means universal time.
using ZoneOffset = std::function<std::optional<std::int64_t>(std::int64_t)>;

/// OCONV: x converted by a code. A value that the code cannot convert is returned unchanged: text
/// that is not numeric, a moment or date outside the years 1 to 9999, a time outside the day; so is
/// every value by a code not listed. Fractions of seconds and days are cut downward.
///
///   "MCU" "MCL"  upper, lower case (ASCII letters)
///   "U0ff1"      a time stamp (seconds since 1 January 1970): its internal date, the days since
///                31 December 1967, in local time
///   "U0ff0"      the same: its internal time of day, the seconds since midnight, in local time
///   "D"          an internal date as "01 JAN 1970"; years 1 to 9999
///   "MTS"        an internal time as "23:59:59"; 0 to 86399
Value OConv(const Value& x, std::string_view code, const ZoneOffset& zone = {});

/// TIMEDATE: a moment as time of day and date, "12:34:56 01 JAN 2024"; the bare number when no
/// calendar shows it.
std::string TimeDate(std::int64_t time, const ZoneOffset& zone);

}  // namespace ptick
