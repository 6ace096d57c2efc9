#include "ptick_export/facts/run_time.h"

#include "ptick_export/facts/clock_scale.h"
#include "value/value.h"

namespace ptick::exports {

namespace {

constexpr Number kZero = std::int64_t{0};
constexpr Number kSeconds = std::int64_t{1};  // times are clocks of one tick a second

std::optional<std::int64_t> Between(const Value& start, const Value& end, const Number& hertz) {
  if (!start.IsNumber() || !end.IsNumber() || CompareNumbers(hertz, kZero) <= 0) {
    return std::nullopt;
  }
  const std::optional<std::int64_t> duration =
      ClockScale(start.AsNumber(), hertz).Time(end.AsNumber());
  return duration && *duration >= 0 ? duration : std::nullopt;
}

}  // namespace

std::optional<std::int64_t> StartNanoseconds(const ProfileTables& tables) {
  return tables.StartTime.IsNumber() ? ClockScale(kZero, kSeconds).Time(tables.StartTime.AsNumber())
                                     : std::nullopt;
}

std::optional<std::int64_t> DurationNanoseconds(const ProfileTables& tables) {
  const std::optional<std::int64_t> by_clocks =
      Between(tables.StartClock, tables.EndClock, tables.Hertz.AsNumber());
  return by_clocks ? by_clocks : Between(tables.StartTime, tables.EndTime, kSeconds);
}

}  // namespace ptick::exports
