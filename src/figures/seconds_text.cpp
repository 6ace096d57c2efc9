#include "figures/seconds_text.h"

#include <array>
#include <charconv>
#include <cstring>
#include <variant>

namespace ptick {

namespace {

// Products with the parts are exact then: below 2^53.
constexpr std::int64_t kMaxHertz = std::int64_t{1} << 21U;

constexpr std::uint64_t kScale = 10'000;

// Writes a point and four decimals, and returns the place after the last one that is not 0.
char* PutDecimals(std::uint32_t decimals, char* at) {
  const auto digit = [decimals](std::uint32_t power) {
    return static_cast<char>('0' + decimals / power % 10);
  };
  const std::array<char, 5> text = {'.', digit(1000), digit(100), digit(10), digit(1)};
  std::memcpy(at, text.data(), text.size());
  // Without a branch: which digit is the last is not to be foreseen.
  return at + (decimals != 0 ? 2 : 0) + (decimals % 1000 != 0 ? 1 : 0) +
         (decimals % 100 != 0 ? 1 : 0) + (decimals % 10 != 0 ? 1 : 0);
}

}  // namespace

SecondsText::SecondsText(const Value& hertz) {
  const Number number = hertz.AsNumber();
  const auto* whole = std::get_if<std::int64_t>(&number);
  if (whole != nullptr && *whole > 0 && *whole <= kMaxHertz) {
    hertz_ = static_cast<double>(*whole);
  }
}

// The quotient of scaled ticks is rounded, but never up to a whole number that it is not.
char* SecondsText::PutQuotient(std::int64_t ticks, double divisor, char* at) {
  const double size = static_cast<double>(ticks < 0 ? -ticks : ticks) * double{kScale};
  const auto scaled = static_cast<std::uint64_t>(size / divisor);
  if (ticks < 0 && scaled != 0) {
    *at++ = '-';
  }
  const std::uint64_t whole = scaled / kScale;
  at = whole < 10 ? (*at = static_cast<char>('0' + whole), at + 1)
                  : std::to_chars(at, at + kMaxSize, whole).ptr;
  return PutDecimals(static_cast<std::uint32_t>(scaled % kScale), at);
}

}  // namespace ptick
