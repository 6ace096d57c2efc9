// Numbers, comparisons and texts of any bytes: total, and consistent with themselves.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "value/arithmetic.h"
#include "value/dynamic_array.h"
#include "value/number_text.h"
#include "value/pattern.h"
#include "value/text.h"
#include "value/value.h"

namespace {

using namespace ptick;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

void CheckNumberText(const Value& number) {
  const std::string text = number.Text();
  Require(ParseNumber(text).has_value(), "the text of a number is numeric");
  RequireEqual(text, NumberText(Value(text).AsNumber()), "the text of a number stays as it is");
  Require(text != "-0", "nothing is minus zero");
}

void CheckArithmetic(const Value& a, const Value& b) {
  const Value sum = Add(a, b);
  const Value difference = Subtract(a, b);
  for (const Value& result : {sum, difference, Multiply(a, b), Divide(a, b), Negate(a), Int(a)}) {
    CheckNumberText(result);
  }
  Require(sum == Add(b, a), "a sum has no order");
  Require(Multiply(a, b) == Multiply(b, a), "a product has no order");
  Require(difference == Negate(Subtract(b, a)), "a difference changes its sign with its order");
  RequireEqual("0", Subtract(a, a).Text(), "a number less itself is zero");
  RequireEqual("0", Divide(a, 0).Text(), "a division by zero gives zero");
  Require(Negate(Negate(a)) == Add(a, 0), "a number is negated twice in vain");
  Require(Int(Int(a)) == Int(a), "a whole number is cut no further");
}

void CheckComparison(const Value& a, const Value& b) {
  Require(Compare(a, b) == -Compare(b, a), "an order has two sides");
  Require(a == a, "a value equals itself");  // NOLINT(misc-redundant-expression)
  if (a.IsNumber() && b.IsNumber()) {
    Require(Compare(a, b) == CompareNumbers(a.AsNumber(), b.AsNumber()), "numbers go as numbers");
  } else {
    Require((a == b) == (a.Text() == b.Text()), "texts are equal byte by byte");
  }
}

void CheckTexts(const std::string& text, const std::string& other, char c) {
  const std::string once(1, c);
  const std::string trimmed = Trim(text, c);
  RequireEqual(trimmed, Trim(trimmed, c), "what is trimmed is trimmed no further");
  Require(trimmed.find(once + once) == std::string::npos, "runs are cut to one");
  RequireEqual(Change(trimmed, once, ""), Change(text, once, ""), "nothing else is trimmed");
  Require(text.starts_with(TrimTrailing(text, c)), "the front is kept");
  RequireEqual(Change(text, once, other), Change(Change(text, once, "a" + once), "a" + once, other),
               "a change is a change");
  RequireEqual(text,
               std::string(Substring(text, 1, 3)) + std::string(Substring(text, 4, Len(text))),
               "pieces make the whole");
}

void CheckPatterns(const std::string& text, const std::string& pattern) {
  const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
  Require(Matches(text, "1N0N") == digits, "1N0N is a number");
  const std::size_t hyphen = text.find('-');
  const bool range = hyphen != std::string::npos && Matches(text.substr(0, hyphen), "1N0N") &&
                     Matches(text.substr(hyphen + 1), "1N0N");
  Require(Matches(text, "1N0N'-'1N0N") == range, "two numbers and a hyphen are a range");
  Matches(text, pattern);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  const auto c = static_cast<char>(input.TakeByte());
  const std::string text = input.TakeUpTo('\n');
  const std::string other = input.TakeRest();

  CheckArithmetic(text, other);
  CheckComparison(text, other);
  CheckTexts(text, other, c);
  CheckPatterns(text, other);
  return 0;
}
