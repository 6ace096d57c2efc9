// Sums over runs as means per run, and their differences, exact as long as they can be.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "value/value.h"

namespace ptick::compare {

__extension__ using Wide = __int128;

/// A number that sums are taken times: 1 / runs, or that and the share that makes two totals equal.
class Factor {
 public:
  /// 1 / runs; there is one run at least.
  static Factor PerRun(std::size_t runs);
  /// Takes sums to what they are when the sum `total` is to be `wanted`, per one of `runs`. The
  /// total is not 0.
  static Factor ToTotal(const Number& total, const Number& wanted, std::size_t runs);

  Number Times(const Number& sum) const;
  double AsDouble() const;

  /// What the new sum is more than the old one, each taken times its factor.
  static Number Difference(const Number& new_sum, const Factor& new_factor, const Number& old_sum,
                           const Factor& old_factor);

 private:
  /// numerator / denominator.
  struct Fraction {
    Wide numerator;
    Wide denominator;
  };

  Factor(Value times, Value divisor) : times_(std::move(times)), divisor_(std::move(divisor)) {}

  std::optional<Fraction> Exact(const Number& sum) const;

  static Number Quotient(const Fraction& fraction);

  /// Whether sums are taken as they are.
  bool is_one_ = false;
  std::optional<Fraction> exact_;
  Value times_;
  Value divisor_;
};

}  // namespace ptick::compare
