#include "profile/ticks/number_texts.h"

#include <array>
#include <charconv>
#include <new>
#include <optional>

#include "profile/scan/ordinary_number.h"
#include "value/number_text.h"

namespace ptick {

NumberTexts::Id NumberTexts::Add(std::string_view text) {
  if (text.empty()) {
    return kEmpty;
  }
  const std::optional<std::uint32_t> number = ParseOrdinary(text);
  if (number && *number < kAside) {
    return *number;
  }
  const std::size_t place = aside_.size();
  if (place >= kEmpty - kAside) {
    throw std::bad_alloc();
  }
  aside_.Append(text);
  return kAside + static_cast<Id>(place);
}

std::string NumberTexts::Text(Id id) const {
  std::string text;
  AppendText(id, text);
  return text;
}

void NumberTexts::AppendText(Id id, std::string& out) const {
  if (id == kEmpty) {
    return;
  }
  if (id >= kAside) {
    out += aside_[id - kAside];
    return;
  }
  std::array<char, 10> digits;  // NOLINT(*-member-init): written by to_chars
  const auto end = std::to_chars(digits.begin(), digits.end(), id).ptr;
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

Number NumberTexts::AsNumber(Id id) const {
  if (id < kAside) {
    return std::int64_t{id};
  }
  if (id == kEmpty) {
    return std::int64_t{0};
  }
  return ParseNumber(aside_[id - kAside]).value_or(std::int64_t{0});
}

}  // namespace ptick
