// Arithmetic on decimals, not on their binary neighbours.
//
// Figures in a profile are hundredths at most, but 0.1 has no exact floating form, and a sum of
// sixty of them would be cut to 5.9999. So an operand that is a whole number, or a floating number
// that is a decimal of at most four places, is taken as whole digits with a decimal count,
// and the operation is done on the digits. Only what does not fit goes on as floating.

#include "value/arithmetic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <variant>

#include "value/number_text.h"

namespace ptick {

namespace {

constexpr std::array<std::int64_t, 9> kPowersOfTen = {
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};
constexpr int kMaxDecimals = 4;

/// Up to here every whole number is a double.
constexpr std::int64_t kMaxExact = std::int64_t{1} << 53;

/// Below this, neighbouring doubles are closer than 0.0001 by far: each decimal of four places has
/// a double of its own.
constexpr double kFourDecimalsDistinctBelow = 1e11;

/// Digits / 10^Decimals.
struct Figure {
  std::int64_t digits = 0;
  int decimals = 0;
};

std::int64_t PowerOfTen(int exponent) { return kPowersOfTen[static_cast<std::size_t>(exponent)]; }

Figure Shortened(Figure figure) {
  while (figure.decimals > 0 && figure.digits % 10 == 0) {
    figure.digits /= 10;
    --figure.decimals;
  }
  return figure;
}

std::optional<Figure> AsFigure(const Number& number) {
  if (const auto* whole = std::get_if<std::int64_t>(&number)) {
    return Figure{*whole, 0};
  }
  const double floating = std::get<double>(number);
  if (floating == std::trunc(floating) && std::abs(floating) <= static_cast<double>(kMaxExact)) {
    return Figure{static_cast<std::int64_t>(floating), 0};
  }
  if (std::abs(floating) >= kFourDecimalsDistinctBelow) {
    return std::nullopt;
  }
  const auto scale = static_cast<double>(PowerOfTen(kMaxDecimals));
  const double digits = std::round(floating * scale);
  if (digits / scale != floating) {
    return std::nullopt;
  }
  return Shortened({static_cast<std::int64_t>(digits), kMaxDecimals});
}

struct Figures {
  Figure left;
  Figure right;
};

std::optional<Figures> AsFigures(const Number& left, const Number& right) {
  const std::optional<Figure> left_figure = AsFigure(left);
  const std::optional<Figure> right_figure = AsFigure(right);
  if (!left_figure || !right_figure) {
    return std::nullopt;
  }
  return Figures{*left_figure, *right_figure};
}

bool Lengthen(Figure& figure, int decimals) {
  const std::int64_t factor = PowerOfTen(decimals - figure.decimals);
  figure.decimals = decimals;
  return !__builtin_mul_overflow(figure.digits, factor, &figure.digits);
}

/// Both operands with the same decimals.
std::optional<Figures> AsAlignedFigures(const Number& left, const Number& right) {
  std::optional<Figures> figures = AsFigures(left, right);
  if (!figures) {
    return std::nullopt;
  }
  const int decimals = std::max(figures->left.decimals, figures->right.decimals);
  if (!Lengthen(figures->left, decimals) || !Lengthen(figures->right, decimals)) {
    return std::nullopt;
  }
  return figures;
}

/// The number of a figure, when its digits are not too many.
std::optional<Value> Result(Figure figure) {
  figure = Shortened(figure);
  if (figure.decimals == 0) {
    return Value(figure.digits);
  }
  if (figure.digits < -kMaxExact || figure.digits > kMaxExact) {
    return std::nullopt;
  }
  return Value(static_cast<double>(figure.digits) /
               static_cast<double>(PowerOfTen(figure.decimals)));
}

std::optional<Value> ExactSum(const Number& left, const Number& right) {
  const std::optional<Figures> figures = AsAlignedFigures(left, right);
  Figure sum;
  if (!figures ||
      __builtin_add_overflow(figures->left.digits, figures->right.digits, &sum.digits)) {
    return std::nullopt;
  }
  sum.decimals = figures->left.decimals;
  return Result(sum);
}

std::optional<Value> ExactDifference(const Number& left, const Number& right) {
  const std::optional<Figures> figures = AsAlignedFigures(left, right);
  Figure difference;
  if (!figures ||
      __builtin_sub_overflow(figures->left.digits, figures->right.digits, &difference.digits)) {
    return std::nullopt;
  }
  difference.decimals = figures->left.decimals;
  return Result(difference);
}

std::optional<Value> ExactProduct(const Number& left, const Number& right) {
  const std::optional<Figures> figures = AsFigures(left, right);
  Figure product;
  if (!figures ||
      __builtin_mul_overflow(figures->left.digits, figures->right.digits, &product.digits)) {
    return std::nullopt;
  }
  product.decimals = figures->left.decimals + figures->right.decimals;
  return Result(product);
}

double AsDouble(const Number& number) {
  return std::visit([](auto form) { return static_cast<double>(form); }, number);
}

}  // namespace

Value Add(const Value& a, const Value& b) {
  const Number left = a.AsNumber();
  const Number right = b.AsNumber();
  return ExactSum(left, right).value_or(AsDouble(left) + AsDouble(right));
}

Value Subtract(const Value& a, const Value& b) {
  const Number left = a.AsNumber();
  const Number right = b.AsNumber();
  return ExactDifference(left, right).value_or(AsDouble(left) - AsDouble(right));
}

Value Multiply(const Value& a, const Value& b) {
  const Number left = a.AsNumber();
  const Number right = b.AsNumber();
  return ExactProduct(left, right).value_or(AsDouble(left) * AsDouble(right));
}

Value Divide(const Value& a, const Value& b) {
  const Number dividend = a.AsNumber();
  const Number divisor = b.AsNumber();
  if (AsDouble(divisor) == 0) {
    return 0;
  }
  if (const std::optional<Figures> figures = AsAlignedFigures(dividend, divisor)) {
    return static_cast<double>(figures->left.digits) / static_cast<double>(figures->right.digits);
  }
  return AsDouble(dividend) / AsDouble(divisor);
}

Value Negate(const Value& a) { return Subtract(0, a); }

Value Int(const Value& a) {
  const Number number = a.AsNumber();
  if (std::holds_alternative<std::int64_t>(number)) {
    return number;
  }
  constexpr double kBeyond = 9223372036854775808.0;
  const double whole = std::trunc(std::get<double>(number));
  if (whole >= -kBeyond && whole < kBeyond) {
    return static_cast<std::int64_t>(whole);
  }
  return whole;
}

Value Increment(const Value& a) { return Add(a, 1); }

}  // namespace ptick
