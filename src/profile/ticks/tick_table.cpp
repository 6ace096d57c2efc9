#include "profile/ticks/tick_table.h"

#include <optional>

#include "profile/scan/ordinary_number.h"
#include "profile/ticks/regular_count.h"

namespace ptick {

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
  if (const std::optional<std::uint32_t> regular = RegularCount(number)) {
    Add(id, exact, *regular);
  } else {
    irregular_.push_back({number, {id, exact, 0}});
  }
}

std::uint64_t TickTable::CountSmall() const {
  std::uint64_t count = 0;
  for (std::uint32_t ticks = 0; ticks < TickBuckets::kCount; ++ticks) {
    count += small_.CountOf(ticks);
    for (const BucketPart& part : parts_) {
      count += part.buckets.CountOf(ticks);
    }
  }
  return count;
}

}  // namespace ptick
