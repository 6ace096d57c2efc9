#include "value/mask.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "value/number_text.h"

namespace ptick {

namespace {

constexpr std::size_t kGroup = 3;

std::optional<std::int64_t> WholeNumber(std::string_view text) {
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool all_read = read.ec == std::errc() && read.ptr == text.data() + text.size();
  return all_read ? std::optional(number) : std::nullopt;
}

/// The digits of "Ld", "MRd" and "MRds"; empty for other masks.
std::string_view DecimalFigures(std::string_view mask) {
  const bool is_right = mask.substr(0, 2) == "MR";
  if (!is_right && mask.substr(0, 1) != "L") {
    return {};
  }
  const std::size_t most = is_right ? 2 : 1;
  const std::string_view figures = mask.substr(is_right ? 2 : 1);
  const bool are_digits = figures.find_first_not_of("0123456789") == std::string_view::npos;
  return are_digits && figures.size() <= most ? figures : std::string_view();
}

/// Adds 1 to the number that the digits spell.
void IncrementDigits(std::string& digits) {
  auto digit = digits.rbegin();
  for (; digit != digits.rend() && *digit == '9'; ++digit) {
    *digit = '0';
  }
  if (digit == digits.rend()) {
    digits.insert(0, 1, '1');
  } else {
    ++*digit;
  }
}

/// The number times 10^shift as a whole number, rounded half away from zero: its digits without
/// leading zeros, so none for 0.
std::string RoundedDigits(const DecimalDigits& number, int shift) {
  std::string digits(number.whole);
  digits.append(number.fraction);
  const std::int64_t kept = static_cast<std::int64_t>(number.whole.size()) + shift;
  if (kept < 0) {
    return "";
  }
  const auto size = static_cast<std::size_t>(kept);
  const bool rounds_up = size < digits.size() && digits[size] >= '5';
  digits.resize(size, '0');
  if (rounds_up) {
    IncrementDigits(digits);
  }
  return digits.erase(0, digits.find_first_not_of('0'));
}

void AppendDecimals(std::string digits, std::size_t decimals, std::string& out) {
  if (digits.size() <= decimals) {
    digits.insert(0, decimals + 1 - digits.size(), '0');
  }
  const std::size_t whole = digits.size() - decimals;
  out.append(digits, 0, whole);
  if (decimals > 0) {
    out.append(1, '.').append(digits, whole);
  }
}

void AppendGrouped(std::string_view digits, std::string& out) {
  const std::size_t first = (digits.size() + kGroup - 1) % kGroup + 1;
  out.append(digits.empty() ? "0" : digits.substr(0, first));
  for (std::size_t begin = first; begin < digits.size(); begin += kGroup) {
    out.append(1, ',').append(digits.substr(begin, kGroup));
  }
}

}  // namespace

Mask Mask::Parse(std::string_view mask) {
  const std::string_view code = mask.substr(0, 2);
  Mask parsed;
  if (mask == "ML,") {
    parsed.kind_ = Kind::kGrouped;
  } else if (code == "L#" || code == "R%") {
    if (const auto width = WholeNumber(mask.substr(2))) {
      parsed.kind_ = code == "L#" ? Kind::kLeft : Kind::kZeroFilled;
      parsed.width_ = *width;
    }
  } else if (const std::string_view figures = DecimalFigures(mask); !figures.empty()) {
    parsed.kind_ = Kind::kDecimals;
    parsed.decimals_ = figures.front() - '0';
    parsed.scale_ = figures.size() > 1 ? figures.back() - '0' : 0;
  }
  return parsed;
}

Mask Mask::Left(std::int64_t width) {
  Mask mask;
  mask.kind_ = Kind::kLeft;
  mask.width_ = width;
  return mask;
}

std::string Mask::Format(std::string_view text) const {
  std::string out;
  Append(text, out);
  return out;
}

void Mask::Append(std::string_view text, std::string& out) const {
  if (kind_ == Kind::kLeft || kind_ == Kind::kZeroFilled) {
    const auto width = static_cast<std::size_t>(std::max<std::int64_t>(width_, 0));
    const std::size_t shown = std::min(width, text.size());
    if (kind_ == Kind::kLeft) {
      out.append(text.substr(0, shown)).append(width - shown, ' ');
    } else {
      out.append(width - shown, '0').append(text.substr(text.size() - shown));
    }
    return;
  }
  const std::optional<DecimalDigits> number = TakesNumbers() ? SplitDecimal(text) : std::nullopt;
  if (!number) {
    out.append(text);
    return;
  }
  std::string digits = RoundedDigits(*number, decimals_ - scale_);
  if (number->negative && !digits.empty()) {
    out.push_back('-');
  }
  if (kind_ == Kind::kGrouped) {
    AppendGrouped(digits, out);
  } else {
    AppendDecimals(std::move(digits), static_cast<std::size_t>(decimals_), out);
  }
}

std::string Fmt(const Value& x, std::string_view mask) {
  const Mask parsed = Mask::Parse(mask);
  return parsed.Format(parsed.TakesNumbers() ? x.DecimalText() : x.Text());
}

}  // namespace ptick
