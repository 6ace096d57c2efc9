#include "profile/merge/merge_values.h"

#include <array>
#include <charconv>
#include <cmath>
#include <variant>

#include "profile/scan/ordinary_number.h"
#include "value/arithmetic.h"
#include "value/number_text.h"

namespace ptick {

namespace {

// The number that the text of a sum spells. A fraction is cut to the decimals that a text shows; a
// whole number, however large, is read back as it was.
Number AsWritten(const Number& sum) {
  constexpr double kBeyond = 9223372036854775808.0;
  const auto* floating = std::get_if<double>(&sum);
  if (floating == nullptr) {
    return sum;
  }
  if (*floating != std::trunc(*floating)) {
    return ParseNumber(NumberText(sum)).value_or(sum);
  }
  if (*floating >= -kBeyond && *floating < kBeyond) {
    return static_cast<std::int64_t>(*floating);
  }
  return sum;
}

}  // namespace

void MergeValues::Set(Id key, std::string_view text) {
  const std::optional<std::uint32_t> number = ParseOrdinary(text);
  if (number && !IsAside(keys_.CellOf(key))) {
    keys_.CellOf(key) = *number;
  } else {
    PutAside(key) = {std::string(text), ParseNumber(text)};
  }
}

void MergeValues::SetFirst(Id key, std::string_view text) {
  std::int64_t& cell = keys_.CellOf(key);
  if (const std::optional<std::uint32_t> number = ParseOrdinary(text)) {
    cell = *number;
  } else {
    cell = kFirstTextCells + static_cast<std::int64_t>(first_texts_.size());
    first_texts_.Append(text);
  }
}

void MergeValues::AddTo(Id key, std::string_view text) {
  const Number before = NumberOf(key).value_or(std::int64_t{0});
  const Number sum = AsWritten(Add(before, text).AsNumber());
  const auto* whole = std::get_if<std::int64_t>(&sum);
  if (whole != nullptr && AsideOf(key) == nullptr && IsWhole(*whole)) {
    keys_.CellOf(key) = *whole;
  } else {
    PutAside(key) = {NumberText(sum), sum};
  }
}

void MergeValues::Combine(Id key, const MergeLine& line) {
  switch (line.kind) {
    case MergeKind::kSmallest:
      if (Compare(key, line.value) > 0) {
        Set(key, line.value);
      }
      break;
    case MergeKind::kLargest:
      if (Compare(key, line.value) < 0) {
        Set(key, line.value);
      }
      break;
    case MergeKind::kLast:
      Set(key, line.value);
      break;
    case MergeKind::kAdded:
      AddTo(key, line.value);
      break;
    case MergeKind::kDropped:
      break;
  }
}

void MergeValues::Copy(const MergeValues& from, Id key, Id to) {
  const std::int64_t cell = from.keys_.CellOf(key);
  if (const Aside* const aside = from.AsideOf(key)) {
    PutAside(to) = *aside;
  } else if (IsWhole(cell)) {
    keys_.CellOf(to) = cell;
  } else {
    keys_.CellOf(to) = kFirstTextCells + static_cast<std::int64_t>(first_texts_.size());
    first_texts_.Append(from.FirstText(cell));
  }
}

int MergeValues::Compare(Id key, std::string_view text) const {
  const std::optional<Number> left = NumberOf(key);
  const std::optional<Number> right = ParseNumber(text);
  if (left && right) {
    return CompareNumbers(*left, *right);
  }
  const Aside* const aside = AsideOf(key);
  const int order = aside != nullptr ? std::string_view(aside->text).compare(text)
                                     : std::string_view(Text(key)).compare(text);
  return (order > 0 ? 1 : 0) - (order < 0 ? 1 : 0);
}

std::optional<Number> MergeValues::NumberOf(Id key) const {
  if (const Aside* const aside = AsideOf(key)) {
    return aside->number;
  }
  const std::int64_t cell = keys_.CellOf(key);
  return IsWhole(cell) ? Number(cell) : ParseNumber(FirstText(cell));
}

MergeValues::Aside& MergeValues::PutAside(Id key) {
  std::int64_t& cell = keys_.CellOf(key);
  if (!IsAside(cell)) {
    cell = std::numeric_limits<std::int64_t>::min() + static_cast<std::int64_t>(aside_.size());
    aside_.emplace_back();
  }
  return aside_[PlaceOf(cell)];
}

std::string MergeValues::Text(Id key) const {
  std::string text;
  AppendText(key, text);
  return text;
}

void MergeValues::AppendText(Id key, std::string& out) const {
  if (const Aside* const aside = AsideOf(key)) {
    out += aside->text;
    return;
  }
  if (const std::int64_t cell = keys_.CellOf(key); !IsWhole(cell)) {
    out += FirstText(cell);
    return;
  }
  std::array<char, 24> digits;  // NOLINT(*-member-init): written by to_chars
  const auto end = std::to_chars(digits.begin(), digits.end(), keys_.CellOf(key)).ptr;
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

}  // namespace ptick
