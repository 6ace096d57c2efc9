#include "profile/merge_values.h"

#include <array>
#include <charconv>
#include <optional>

#include "profile/ordinary_number.h"
#include "value/value.h"

namespace ptick {

void MergeValues::Append(std::string_view text) {
  numbers_.push_back(0);
  Set(numbers_.size() - 1, text);
}

void MergeValues::Set(std::size_t index, std::string_view text) {
  if (numbers_[index] == kTextAside) {
    texts_.erase(index);
  }
  if (const std::optional<std::uint32_t> number = ParseOrdinary(text)) {
    numbers_[index] = *number;
  } else {
    numbers_[index] = kTextAside;
    texts_.insert_or_assign(index, std::string(text));
  }
}

void MergeValues::AddTo(std::size_t index, std::string_view text) {
  const Value total = Add(Value(Text(index)), text);
  const Number total_number = total.AsNumber();
  const auto* whole = std::get_if<std::int64_t>(&total_number);
  if (whole != nullptr && *whole != kTextAside) {
    texts_.erase(index);
    numbers_[index] = *whole;
  } else {
    Set(index, total.Text());
  }
}

std::string MergeValues::Text(std::size_t index) const {
  std::string text;
  AppendText(index, text);
  return text;
}

void MergeValues::AppendText(std::size_t index, std::string& out) const {
  if (numbers_[index] == kTextAside) {
    out += texts_.at(index);
    return;
  }
  std::array<char, 24> digits;  // NOLINT(*-member-init): written by to_chars
  const auto end = std::to_chars(digits.begin(), digits.end(), numbers_[index]).ptr;
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

}  // namespace ptick
