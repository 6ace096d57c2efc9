#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace ptick {

/// A number as arithmetic sees it: whole in 64 bits, or floating.
using Number = std::variant<std::int64_t, double>;

/// A piece of data: an integer, a floating-point number or a byte string, each usable as the
/// others.
///
/// A numeric string is an optional sign, one or more digits and optionally a point and one or more
/// digits, and nothing else: no blanks, no exponent, no CR. In arithmetic any other text, the empty
/// one included, counts as 0. A floating value is always finite: infinities become the largest
/// number of their sign, and what is not a number becomes 0.
class Value {
 public:
  Value() = default;
  Value(std::int64_t whole) : form_(whole) {}                    // NOLINT(*-explicit-*)
  Value(int whole) : form_(static_cast<std::int64_t>(whole)) {}  // NOLINT(*-explicit-*)
  Value(double number);                                          // NOLINT(*-explicit-*)
  Value(std::string text) : form_(std::move(text)) {}            // NOLINT(*-explicit-*)
  Value(std::string_view text) : form_(std::string(text)) {}     // NOLINT(*-explicit-*)
  Value(const char* text) : form_(std::string(text)) {}          // NOLINT(*-explicit-*)
  Value(const Number& number);                                   // NOLINT(*-explicit-*)

  /// The text form. A floating number is rounded to 15 significant digits, then cut (not rounded)
  /// to at most 4 decimals; a "0" in front of the point, no trailing zeros, no exponent, no "-0".
  std::string Text() const;

  /// The text form with all decimals of the 15 significant digits: what masks round.
  std::string DecimalText() const;

  /// The numeric form; 0 for text that is not numeric.
  Number AsNumber() const;

  /// Truth: a non-zero number, or text that is neither empty nor numerically zero ("0.0", "-0").
  bool IsTrue() const;

  /// Whether the text form is empty.
  bool Empty() const;

  /// Whether this is a number, or numeric text; the empty text is not.
  bool IsNumber() const;

 private:
  std::variant<std::string, std::int64_t, double> form_;
};

/// The number that `text` spells, or nothing when it is not numeric. It is whole when all its
/// decimals are zero ("5.0", "-0") and it fits 64 bits, else floating. Beyond the floating range it
/// is the largest, or the smallest non-zero, number of its sign.
std::optional<Number> ParseNumber(std::string_view text);

/// The text form of a number, as Value::Text gives it.
std::string NumberText(const Number& number);

/// -1, 0 or 1 as a is less than, equal to or greater than b; exact for mixed forms.
int CompareNumbers(const Number& a, const Number& b);

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

/// Comparison: numeric when both sides are numbers or numeric strings, else of the texts as
/// unsigned bytes. The empty text is text. Returns -1, 0 or 1.
int Compare(const Value& a, const Value& b);

inline bool operator==(const Value& a, const Value& b) { return Compare(a, b) == 0; }
inline bool operator!=(const Value& a, const Value& b) { return Compare(a, b) != 0; }
inline bool operator<(const Value& a, const Value& b) { return Compare(a, b) < 0; }
inline bool operator>(const Value& a, const Value& b) { return Compare(a, b) > 0; }
inline bool operator<=(const Value& a, const Value& b) { return Compare(a, b) <= 0; }
inline bool operator>=(const Value& a, const Value& b) { return Compare(a, b) >= 0; }

/// Whether the text of x is numeric; the empty text counts as numeric here.
bool Num(const Value& x);

}  // namespace ptick
