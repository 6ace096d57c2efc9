#include "ptick_export/formats/json_values.h"

#include <cstddef>
#include <variant>

namespace ptick::exports {

void WriteNumber(companion::JsonWriter& json, const Number& number) {
  std::visit([&json](auto form) { json.Number(form); }, number);
}

void WriteNumber(companion::JsonWriter& json, const std::optional<Number>& number) {
  if (number) {
    WriteNumber(json, *number);
  } else {
    json.Null();
  }
}

void WriteNumber(companion::JsonWriter& json, const Value& value) {
  WriteNumber(json, value.Empty() ? std::nullopt : std::optional(value.AsNumber()));
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
