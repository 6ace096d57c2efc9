#include "model/random_fields.h"

#include <array>
#include <string_view>

namespace ptick::model {

namespace {

using namespace std::string_view_literals;

constexpr std::array kOddNumbers = {""sv,
                                    "007"sv,
                                    "1.50"sv,
                                    "1.5"sv,
                                    "-3"sv,
                                    "+4"sv,
                                    "abc"sv,
                                    "00"sv,
                                    "-0"sv,
                                    "+0"sv,
                                    "0.0"sv,
                                    "1e5"sv,
                                    " 5"sv,
                                    "5 "sv,
                                    "5\r"sv,
                                    ".5"sv,
                                    "5."sv,
                                    "1.25"sv,
                                    "5.0"sv,
                                    "05"sv,
                                    "-1.5"sv,
                                    "--1"sv,
                                    "0.000001"sv,
                                    "0.123456"sv,
                                    "0.123401"sv,
                                    "0.1234"sv,
                                    "123.654321"sv,
                                    "33.33"sv,
                                    "0.1"sv,
                                    "1\xFD"
                                    "2"sv,
                                    "\xFC"
                                    "3"sv,
                                    "\xFF"
                                    "4"sv,
                                    "1\0"sv,
                                    "1,000"sv,
                                    "12abc"sv,
                                    "1234567"sv,
                                    "12345678"sv,
                                    "01234567"sv,
                                    "9999999"sv,
                                    "10000000"sv,
                                    "2147483647"sv,
                                    "2147483648"sv,
                                    "4294967295"sv,
                                    "4294967296"sv,
                                    "-4294967296"sv,
                                    "4294967295.0"sv,
                                    "4294967295.5"sv,
                                    "9007199254740992"sv,
                                    "9007199254740993"sv,
                                    "9007199254740992.5"sv,
                                    "9007199254740993.5"sv,
                                    "9223372036854775807"sv,
                                    "9223372036854775808"sv,
                                    "-9223372036854775808"sv,
                                    "-9223372036854775809"sv,
                                    "18446744073709551616"sv,
                                    "99999999999999999999.5"sv,
                                    "1000000000000000000000000"sv,
                                    "00000000000000000000000000005"sv};

constexpr std::array kNames = {"A"sv,
                               "B"sv,
                               "b"sv,
                               "a"sv,
                               "1"sv,
                               "01"sv,
                               "1.0"sv,
                               ""sv,
                               "ORDER.ENTRY"sv,
                               "POST.INVOICE"sv,
                               "lib/CALC.TAX"sv,
                               "A B"sv,
                               " A"sv,
                               "A "sv,
                               "main()"sv,
                               "12345678"sv,
                               "123456789"sv,
                               "1234567890123456"sv,
                               "12345678901234567"sv,
                               "EXACTLY.TWENTY.BYTES"sv,
                               "EXACTLY.TWENTY.BYTES.AND.MORE"sv,
                               "\xC3\x84\xD6"sv,
                               "A\xFD"
                               "B"sv,
                               "\xFC"sv,
                               "\xFF"
                               "A"sv,
                               "A\0B"sv,
                               "A\r"sv,
                               "\x0B\x0C"sv,
                               "\x01"sv,
                               "trace"sv,
                               "PROFILE:trace"sv};

constexpr std::array kLineNumbers = {""sv,
                                     "0"sv,
                                     "007"sv,
                                     "x"sv,
                                     "-1"sv,
                                     "1.5"sv,
                                     "9999"sv,
                                     "10000"sv,
                                     "1234567"sv,
                                     "12345678"sv,
                                     "2147483647"sv,
                                     "2147483648"sv,
                                     "4294967296"sv,
                                     "99999999999999999999"sv,
                                     "12\r"sv,
                                     "1\xFD"
                                     "2"sv};

constexpr std::array kCodes = {"0"sv,  "13"sv,  "10"sv,   ""sv,    "9"sv,   "27"sv,   "013"sv,
                               "00"sv, "0.0"sv, "13.0"sv, "34"sv,  "126"sv, "127"sv,  "255"sv,
                               "65"sv, "256"sv, "266"sv,  "300"sv, "-1"sv,  "10.5"sv, "abc"sv};

constexpr std::string_view kOddBytes = "\t\t \"~\r\0\x01\x1B\x7F\x80\xC4\xFC\xFD\xFF"sv;

// Magnitudes spread over all that 64 bits hold, and beyond.
std::string RandomNumber(RandomSource& random) {
  switch (random.Below(8)) {
    case 0:
      return random.Digits(random.Between(1, 8));
    case 1:
      return std::to_string(random.Below(std::size_t{1} << random.Between(1, 33)));
    case 2:
      return "1" + random.Digits(random.Between(18, 24));
    case 3:
      return std::to_string(random.Below(100)) + "." + random.Digits(random.Between(1, 6));
    case 4:
      return "-" + std::to_string(random.Below(1000));
    default:
      return std::to_string(random.Below(1000));
  }
}

}  // namespace

std::string RandomTicks(RandomSource& random) {
  const std::size_t kind = random.Below(10);
  if (kind < 5) {
    return std::to_string(random.Below(6));
  }
  return kind < 8 ? RandomNumber(random) : random.Pick(kOddNumbers);
}

std::string RandomLineNumber(RandomSource& random) {
  return random.Chance(80) ? std::to_string(random.Below(random.Chance(50) ? 5 : 20000))
                           : random.Pick(kLineNumbers);
}

std::string RandomName(RandomSource& random) {
  if (random.Chance(60)) {
    return random.Pick(std::array{"A"sv, "B"sv, "b"sv, "PROGRAM.NAME"sv, "12345678"sv});
  }
  if (random.Chance(70)) {
    return random.Pick(kNames);
  }
  std::string name(random.Between(1, 70), 'N');
  name.back() = static_cast<char>('0' + random.Below(3));
  return name;
}

std::string RandomClock(RandomSource& random) {
  if (random.Chance(15)) {
    return random.Pick(kOddNumbers);
  }
  return std::to_string(random.Below(random.Chance(30) ? 3 : 100000));
}

std::string RandomCode(RandomSource& random) { return random.Pick(kCodes); }

std::string RandomText(RandomSource& random) {
  std::string text(random.Below(random.Chance(10) ? 60 : 8), 'x');
  for (char& c : text) {
    if (random.Chance(70)) {
      c = static_cast<char>('a' + random.Below(26));
    } else {
      c = kOddBytes[random.Below(kOddBytes.size())];
    }
  }
  return text;
}

}  // namespace ptick::model
