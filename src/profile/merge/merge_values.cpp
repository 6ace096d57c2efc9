#include "profile/merge/merge_values.h"

#include <array>
#include <charconv>
#include <optional>

#include "profile/scan/ordinary_number.h"
#include "value/arithmetic.h"
#include "value/value.h"

namespace ptick {

void MergeValues::Set(Id key, std::string_view text) {
  if (keys_.CellOf(key) == kTextAside) {
    texts_.erase(key);
  }
  if (const std::optional<std::uint32_t> number = ParseOrdinary(text)) {
    keys_.CellOf(key) = *number;
  } else {
    keys_.CellOf(key) = kTextAside;
    texts_.insert_or_assign(key, std::string(text));
  }
}

void MergeValues::AddTo(Id key, std::string_view text) {
  const Value total = Add(Value(Text(key)), text);
  const Number total_number = total.AsNumber();
  const auto* whole = std::get_if<std::int64_t>(&total_number);
  if (whole != nullptr && *whole != kTextAside) {
    texts_.erase(key);
    keys_.CellOf(key) = *whole;
  } else {
    Set(key, total.Text());
  }
}

std::string MergeValues::Text(Id key) const {
  std::string text;
  AppendText(key, text);
  return text;
}

void MergeValues::AppendText(Id key, std::string& out) const {
  if (keys_.CellOf(key) == kTextAside) {
    out += texts_.at(key);
    return;
  }
  std::array<char, 24> digits;  // NOLINT(*-member-init): written by to_chars
  const auto end = std::to_chars(digits.begin(), digits.end(), keys_.CellOf(key)).ptr;
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

}  // namespace ptick
