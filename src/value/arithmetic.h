#pragma once

#include "value/value.h"

namespace ptick {

/// Arithmetic. Integers are exact in 64 bits and go on as floating numbers beyond; figures of at
/// most four decimals are added, subtracted and multiplied as the decimals they are (60 times 0.1
/// is 6), as long as all digits fit. Results stay finite: an overflow gives the largest number of
/// its sign.
Value Add(const Value& a, const Value& b);
Value Subtract(const Value& a, const Value& b);
Value Multiply(const Value& a, const Value& b);
/// Floating division: 10 / 4 is 2.5, and 0.3 / 0.1 is 3. Division by zero gives 0.
Value Divide(const Value& a, const Value& b);
Value Negate(const Value& a);
/// The integer part, cut toward zero; floating still when it does not fit 64 bits.
Value Int(const Value& a);
Value Increment(const Value& a);

}  // namespace ptick
