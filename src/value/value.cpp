#include "value/value.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>

#include "value/number_text.h"

namespace ptick {

namespace {

/// Finite, and 0 without a sign.
double MakeFinite(double number) {
  constexpr double kMax = std::numeric_limits<double>::max();
  return std::isnan(number) ? 0 : std::clamp(number, -kMax, kMax) + 0.0;
}

Number MakeFinite(const Number& number) {
  const auto* floating = std::get_if<double>(&number);
  return floating == nullptr ? number : Number(MakeFinite(*floating));
}

/// Holds every whole number of 64 bits and every double exactly.
using Wide = long double;
static_assert(std::numeric_limits<Wide>::digits >= 64);

Wide AsWide(const Number& number) {
  return std::visit([](auto form) { return static_cast<Wide>(form); }, number);
}

}  // namespace

Value::Value(double number) : form_(MakeFinite(number)) {}

Value::Value(const Number& number) {
  std::visit([this](auto form) { form_ = form; }, MakeFinite(number));
}

std::string Value::Text() const {
  const auto* text = std::get_if<std::string>(&form_);
  return text != nullptr ? *text : NumberText(AsNumber());
}

std::string Value::DecimalText() const {
  const auto* text = std::get_if<std::string>(&form_);
  return text != nullptr ? *text : ptick::DecimalText(AsNumber());
}

Number Value::AsNumber() const {
  if (const auto* whole = std::get_if<std::int64_t>(&form_)) {
    return *whole;
  }
  if (const auto* floating = std::get_if<double>(&form_)) {
    return *floating;
  }
  return ParseNumber(std::get<std::string>(form_)).value_or(std::int64_t{0});
}

bool Value::IsTrue() const {
  if (!IsNumber()) {
    return !Empty();
  }
  return CompareNumbers(AsNumber(), std::int64_t{0}) != 0;
}

bool Value::Empty() const {
  const auto* text = std::get_if<std::string>(&form_);
  return text != nullptr && text->empty();
}

bool Value::IsNumber() const {
  const auto* text = std::get_if<std::string>(&form_);
  return text == nullptr || SplitDecimal(*text).has_value();
}

int CompareNumbers(const Number& a, const Number& b) {
  const Wide left = AsWide(a);
  const Wide right = AsWide(b);
  return (left > right ? 1 : 0) - (left < right ? 1 : 0);
}

int Compare(const Value& a, const Value& b) {
  if (a.IsNumber() && b.IsNumber()) {
    return CompareNumbers(a.AsNumber(), b.AsNumber());
  }
  const int order = a.Text().compare(b.Text());
  return (order > 0 ? 1 : 0) - (order < 0 ? 1 : 0);
}

bool Num(const Value& x) { return x.Empty() || x.IsNumber(); }

}  // namespace ptick
