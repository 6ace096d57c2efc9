#include "profile/ticks/tick_table.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <variant>

#include "profile/scan/ordinary_number.h"
#include "profile/ticks/sort_order.h"

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

void TickTable::Order(SortOrder order, bool per_program) {
  order_ = order;
  large_ordered_ = large_.TakeOrdered(order);
  OrderIrregular();
  per_program_ = per_program;
  if (per_program) {
    MakeRows();
  }
}

/// Whether ticks a stand before ticks b.
bool TickTable::Precedes(const Number& a, const Number& b, SortOrder order) {
  const int compared = CompareNumbers(a, b);
  return order == SortOrder::kAscending ? compared < 0 : compared > 0;
}

void TickTable::OrderIrregular() {
  std::ranges::reverse(irregular_);
  std::ranges::stable_sort(irregular_, [this](const IrregularEntry& a, const IrregularEntry& b) {
    return Precedes(a.ticks, b.ticks, order_);
  });
}

// One counting sort by program, over entries that are in their order already.
void TickTable::MakeRows() {
  std::vector<std::size_t> places(programs_.size() + 1);
  ForEachOrdered([&places](const TickEntry& entry) { ++places[entry.program + 1]; });
  std::partial_sum(places.begin(), places.end(), places.begin());
  row_starts_ = places;
  rows_ = TickEntryBlock(places.back());
  TickEntry* const rows = rows_.Entries().data();
  ForEachOrdered(
      [&places, rows](const TickEntry& entry) { rows[places[entry.program]++] = entry; });
}

}  // namespace ptick
