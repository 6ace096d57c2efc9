// Values of profiles in JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "companion/json_writer.h"
#include "value/value.h"

namespace ptick::exports {

/// Many readers of JSON take every number for a floating one of 64 bits.
enum class BigNumbers {
  kAsTheyAre,
  kAsTexts,  ///< those beyond 2^53 are texts, so that no digit is lost
};

void WriteNumber(companion::JsonWriter& json, const Number& number,
                 BigNumbers big_numbers = BigNumbers::kAsTheyAre);

/// Null where there is none.
void WriteNumber(companion::JsonWriter& json, const std::optional<Number>& number,
                 BigNumbers big_numbers = BigNumbers::kAsTheyAre);

/// A value as it counts, null where it is empty.
void WriteNumber(companion::JsonWriter& json, const Value& value,
                 BigNumbers big_numbers = BigNumbers::kAsTheyAre);

/// Null for an empty text.
void WriteTextOrNull(companion::JsonWriter& json, std::string_view text);

/// A whole number divided by ten to the power of `decimals`, without zeros at the end: 1500 with
/// three is "1.5".
std::string DecimalDigits(std::int64_t number, unsigned decimals);

}  // namespace ptick::exports
