#include "compare/key_names.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "profile/scan/ordinary_number.h"
#include "value/value.h"

namespace ptick::compare {

std::uint32_t KeyNames::InternLine(std::string_view text) {
  const std::optional<std::uint32_t> number = ParseOrdinary(text);
  return number && IsLineNumber(*number) ? *number : kLineText | details_.Intern(text);
}

std::string KeyNames::LineText(std::uint32_t line) const {
  return IsLineNumber(line) ? std::to_string(line) : std::string(details_[line & ~kLineText]);
}

bool KeyNames::IsOrdinaryLine(std::uint32_t line) const {
  return IsLineNumber(line) || ParseOrdinary(details_[line & ~kLineText]).has_value();
}

bool KeyNames::LinePrecedes(std::uint32_t line, std::uint32_t other) const {
  if (IsLineNumber(line) && IsLineNumber(other)) {
    return line < other;
  }
  const std::string text = LineText(line);
  const std::string other_text = LineText(other);
  const int order = CompareNumbers(Value(text).AsNumber(), Value(other_text).AsNumber());
  return order != 0 ? order < 0 : text < other_text;
}

std::vector<std::uint32_t> PlacesByBytes(const NameTable& names) {
  std::vector<std::uint32_t> order(names.size());
  std::iota(order.begin(), order.end(), std::uint32_t{0});
  std::ranges::sort(order, {}, [&](std::uint32_t name) { return names[name]; });
  std::vector<std::uint32_t> places(names.size());
  for (std::uint32_t place = 0; place < order.size(); ++place) {
    places[order[place]] = place;
  }
  return places;
}

}  // namespace ptick::compare
