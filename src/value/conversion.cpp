#include "value/conversion.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "value/text.h"

namespace ptick {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days kDayZero = std::chrono::year{1967} / std::chrono::December / 31;
constexpr sys_days kFirstDay = std::chrono::year{1} / std::chrono::January / 1;
constexpr sys_days kLastDay = std::chrono::year{9999} / std::chrono::December / 31;
constexpr std::int64_t kSecondsPerDay = 86400;

constexpr std::array<std::string_view, 12> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                      "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

/// The whole number at or below x; nothing for what is not numeric or does not fit.
std::optional<std::int64_t> Floor(const Value& x) {
  if (!x.IsNumber()) {
    return std::nullopt;
  }
  const Number number = x.AsNumber();
  if (const auto* whole = std::get_if<std::int64_t>(&number)) {
    return *whole;
  }
  constexpr double kBeyond = 9223372036854775808.0;
  const double below = std::floor(std::get<double>(number));
  if (below < -kBeyond || below >= kBeyond) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(below);
}

struct LocalMoment {
  std::int64_t date = 0;  ///< internal date
  std::int64_t time = 0;  ///< internal time of day
};

bool HasCalendarDate(std::int64_t internal_date) {
  return internal_date >= (kFirstDay - kDayZero).count() &&
         internal_date <= (kLastDay - kDayZero).count();
}

std::optional<LocalMoment> ToLocal(std::int64_t time, const ZoneOffset& zone) {
  const std::optional<std::int64_t> offset = zone ? zone(time) : std::int64_t{0};
  std::int64_t local = 0;
  if (!offset || __builtin_add_overflow(time, *offset, &local)) {
    return std::nullopt;
  }
  const std::int64_t second = (local % kSecondsPerDay + kSecondsPerDay) % kSecondsPerDay;
  const std::int64_t day = local / kSecondsPerDay - (local % kSecondsPerDay < 0 ? 1 : 0);
  const LocalMoment moment{day - kDayZero.time_since_epoch().count(), second};
  return HasCalendarDate(moment.date) ? std::optional(moment) : std::nullopt;
}

std::optional<LocalMoment> StampToLocal(const Value& stamp, const ZoneOffset& zone) {
  const std::optional<std::int64_t> time = Floor(stamp);
  return time ? ToLocal(*time, zone) : std::nullopt;
}

std::string Padded(std::int64_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  return digits.insert(0, width - std::min(width, digits.size()), '0');
}

std::string DateText(std::int64_t internal_date) {
  const std::chrono::year_month_day date = kDayZero + days{internal_date};
  const auto month = static_cast<unsigned>(date.month());
  return Padded(static_cast<unsigned>(date.day()), 2) + " " + std::string(kMonths.at(month - 1)) +
         " " + Padded(static_cast<int>(date.year()), 4);
}

std::string TimeText(std::int64_t time) {
  return Padded(time / 3600, 2) + ":" + Padded(time / 60 % 60, 2) + ":" + Padded(time % 60, 2);
}

Value ToUpperCase(const Value& x, const ZoneOffset& /*zone*/) { return UpperCase(x.Text()); }

Value ToLowerCase(const Value& x, const ZoneOffset& /*zone*/) { return LowerCase(x.Text()); }

Value StampToDate(const Value& x, const ZoneOffset& zone) {
  const std::optional<LocalMoment> moment = StampToLocal(x, zone);
  return moment ? Value(moment->date) : x;
}

Value StampToTime(const Value& x, const ZoneOffset& zone) {
  const std::optional<LocalMoment> moment = StampToLocal(x, zone);
  return moment ? Value(moment->time) : x;
}

Value ToDateText(const Value& x, const ZoneOffset& /*zone*/) {
  const std::optional<std::int64_t> date = Floor(x);
  return date && HasCalendarDate(*date) ? Value(DateText(*date)) : x;
}

Value ToTimeText(const Value& x, const ZoneOffset& /*zone*/) {
  const std::optional<std::int64_t> time = Floor(x);
  return time && *time >= 0 && *time < kSecondsPerDay ? Value(TimeText(*time)) : x;
}

struct Conversion {
  std::string_view code;
  Value (*convert)(const Value& x, const ZoneOffset& zone);
};

constexpr std::array<Conversion, 6> kConversions = {{
    {"MCU", ToUpperCase},
    {"MCL", ToLowerCase},
    {"U0ff1", StampToDate},
    {"U0ff0", StampToTime},
    {"D", ToDateText},
    {"MTS", ToTimeText},
}};

}  // namespace

Value OConv(const Value& x, std::string_view code, const ZoneOffset& zone) {
  const auto found = std::find_if(kConversions.begin(), kConversions.end(),
                                  [&](const Conversion& row) { return row.code == code; });
  return found == kConversions.end() ? x : found->convert(x, zone);
}

std::string TimeDate(std::int64_t time, const ZoneOffset& zone) {
  const std::optional<LocalMoment> moment = ToLocal(time, zone);
  return moment ? TimeText(moment->time) + " " + DateText(moment->date) : std::to_string(time);
}

}  // namespace ptick
