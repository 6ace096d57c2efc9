#include "profile/ticks/tick_table.h"

#include <limits>
#include <optional>
#include <variant>

#include "profile/scan/ordinary_number.h"

namespace ptick {

namespace {

bool IsRegular(const Number& ticks) {
  const auto* whole = std::get_if<std::int64_t>(&ticks);
  return whole != nullptr && *whole >= 0 && *whole <= std::numeric_limits<std::uint32_t>::max();
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
  if (IsRegular(number)) {
    Add(id, exact, static_cast<std::uint32_t>(std::get<std::int64_t>(number)));
  } else {
    irregular_.push_back({number, {id, exact, 0}});
  }
}

}  // namespace ptick
