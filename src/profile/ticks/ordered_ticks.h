#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "parallel/thread_plan.h"
#include "profile/ticks/entry_group.h"
#include "profile/ticks/sort_order.h"
#include "profile/ticks/tick_table.h"

namespace ptick {

/// The trace entries of a profile in their order: by ticks, compared as numbers, entries with equal
/// ticks in reverse order of arrival. That is the order of sorted inserts. Either one row of all
/// entries, or one row per program.
///
/// Three parts make the order, each in order itself:
///
///   large ticks        sorted here, once
///   small ticks        a bucket per tick count, walked downwards (or upwards)
///   irregular ticks    few or none: put in wherever their ticks belong
class OrderedTicks {
 public:
  /// Takes the entries over.
  OrderedTicks(TickTable&& table, SortOrder order, bool per_program,
               const ThreadPlan& threads = {});

  class Walk;

  SortOrder Order() const { return order_; }

  /// The number of rows: 1, or the number of programs where there is a row for each.
  std::size_t RowCount() const { return per_program_ ? table_.Programs().size() : 1; }

  /// Calls `visit` with every entry of row `row`, counted from 0, in order; per program, row r is
  /// that of program r.
  template <typename Visit>
  void ForEach(std::size_t row, Visit visit) const {
    if (per_program_) {
      EntriesOf(row).ForEach(visit);
    } else {
      ForEachOfAll(visit);
    }
  }

  /// The entries of a program, in order. REQUIRES: a row per program.
  TickSpan EntriesOf(std::size_t row) const {
    const std::size_t size = row_starts_[row + 1] - row_starts_[row];
    return TickSpan(rows_.Entries().subspan(row_starts_[row], size));
  }

  /// The number of entries. REQUIRES: a row per program.
  std::size_t EntryCount() const { return rows_.Entries().size(); }

  const NameTable& Programs() const { return table_.Programs(); }

  /// The texts of an entry that has them kept aside.
  std::string_view ExactLine(const TickEntry& entry) const { return table_.ExactLine(entry); }
  std::string_view ExactTicks(const TickEntry& entry) const { return table_.ExactTicks(entry); }

 private:
  static bool Precedes(const Number& a, const Number& b, SortOrder order);

  void OrderIrregular();
  void MakeRows(const ThreadPlan& threads);
  void PutIntoRows();
  void PutIntoRows(std::vector<EntryGroup> groups, unsigned threads);

  // All entries in their order, whatever their program.
  template <typename Visit>
  void ForEachOfAll(Visit visit) const;

  TickTable table_;
  SortOrder order_;
  bool per_program_;
  TickEntryBlock large_;  ///< the entries with large ticks, in order
  TickEntryBlock rows_;   ///< per program: all entries, program by program
  std::vector<std::size_t> row_starts_;
};

/// Walks over all entries in their order, whatever their program.
class OrderedTicks::Walk {
 public:
  explicit Walk(const OrderedTicks& ticks)
      : ticks_(ticks), small_(ticks.table_), irregular_(ticks.table_.irregular_) {}

  /// Calls `visit` with spans of the entries that come next, none or some; false after the last
  /// ones.
  template <typename Visit>
  bool NextSpans(Visit& visit) {
    if (step_ == kSteps) {
      VisitIrregular(irregular_.size(), visit);
      return false;
    }
    const std::uint32_t step = step_++;
    const bool descending = ticks_.order_ == SortOrder::kDescending;
    if (step == (descending ? 0 : kSteps - 1)) {
      VisitLarge(visit);
    } else {
      const std::uint32_t ticks = descending ? kSteps - 1 - step : step;
      VisitIrregular(IrregularBefore(ticks), visit);
      small_.ForEachSpan(ticks, visit);
    }
    return true;
  }

 private:
  /// One for each small tick count, and one for the large ones.
  static constexpr std::uint32_t kSteps = TickBuckets::kCount + 1;

  // How many irregular entries come before those of this tick count.
  std::size_t IrregularBefore(std::uint32_t ticks) const {
    std::size_t count = 0;
    while (count < irregular_.size() &&
           Precedes(irregular_[count].ticks, std::int64_t{ticks}, ticks_.order_)) {
      ++count;
    }
    return count;
  }

  template <typename Visit>
  void VisitIrregular(std::size_t count, Visit& visit) {
    for (const TickTable::IrregularEntry& irregular : irregular_.first(count)) {
      visit(TickSpan({&irregular.entry, 1}));
    }
    irregular_ = irregular_.subspan(count);
  }

  template <typename Visit>
  void VisitLarge(Visit& visit) {
    std::span<const TickEntry> large = ticks_.large_.Entries();
    for (std::size_t regular = 0; regular < large.size() && !irregular_.empty(); ++regular) {
      if (const std::size_t count = IrregularBefore(large[regular].ticks); count > 0) {
        visit(TickSpan(large.first(regular)));
        large = large.subspan(std::exchange(regular, 0));
        VisitIrregular(count, visit);
      }
    }
    visit(TickSpan(large));
  }

  const OrderedTicks& ticks_;
  TickTable::SmallTicks small_;
  std::span<const TickTable::IrregularEntry> irregular_;  ///< those that have not come
  std::uint32_t step_ = 0;
};

template <typename Visit>
void OrderedTicks::ForEachOfAll(Visit visit) const {
  const auto visit_span = [&visit](const TickSpan& span) { span.ForEach(visit); };
  for (Walk walk(*this); walk.NextSpans(visit_span);) {
  }
}

}  // namespace ptick
