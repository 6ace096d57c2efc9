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

/// A piece of data: an integer, a floating-point number or a byte string; each converts to
/// the others on demand.
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
  /// to at most 4 decimals; a "0" before the point, no trailing zeros, no exponent, no "-0".
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

/// -1, 0 or 1 as a is less than, equal to or greater than b; exact for mixed forms.
int CompareNumbers(const Number& a, const Number& b);

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
