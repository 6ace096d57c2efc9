// Masks and conversions on any text, number and moment.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "value/arithmetic.h"
#include "value/conversion.h"
#include "value/mask.h"
#include "value/number_text.h"
#include "value/pattern.h"
#include "value/text.h"

namespace {

using ptick::Fmt;
using ptick::OConv;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

std::string Without(std::string text, char c) {
  std::erase(text, c);
  return text;
}

void CheckWidths(const std::string& text, int width) {
  const auto size = static_cast<std::size_t>(std::max(width, 0));
  const std::size_t shown = std::min(size, text.size());
  const std::string blanks(size - shown, ' ');
  const std::string zeros(size - shown, '0');
  const std::string digits = std::to_string(width);
  RequireEqual(text.substr(0, shown) + blanks, Fmt(text, "L#" + digits), "L# pads or cuts");
  RequireEqual(zeros + text.substr(text.size() - shown), Fmt(text, "R%" + digits), "R% pads");
  RequireEqual(Fmt(text, "L#" + digits), ptick::Mask::Left(width).Format(text), "Left is L#");
}

// Any mask at all; only the width of one is kept in bounds.
void CheckAnyMask(const std::string& text, const std::string& mask_text) {
  const ptick::Mask mask = ptick::Mask::Parse(mask_text);
  if (mask.Width() > 4096) {
    return;
  }
  std::string line = "front";
  mask.Append(text, line);
  RequireEqual("front" + mask.Format(text), line, "a mask appends what it formats");
  if (mask.Width() > 0) {
    Require(line.size() == 5 + static_cast<std::size_t>(mask.Width()), "a width is exact");
  } else if (mask.TakesNumbers() && ptick::ParseNumber(text)) {
    Require(ptick::ParseNumber(Without(mask.Format(text), ',')).has_value(), "numbers stay so");
  }
}

// The number times 10^places, rounded half away from zero; nothing where 18 digits do not hold it.
std::optional<std::int64_t> Rounded(const ptick::DecimalDigits& number, std::size_t places) {
  std::string digits = std::string(number.whole) + std::string(number.fraction);
  const std::size_t kept = number.whole.size() + places;
  if (kept > 18) {
    return std::nullopt;
  }
  const bool up = kept < digits.size() && digits[kept] >= '5';
  digits.resize(kept, '0');
  std::int64_t rounded = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), rounded);
  rounded += up ? 1 : 0;
  return number.negative ? -rounded : rounded;
}

// "-12.50" and "1,234" as the whole number of their digits.
std::int64_t DigitsOf(const std::string& text) {
  const std::string digits = Without(Without(text, ','), '.');
  std::int64_t number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  Require(read.ptr == digits.data() + digits.size(), "a number mask leaves digits");
  return number;
}

void CheckGroups(const std::string& grouped) {
  const std::size_t first = grouped.find(',');
  for (std::size_t comma = first; comma < grouped.size(); comma += 4) {
    Require(grouped[comma] == ',', "commas are between groups of three");
  }
  const std::size_t groups = first == std::string::npos ? 0 : (grouped.size() - first) / 4;
  Require(Without(grouped, ',').size() + groups == grouped.size() &&
              (groups == 0 || (grouped.size() - first) % 4 == 0),
          "commas are nowhere else");
}

void CheckNumberMasks(const std::string& text) {
  const std::optional<ptick::DecimalDigits> number = ptick::SplitDecimal(text);
  const std::string grouped = Fmt(text, "ML,");
  const std::string decimals = Fmt(text, "L2");
  RequireEqual(decimals, Fmt(text, "MR20"), "L2 and MR20 are alike");
  if (!number) {
    RequireEqual(text, grouped, "ML, leaves what is no number");
    RequireEqual(text, decimals, "L2 leaves what is no number");
    RequireEqual(text, Fmt(text, "MR22"), "MR22 leaves what is no number");
    return;
  }
  CheckGroups(grouped);
  Require(decimals.size() > 3 && decimals[decimals.size() - 3] == '.', "L2 has two decimals");
  RequireEqual(decimals, Fmt(decimals, "L2"), "L2 of L2 is L2");
  RequireEqual(Without(grouped, ','), Fmt(text, "L0"), "ML, rounds as L0 does");
  if (const std::optional<std::int64_t> whole = Rounded(*number, 0)) {
    Require(DigitsOf(grouped) == *whole, "ML, keeps the number");
    RequireEqual(std::to_string(*whole), Without(grouped, ','), "ML, only adds commas");
    Require(DigitsOf(Fmt(text, "MR22")) == *whole, "MR22 shifts by two places");
  }
  if (const std::optional<std::int64_t> hundredths = Rounded(*number, 2)) {
    Require(DigitsOf(decimals) == *hundredths, "L2 rounds to hundredths");
  }
}

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

