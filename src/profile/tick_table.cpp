#include "profile/tick_table.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>
#include <variant>

#include "profile/ordinary_number.h"

namespace ptick {

namespace {

bool IsRegular(const Number& ticks) {
  const auto* whole = std::get_if<std::int64_t>(&ticks);
  return whole != nullptr && *whole >= 0 && *whole <= std::numeric_limits<std::uint32_t>::max();
}

/// Whether ticks a stand before ticks b.
bool Precedes(const Number& a, const Number& b, LocateOrder order) {
  const int compared = CompareNumbers(a, b);
  return order == LocateOrder::kAscending ? compared < 0 : compared > 0;
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

void TickTable::Order(LocateOrder order, bool per_program) {
  ordered_ = entries_.TakeOrdered(order, per_program ? programs_.size() : 1);
  if (!irregular_.empty()) {
    OrderIrregular(order, per_program);
    MergeIrregular(order, per_program);
  }
  if (!per_program) {
    row_starts_ = {0, ordered_.Entries().size()};
    return;
  }
  row_starts_.assign(programs_.size() + 1, 0);
  for (const TickEntry& entry : ordered_.Entries()) {
    ++row_starts_[entry.Program + 1];
  }
  for (std::size_t row = 1; row < row_starts_.size(); ++row) {
    row_starts_[row] += row_starts_[row - 1];
  }
}

void TickTable::OrderIrregular(LocateOrder order, bool per_program) {
  std::reverse(irregular_.begin(), irregular_.end());
  std::stable_sort(irregular_.begin(), irregular_.end(),
                   [=](const IrregularEntry& a, const IrregularEntry& b) {
                     if (per_program && a.Entry.Program != b.Entry.Program) {
                       return a.Entry.Program < b.Entry.Program;
                     }
                     return Precedes(a.Ticks, b.Ticks, order);
                   });
}

// Both lists are ordered, and no tick count of the one equals one of the other.
void TickTable::MergeIrregular(LocateOrder order, bool per_program) {
  TickEntryBlock merged(ordered_.Entries().size() + irregular_.size());
  auto out = merged.Entries().begin();
  auto next = irregular_.cbegin();
  const auto goes_first = [=](const IrregularEntry& irregular, const TickEntry& regular) {
    if (per_program && irregular.Entry.Program != regular.Program) {
      return irregular.Entry.Program < regular.Program;
    }
    return Precedes(irregular.Ticks, static_cast<std::int64_t>(regular.Ticks), order);
  };
  for (const TickEntry& regular : ordered_.Entries()) {
    for (; next != irregular_.cend() && goes_first(*next, regular); ++next) {
      *out++ = next->Entry;
    }
    *out++ = regular;
  }
  for (; next != irregular_.cend(); ++next) {
    *out++ = next->Entry;
  }
  ordered_ = std::move(merged);
  irregular_.clear();
}

}  // namespace ptick
