#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "value/value.h"

namespace ptick {

/// The number that `text` spells, or nothing when it is not numeric. It is whole when all its
/// decimals are zero ("5.0", "-0") and it fits 64 bits, else floating. Beyond the floating range it
/// is the largest, or the smallest non-zero, number of its sign.
std::optional<Number> ParseNumber(std::string_view text);

/// The text form of a number, as Value::Text gives it.
std::string NumberText(const Number& number);

/// A numeric text taken apart, digits as written. The views point into the text.
struct DecimalDigits {
  bool negative = false;
  std::string_view whole;     ///< at least one digit
  std::string_view fraction;  ///< without the point; empty when there is none
};

/// The parts of a numeric text, or nothing when it is not numeric.
std::optional<DecimalDigits> SplitDecimal(std::string_view text);

/// A number in plain notation, not cut: a floating number that is not whole with all decimals of
/// its 15 significant digits.
std::string DecimalText(const Number& number);

}  // namespace ptick
