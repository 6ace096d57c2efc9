#include "ptick_diff/figure_text.h"

#include <cstdint>
#include <variant>

#include "compare/as_double.h"
#include "value/arithmetic.h"
#include "value/number_text.h"

namespace ptick::compare {

namespace {

std::string Signed(const std::string& text, const Number& number) {
  return (AsDouble(number) > 0 ? "+" : "") + text;
}

// Tenths as a text with one decimal.
std::string TenthsText(std::int64_t tenths) {
  const std::string digits = std::to_string(tenths < 0 ? -tenths : tenths);
  return (tenths < 0 ? "-" : "") +
         (digits.size() == 1 ? "0" : digits.substr(0, digits.size() - 1)) + "." + digits.back();
}

}  // namespace

std::string FigureText(const std::optional<Number>& number) {
  if (!number) {
    return "-";
  }
  if (std::holds_alternative<std::int64_t>(*number)) {
    return NumberText(*number);
  }
  const Number cut = Divide(Int(Multiply(*number, 100)), 100).AsNumber();
  return AsDouble(cut) == 0 ? DecimalText(*number) : NumberText(cut);
}

std::string ChangeText(const Number& change) { return Signed(FigureText(change), change); }

std::string PercentText(const Number& part, const Number& whole) {
  if (AsDouble(whole) == 0) {
    return "-";
  }
  const auto* const whole_part = std::get_if<std::int64_t>(&part);
  const auto* const whole_whole = std::get_if<std::int64_t>(&whole);
  std::int64_t scaled = 0;
  if (whole_part != nullptr && whole_whole != nullptr &&
      !__builtin_mul_overflow(*whole_part, 1000, &scaled)) {
    return TenthsText(scaled / *whole_whole);
  }
  const Value tenths = Int(Divide(Multiply(part, 1000), whole));
  const std::string text = Divide(tenths, 10).Text();
  return text + (text.find('.') == std::string::npos ? ".0" : "");
}

std::string SignedPercentText(const Number& change, const Number& whole) {
  const bool is_growth = (AsDouble(change) > 0) == (AsDouble(whole) > 0);
  const std::string text = PercentText(change, whole);
  return (is_growth && AsDouble(change) != 0 && text != "-" ? "+" : "") + text;
}

}  // namespace ptick::compare
