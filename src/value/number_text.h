#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "value/value.h"

namespace ptick {

/// A numeric text taken apart, digits as written. The views point into the text.
struct DecimalDigits {
  bool Negative = false;
  std::string_view Whole;     ///< at least one digit
  std::string_view Fraction;  ///< without the point; empty when there is none
};

/// The parts of a numeric text, or nothing when it is not numeric.
std::optional<DecimalDigits> SplitDecimal(std::string_view text);

/// A number in plain notation, not cut: a floating number that is not whole with all decimals of
/// its 15 significant digits.
std::string DecimalText(const Number& number);

}  // namespace ptick
