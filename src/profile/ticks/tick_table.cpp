#include "profile/ticks/tick_table.h"

#include <limits>
#include <optional>
#include <variant>

#include "profile/scan/ordinary_number.h"

namespace ptick {

namespace {

// The whole number below 2^32 that ticks are equal to. A text with so many decimals that it rounds
// to a whole number is a floating one, and equal to it all the same.
std::optional<std::uint32_t> RegularTicks(const Number& ticks) {
  constexpr auto kMax = std::numeric_limits<std::uint32_t>::max();
  if (CompareNumbers(ticks, std::int64_t{0}) < 0 || CompareNumbers(ticks, std::int64_t{kMax}) > 0) {
    return std::nullopt;
  }
  const auto whole = std::visit([](auto form) { return static_cast<std::uint32_t>(form); }, ticks);
  return CompareNumbers(ticks, std::int64_t{whole}) == 0 ? std::optional(whole) : std::nullopt;
}

}  // namespace

void TickTable::Add(std::string_view program, std::string_view line, std::string_view ticks) {
  const NameTable::Id id = programs_.Intern(program);
  const std::optional<std::uint32_t> ordinary_line = ParseOrdinary(line);
  const std::optional<std::uint32_t> ordinary_ticks = ParseOrdinary(ticks);
  if (ordinary_line && *ordinary_line < TickEntry::kExactText && ordinary_ticks) {
    Add(id, *ordinary_line, *ordinary_ticks);
    return;
  }
  const auto exact = TickEntry::kExactText | static_cast<std::uint32_t>(exact_lines_.size());
  exact_lines_.Append(line);
  exact_ticks_.Append(ticks);
  const Number number = Value(ticks).AsNumber();
  if (const std::optional<std::uint32_t> regular = RegularTicks(number)) {
    Add(id, exact, *regular);
  } else {
    irregular_.push_back({number, {id, exact, 0}});
  }
}

}  // namespace ptick
