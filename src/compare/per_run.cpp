#include "compare/per_run.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "compare/as_double.h"
#include "value/arithmetic.h"

namespace ptick::compare {

namespace {

std::optional<Wide> Product(Wide a, Wide b) {
  Wide product = 0;
  return __builtin_mul_overflow(a, b, &product) ? std::nullopt : std::optional(product);
}

const std::int64_t* Whole(const Number& number) { return std::get_if<std::int64_t>(&number); }

// The difference of two floating numbers, each of which may be rounded: what that explains is none.
Number WithoutRounding(const Number& more, const Number& less) {
  constexpr double kRounding = 1e-14;
  const double size = std::max(std::abs(AsDouble(more)), std::abs(AsDouble(less)));
  const Number difference = Subtract(more, less).AsNumber();
  return std::abs(AsDouble(difference)) <= size * kRounding ? Number() : difference;
}

}  // namespace

Factor Factor::PerRun(std::size_t runs) {
  const auto count = static_cast<std::int64_t>(runs);
  Factor factor(1, count);
  factor.is_one_ = runs == 1;
  factor.exact_ = {1, count};
  return factor;
}

Factor Factor::ToTotal(const Number& total, const Number& wanted, std::size_t runs) {
  const auto count = static_cast<std::int64_t>(runs);
  Factor factor(wanted, Multiply(total, count));
  if (Whole(total) != nullptr && Whole(wanted) != nullptr && *Whole(total) > 0) {
    factor.exact_ = {*Whole(wanted), Wide{*Whole(total)} * count};
  }
  return factor;
}

double Factor::AsDouble() const {
  return compare::AsDouble(times_.AsNumber()) / compare::AsDouble(divisor_.AsNumber());
}

std::optional<Factor::Fraction> Factor::Exact(const Number& sum) const {
  if (!exact_ || Whole(sum) == nullptr) {
    return std::nullopt;
  }
  const std::optional<Wide> numerator = Product(*Whole(sum), exact_->numerator);
  return numerator ? std::optional(Fraction{*numerator, exact_->denominator}) : std::nullopt;
}

Number Factor::Quotient(const Fraction& fraction) {
  if (fraction.numerator % fraction.denominator == 0) {
    const Wide whole = fraction.numerator / fraction.denominator;
    const auto narrow = static_cast<std::int64_t>(whole);
    if (narrow == whole) {
      return narrow;
    }
  }
  return static_cast<double>(static_cast<long double>(fraction.numerator) /
                             static_cast<long double>(fraction.denominator));
}

Number Factor::Times(const Number& sum) const {
  if (is_one_) {
    return sum;
  }
  const std::optional<Fraction> exact = Exact(sum);
  return exact ? Quotient(*exact) : Divide(Multiply(sum, times_), divisor_).AsNumber();
}

Number Factor::Difference(const Number& new_sum, const Factor& new_factor, const Number& old_sum,
                          const Factor& old_factor) {
  if (new_factor.is_one_ && old_factor.is_one_) {
    return Subtract(new_sum, old_sum).AsNumber();
  }
  const std::optional<Fraction> more = new_factor.Exact(new_sum);
  const std::optional<Fraction> less = old_factor.Exact(old_sum);
  if (more && less) {
    const std::optional<Wide> a = Product(more->numerator, less->denominator);
    const std::optional<Wide> b = Product(less->numerator, more->denominator);
    const std::optional<Wide> denominator = Product(more->denominator, less->denominator);
    Wide numerator = 0;
    if (a && b && denominator && !__builtin_sub_overflow(*a, *b, &numerator)) {
      return Quotient({numerator, *denominator});
    }
  }
  return WithoutRounding(new_factor.Times(new_sum), old_factor.Times(old_sum));
}

}  // namespace ptick::compare