void CheckCase(const std::string& text, const char* code, const char* other) {
  const std::string changed = OConv(text, code).Text();
  RequireEqual(changed, OConv(changed, code).Text(), "a case conversion does nothing twice");
  RequireEqual(changed, OConv(OConv(text, other), code).Text(), "the last conversion counts");
  Require(changed.size() == text.size(), "a case conversion keeps the length");
  for (std::size_t i = 0; i < text.size(); ++i) {
    Require(changed[i] == text[i] || (IsLetter(text[i]) && (changed[i] ^ text[i]) == 32),
            "only letters change");
  }
}

// The internal date of a shown one, "01 JAN 1970", counted on by years and months.
std::int64_t DateOf(const std::string& shown) {
  constexpr std::string_view kMonths = "JAN FEB MAR APR MAY JUN JUL AUG SEP OCT NOV DEC";
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  Require(ptick::Matches(shown.substr(0, 3), "2N' '") && ptick::Matches(shown.substr(6), "' '4N"),
          "a date is a day, a month and a year");
  const std::size_t month = kMonths.find(shown.substr(3, 3)) / 4;
  Require(month < 12, "a month is one of twelve");
  const int year = std::stoi(shown.substr(7));
  const auto is_leap = [](int y) { return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0); };
  std::int64_t date = -718431;  // the day before the first of year 1
  date += std::int64_t{365} * (year - 1) + (year - 1) / 4 - (year - 1) / 100 + (year - 1) / 400;
  for (std::size_t before = 0; before < month; ++before) {
    date += kDays.at(before) + (before == 1 && is_leap(year) ? 1 : 0);
  }
  const int day = std::stoi(shown.substr(0, 2));
  Require(day >= 1 && day <= kDays.at(month) + (month == 1 && is_leap(year) ? 1 : 0),
          "a day is one of its month");
  return date + day;
}

// A number of up to 24 bits and its sign.
std::int64_t TakeNumber(ptick::fuzz::FuzzInput& input) {
  const std::int64_t high = input.TakeByte();
  const std::int64_t low = input.TakeByte() * std::int64_t{256} + input.TakeByte();
  return (input.TakeFlag() ? -1 : 1) * (high * 65536 + low);
}

void CheckDate(std::int64_t date) {
  const std::string shown = OConv(date, "D").Text();
  if (date < -718430 || date > 2933628) {
    RequireEqual(std::to_string(date), shown, "a date outside the calendar stays a number");
  } else {
    Require(shown.size() == 11 && DateOf(shown) == date, "a date is shown as that date");
  }
}

void CheckTime(std::int64_t time) {
  const std::string shown = OConv(time, "MTS").Text();
  if (time < 0 || time >= 86400) {
    RequireEqual(std::to_string(time), shown, "a time outside the day stays a number");
    return;
  }
  Require(ptick::Matches(shown, "2N':'2N':'2N"), "a time is hours, minutes and seconds");
  const int minutes = std::stoi(shown.substr(0, 2)) * 60 + std::stoi(shown.substr(3, 2));
  Require(minutes * std::int64_t{60} + std::stoi(shown.substr(6)) == time, "a time is that time");
}

// A moment is its day and its second of the day, in local time.
void CheckMoment(std::int64_t moment, std::int64_t offset) {
  const ptick::ZoneOffset zone = [offset](std::int64_t) { return offset; };
  const ptick::Value date = OConv(moment, "U0ff1", zone);
  const ptick::Value time = OConv(moment, "U0ff0", zone);
  Require(time >= 0 && time < 86400, "a time of day is within the day");
  Require(Add(Multiply(Subtract(date, 732), 86400), time) == moment + offset,
          "date and time make the moment");
  RequireEqual(OConv(time, "MTS").Text() + " " + OConv(date, "D").Text(),
               ptick::TimeDate(moment, zone), "a moment is shown as its time and date");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  const int width = input.TakeBetween(-2, 80);
  const std::int64_t number = TakeNumber(input);
  const std::int64_t offset = input.TakeBetween(-100, 100) * std::int64_t{900};
  const std::string mask = input.TakeUpTo('\n');
  const std::string text = input.TakeRest();

  CheckWidths(text, width);
  CheckAnyMask(text, mask);
  CheckNumberMasks(text);
  CheckCase(text, "MCU", "MCL");
  CheckCase(text, "MCL", "MCU");
  CheckDate(number);
  CheckTime(number);
  CheckTime(number % 90000);
  CheckMoment(number * 256, offset);
  for (const char* code : {"D", "MTS", "U0ff1", "U0ff0"}) {
    OConv(text, code);
  }
  RequireEqual(text, OConv(text, mask + "?").Text(), "an unknown code changes nothing");
  return 0;
}
