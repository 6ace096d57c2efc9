#include "model/random_fields.h"

#include <string_view>

namespace ptick::model {

namespace {

using namespace std::string_view_literals;

// Words are separated by bars.
constexpr std::string_view kOddNumbers =
    "|007|1.50|1.5|-3|+4|abc|00|-0|+0|0.0|1e5| 5|5 |5\r|.5|5.|1.25|5.0|05|-1.5|--1|0.000001|"
    "0.123456|0.123401|0.1234|123.654321|33.33|0.1|1\3752|\3743|\3774|1\0|1,000|12abc|1234567|"
    "12345678|01234567|9999999|10000000|2147483647|2147483648|4294967295|4294967296|-4294967296|"
    "4294967295.0|4294967295.5|9007199254740992|9007199254740993|9007199254740992.5|"
    "9007199254740993.5|9223372036854775807|9223372036854775808|-9223372036854775808|"
    "-9223372036854775809|18446744073709551616|99999999999999999999.5|1000000000000000000000000|"
    "00000000000000000000000000005|2.00000000000000000001|1.99999999999999999999|"
    "5.00000000000000000001|4095.99999999999999999999|5000000000.00000000000000000001|5000000000"sv;

constexpr std::string_view kNames =
    "A|B|b|a|1|01|1.0||ORDER.ENTRY|POST.INVOICE|lib/CALC.TAX|A B| A|A |main()|12345678|"
    "123456789|1234567890123456|12345678901234567|EXACTLY.TWENTY.BYTES|"
    "EXACTLY.TWENTY.BYTES.AND.MORE|\xC3\x84\xD6|A\375B|\xFC|\377A|A\0B|A\r|\x0B\x0C|\x01|trace|"
    "PROFILE:trace"sv;

constexpr std::string_view kLineNumbers =
    "|0|007|x|-1|1.5|9999|10000|1234567|12345678|2147483647|2147483648|4294967296|"
    "99999999999999999999|12\r|1\3752"sv;

constexpr std::string_view kCodes =
    "0|13|10||9|27|013|00|0.0|13.0|34|126|127|255|65|256|266|300|-1|10.5|abc"sv;

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
  return kind < 8 ? RandomNumber(random) : random.PickWord(kOddNumbers);
}

std::string RandomLineNumber(RandomSource& random) {
  return random.Chance(80) ? std::to_string(random.Below(random.Chance(50) ? 5 : 20000))
                           : random.PickWord(kLineNumbers);
}

std::string RandomName(RandomSource& random) {
  if (random.Chance(60)) {
    return random.PickWord("A|B|b|PROGRAM.NAME|12345678");
  }
  if (random.Chance(70)) {
    return random.PickWord(kNames);
  }
  std::string name(random.Between(1, 70), 'N');
  name.back() = static_cast<char>('0' + random.Below(3));
  return name;
}

std::string RandomClock(RandomSource& random) {
  if (random.Chance(15)) {
    return random.PickWord(kOddNumbers);
  }
  return std::to_string(random.Below(random.Chance(30) ? 3 : 100000));
}

std::string RandomCode(RandomSource& random) { return random.PickWord(kCodes); }

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
