#include "ptick_export/formats/json_values.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <variant>

#include "value/number_text.h"

namespace ptick::exports {

namespace {

constexpr std::int64_t kMaxExact = std::int64_t{1} << 53U;

bool IsBig(std::int64_t number) { return number > kMaxExact || number < -kMaxExact; }
bool IsBig(double number) { return std::fabs(number) > static_cast<double>(kMaxExact); }

}  // namespace

void WriteNumber(companion::JsonWriter& json, const Number& number, BigNumbers big_numbers) {
  std::visit(
      [&](auto form) {
        if (big_numbers == BigNumbers::kAsTexts && IsBig(form)) {
          json.Text(ptick::NumberText(form));
        } else {
          json.Number(form);
        }
      },
      number);
}

void WriteNumber(companion::JsonWriter& json, const std::optional<Number>& number,
                 BigNumbers big_numbers) {
  if (number) {
    WriteNumber(json, *number, big_numbers);
  } else {
    json.Null();
  }
}

void WriteNumber(companion::JsonWriter& json, const Value& value, BigNumbers big_numbers) {
  WriteNumber(json, value.Empty() ? std::nullopt : std::optional(value.AsNumber()), big_numbers);
}

void WriteTextOrNull(companion::JsonWriter& json, std::string_view text) {
  if (text.empty()) {
    json.Null();
  } else {
    json.Text(text);
  }
}

std::string DecimalDigits(std::int64_t number, unsigned decimals) {
  std::string digits = std::to_string(number);
  const std::size_t sign = number < 0 ? 1 : 0;
  if (digits.size() - sign <= decimals) {
    digits.insert(sign, decimals + 1 - (digits.size() - sign), '0');
  }
  std::size_t end = digits.size();
  const std::size_t point = end - decimals;
  while (end > point && digits[end - 1] == '0') {
    --end;
  }
  digits.resize(end);
  if (end > point) {
    digits.insert(point, ".");
  }
  return digits;
}

}  // namespace ptick::exports
