#include "value/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>

namespace ptick {

namespace {

constexpr int kSignificantDigits = 15;
constexpr std::size_t kDecimalsShown = 4;

std::string_view LeadingDigits(std::string_view text) {
  const auto end =
      std::find_if_not(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

bool AllZeros(std::string_view digits) {
  return digits.find_first_not_of('0') == std::string_view::npos;
}

/// from_chars leaves its result unset when it is out of range.
double OutOfRange(const DecimalDigits& digits) {
  const double size = AllZeros(digits.whole) ? std::numeric_limits<double>::denorm_min()
                                             : std::numeric_limits<double>::max();
  return digits.negative ? -size : size;
}

/// A whole number above 0: all its digits, however many.
std::string WholeText(double size) {
  std::array<char, std::numeric_limits<double>::max_exponent10 + 2> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), size,
                                     std::chars_format::fixed, 0);
  return {digits.data(), written.ptr};
}

/// A number above 0 in plain notation, rounded to its significant digits unless it is whole.
std::string PlainText(double size) {
  if (size == std::trunc(size)) {
    return WholeText(size);
  }
  std::array<char, 32> scientific{};  // d.ddddddddddddddE+xxx
  const auto written = std::to_chars(scientific.data(), scientific.data() + scientific.size(), size,
                                     std::chars_format::scientific, kSignificantDigits - 1);
  const std::string_view all(scientific.data(),
                             static_cast<std::size_t>(written.ptr - scientific.data()));
  const std::size_t exponent_mark = all.find('e');
  const std::size_t exponent_begin = exponent_mark + (all[exponent_mark + 1] == '+' ? 2 : 1);
  int exponent = 0;
  std::from_chars(all.data() + exponent_begin, all.data() + all.size(), exponent);

  std::string digits;
  digits.append(all.substr(0, 1)).append(all.substr(2, exponent_mark - 2));
  digits.erase(digits.find_last_not_of('0') + 1);
  if (exponent < 0) {
    return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
  }
  const std::size_t whole = static_cast<std::size_t>(exponent) + 1;
  if (digits.size() <= whole) {
    return digits.append(whole - digits.size(), '0');
  }
  return digits.insert(whole, 1, '.');
}

void CutDecimals(std::string& plain) {
  const std::size_t point = plain.find('.');
  if (point == std::string::npos) {
    return;
  }
  plain.resize(std::min(plain.size(), point + 1 + kDecimalsShown));
  plain.erase(plain.find_last_not_of('0') + 1);
  if (plain.back() == '.') {
    plain.pop_back();
  }
}

}  // namespace

std::optional<DecimalDigits> SplitDecimal(std::string_view text) {
  DecimalDigits digits;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    digits.negative = text.front() == '-';
    text.remove_prefix(1);
  }
  digits.whole = LeadingDigits(text);
  if (digits.whole.empty()) {
    return std::nullopt;
  }
  text.remove_prefix(digits.whole.size());
  if (text.empty()) {
    return digits;
  }
  if (text.front() != '.') {
    return std::nullopt;
  }
  text.remove_prefix(1);
  digits.fraction = LeadingDigits(text);
  if (digits.fraction.empty() || digits.fraction.size() != text.size()) {
    return std::nullopt;
  }
  return digits;
}

std::optional<Number> ParseNumber(std::string_view text) {
  const std::optional<DecimalDigits> digits = SplitDecimal(text);
  if (!digits) {
    return std::nullopt;
  }
  if (text.front() == '+') {
    text.remove_prefix(1);  // from_chars knows no plus sign
  }
  if (AllZeros(digits->fraction)) {
    const std::size_t whole_size = digits->whole.size() + (digits->negative ? 1 : 0);
    std::int64_t whole = 0;
    if (std::from_chars(text.data(), text.data() + whole_size, whole).ec == std::errc()) {
      return whole;
    }
  }
  double number = 0;
  const auto read =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  return read.ec == std::errc() ? number : OutOfRange(*digits);
}

std::string NumberText(const Number& number) {
  if (const auto* whole = std::get_if<std::int64_t>(&number)) {
    return std::to_string(*whole);
  }
  std::string text = DecimalText(number);
  CutDecimals(text);
  return text == "-0" ? "0" : text;
}

std::string DecimalText(const Number& number) {
  if (const auto* whole = std::get_if<std::int64_t>(&number)) {
    return std::to_string(*whole);
  }
  const double floating = std::get<double>(number);
  if (floating == 0) {
    return "0";
  }
  return (floating < 0 ? "-" : "") + PlainText(std::abs(floating));
}

}  // namespace ptick
